#include "tests/support/folder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

Folder::Folder() {
    // Short wherever temporary files usually go: a reply to the console holds 99 characters.
    std::string name = "/tmp/quillgrove-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        std::perror(name.c_str());
        std::abort(); // rather than let a test write beside it
    }
    place = fs::canonical(name).string();
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(place, ignored);
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
