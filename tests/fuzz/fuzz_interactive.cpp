// Reading by hand. Of the input the first byte chooses the sequence of values, the second the
// envelope; then come the replies up to a byte of 1, and behind it the text that is read.
#include "tests/fuzz/target.h"
#include "tests/support/any_reading.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

const char *const sequences[] = {"f", "fa", "af", "fd", "df", "fad", "daf", "afd"};
const char *const envelopes[] = {"2 50 -10 6",   "2 50 -10 -1", "0 0 0 0", "1e30 1e30 1 1",
                                 "-1 -50 nan 2", "nan 5 5 5",   "2",       "0.3 7.9 -3 x"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    return run_quietly(data, size, [](std::string_view text) {
        if (text.size() < 2) {
            return;
        }
        const size_t end = std::min(text.find('\1'), text.size());
        std::string input = "y ";
        input += sequences[static_cast<unsigned char>(text[0]) % std::size(sequences)];
        input += ' ';
        input += text.substr(std::min<size_t>(2, end), end - std::min<size_t>(2, end));
        input += " / y ";
        input += envelopes[static_cast<unsigned char>(text[1]) % std::size(envelopes)];
        input += " 220 ";
        FILE *replies = fmemopen(input.data(), input.size(), "r");
        FILE *kept = stdin;
        stdin = replies;
        if (read_by_hand(text.substr(end)) == 0) {
            derive_store();
        }
        stdin = kept;
        std::fclose(replies);
    });
}
