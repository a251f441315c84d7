// tests/support/folder.h -- a folder of its own for one test, gone afterwards.
#pragma once

#include <string>

class Folder {
  public:
    Folder();
    ~Folder();
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    /// Without links in it, as `pwd` tells it.
    const std::string &path() const {
        return place;
    }

    /// The whole path of a file in it.
    std::string path(const std::string &name) const {
        return place + "/" + name;
    }

    /// Writes a file of this name and returns its whole path.
    std::string write(const std::string &name, const std::string &content) const;

    /// The bytes of the file of this name, none where it is not there.
    std::string read(const std::string &name) const;

  private:
    std::string place;
};
