// export/new_file.h -- a text file that an exporter makes. Nothing that exists is ever written
// into; what cannot be written whole is taken away again, with one line on standard error.
#pragma once

#include "export/export_text.h"

#include <string>

class NewFile {
  public:
    NewFile() = default;
    /// A file that was not finished is removed.
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    /// Whether `name` can be opened for reading.
    static bool exists(const char *name);

    /// Creates the file. False, with nothing changed, when there is one of that name or the
    /// system refuses.
    bool create(const char *name);

    /// What is to be written next; goes out with drain() and finish().
    ExportText text;

    /// Sends the text on its way once there is a block of it.
    void drain() {
        if (text.size() >= block) {
            flush();
        }
    }

    /// False once a write has failed; further text is dropped.
    bool good() const {
        return fault == 0;
    }

    /// Writes the rest and closes. On any failure tells the system's reason, removes the file
    /// and returns false.
    bool finish();

  private:
    static constexpr size_t block = 65536; // bytes

    void flush();
    void close_file();

    std::string path;
    int descriptor = -1;
    int fault = 0; // errno of the first failure
};
