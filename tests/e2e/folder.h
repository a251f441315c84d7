// tests/e2e/folder.h -- a folder of its own for one test, gone afterwards.
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

    /// Writes a file of this name and returns its whole path.
    std::string write(const std::string &name, const std::string &content) const;

  private:
    std::string place;
};
