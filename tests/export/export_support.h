// tests/export/export_support.h -- tests that export: a folder of their own, which is gone
// afterwards, what the dialogue said, and the files as text.
#pragma once

#include "store/store.h"
#include "tests/support/fixture.h"
#include "tests/support/folder.h"

#include <functional>
#include <string>
#include <vector>

/// The blanks behind which a name is typed.
inline const std::string blanks(17, ' ');

class ExportTest : public StoreTest {
  protected:
    /// The file's path in the folder.
    std::string path(const std::string &file = "out") const;

    /// The whole file; "none" when it is not there.
    std::string text_of(const std::string &file = "out") const;

    /// Puts a file there.
    void make(const std::string &file, const std::string &text) const;

    /// The names of all files in the folder, in order.
    std::vector<std::string> files() const;

  private:
    Folder folder;
};

/// An exporter of the whole store or of its selection, as the menu calls it.
using Exporter = void(float, float, float, Breakpoint *const *, const int32_t *, int32_t);
std::function<void()> on_store(Exporter *exporter);
std::function<void()> sdif_on_store(int32_t selection);

/// Flags points `first` to `last` of partial `i`.
void mark(int32_t i, int32_t first, int32_t last, uint16_t value = 1);

/// Two partials: three points with levels 0, -20 and -40 dB, two with -6 and -140 dB, at times
/// and frequencies that round in the third decimal.
std::vector<Partial> two_partials();

/// The text that printf makes.
std::string formatted(const char *format, ...) __attribute__((format(printf, 1, 2)));

/// What `work` says and complains of with `input` waiting while no file may grow beyond `bytes`.
struct ShortOfRoom {
    std::string out, err;
};
ShortOfRoom short_of_room(size_t bytes, const std::string &input,
                          const std::function<void()> &work);
