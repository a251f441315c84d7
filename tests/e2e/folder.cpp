#include "tests/e2e/folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

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
    const std::string path = place + "/" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}
