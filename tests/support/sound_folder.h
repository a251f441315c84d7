// tests/support/sound_folder.h -- tests that write sound files: a folder of their own, which is
// gone afterwards, no rendered sound before and after, and a look at the files' bytes.
#pragma once

#include "tests/support/fixture.h"
#include "tests/support/folder.h"

#include <cstdint>
#include <string>
#include <vector>

using FileBytes = std::vector<uint8_t>;

class SoundTest : public StoreTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// The file's path in the folder.
    std::string path(const std::string &file) const;

    /// Writes the path without extension into a buffer such as callers pass.
    char *name(const std::string &file = "tone");

    FileBytes bytes_of(const std::string &file) const;
    std::vector<float> floats_of(const std::string &file) const;
    bool exists(const std::string &file) const;

  private:
    Folder folder;
    char buffer[256];
};

/// Big-endian number of `size` bytes.
int64_t number_at(const FileBytes &bytes, size_t at, size_t size);

/// The 54 bytes of a header for so many frames at 44100 Hz, as the layout has them.
FileBytes plain_header(int64_t frames);

/// Samples behind the header.
std::vector<int> samples_in(const FileBytes &bytes, size_t from = 54);
