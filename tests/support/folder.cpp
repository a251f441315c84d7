#include "tests/support/folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

Folder::Folder() {
    std::string name = (fs::temp_directory_path() / "quillgrove-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr) {
        place = fs::canonical(name).string();
    }
}

Folder::~Folder() {
    if (!place.empty()) {
        std::error_code ignored;
        fs::remove_all(place, ignored);
    }
}

std::string Folder::write(const std::string &name, const std::string &content) const {
    const std::string whole = path(name);
    std::ofstream(whole, std::ios::binary) << content;
    return whole;
}

std::string Folder::read(const std::string &name) const {
    std::ifstream in(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
