// Runs a fuzz target over a folder of inputs and, for each, over some hundred mutations that
// are the same in every run: under any compiler, as a test.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

constexpr int mutations_per_input = 300;

/// Words and bytes that readers look at.
const std::string splices[] = {
    "(",
    ")",
    "POINTS",
    "PARTIALS",
    "SDIF",
    "1NVT",
    "{",
    "TableName",
    "SDFC",
    "-1",
    "0",
    "1",
    "2",
    "3",
    "nan",
    "inf",
    "2147483647",
    "1e999",
    "-1e38",
    "99999999999999999999",
    "\n",
    " ",
    "\r\n",
    "( POINTS 2",
    ") )",
    "( POINTS -1",
    "( POINTS 1 0 0 0 )",
    std::string(1, '\0'),
    "par-text-partials-format",
    "partials-count",
    "partials-data",
    "frame-count",
    "frame-data",
    "1TRC",
    "1HRM",
    "1FQ0",
    "0x0004",
    "ENDC",
    "ENDF",
    "4.2e-05",
};

using Random = std::mt19937; // its sequence is fixed by the standard

size_t below(Random &random, size_t limit) {
    return limit == 0 ? 0 : random() % limit;
}

/// Puts a splice in, takes a piece out, copies a piece elsewhere, changes a byte or cuts.
void mutate(std::string &text, Random &random) {
    const size_t at = below(random, text.size() + 1);
    const size_t length = below(random, 24);
    switch (below(random, 6)) {
    case 0:
        text.insert(at, " " + splices[below(random, std::size(splices))] + " ");
        break;
    case 1:
        text.erase(at, length);
        break;
    case 2:
        text.insert(below(random, text.size() + 1), text.substr(at, length));
        break;
    case 3:
        if (at < text.size()) {
            text[at] = static_cast<char>(random() & 0xFF);
        }
        break;
    case 4:
        text.resize(at);
        break;
    default:
        text.replace(at, length, splices[below(random, std::size(splices))]);
    }
}

void run(const std::string &text) {
    // A copy of exactly this size, so that reads behind its end are seen.
    const std::vector<uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

int run_with_mutations(const std::string &text) {
    run(text);
    Random random(static_cast<uint32_t>(text.size()) * 2654435761u + 1u);
    for (int i = 0; i < mutations_per_input; ++i) {
        std::string mutated = text;
        for (size_t step = below(random, 2) + 1; step > 0; --step) {
            mutate(mutated, random);
        }
        run(mutated);
    }
    return 1 + mutations_per_input;
}

} // namespace

int main(int argc, char **argv) {
    std::vector<std::filesystem::path> paths;
    for (int i = 1; i < argc; ++i) {
        for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    int runs = 0;
    for (const std::filesystem::path &path : paths) {
        std::ifstream file(path, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)),
                               std::istreambuf_iterator<char>());
        runs += run_with_mutations(text);
    }
    std::printf("%zu inputs, %d runs\n", paths.size(), runs);
    return paths.empty() ? 1 : 0;
}
