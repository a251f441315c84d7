#include "tests/e2e/menu_rows.h"

#include <algorithm>
#include <map>

namespace {

const std::map<std::string, std::vector<std::string>> &menus() {
    static const std::map<std::string, std::vector<std::string>> entries = {
        {"", {"QuillGrove", "View", "Edit", "Process", "Export", "Synth", "Play", "Quit"}},
        {"View", {"Axes", "Flat", "Log Freq", "Breakpoints"}},
        {"Edit", {"Select", "Split", "Join", "Remove", "Extend...", "Merge", "Generate"}},
        {"Edit/Select",
         {"Left", "Right", "Partial", "All", "Partial Inverted", "All Inverted", "None",
          "Pick..."}},
        {"Edit/Generate", {"Replicate...", "Harmonics...", "Arbitrary..."}},
        {"Process", {"Fade", "Shift", "Scale...", "Mirror...", "Retro...", "Envelope..."}},
        {"Process/Fade", {"In", "Out"}},
        {"Process/Shift", {"Gain...", "Pitch...", "Time..."}},
        {"Export", {"Partials", "Cmix", "SPEAR", "SDIF"}},
        {"Export/Partials", {"All...", "Selected..."}},
        {"Export/Cmix", {"All...", "Selected..."}},
        {"Export/SPEAR", {"All...", "Selected..."}},
        {"Export/SDIF", {"All...", "Selected..."}},
        {"Synth", {"All...", "Selected..."}},
        {"Play", {"All", "Selected", "Zone"}},
    };
    return entries;
}

} // namespace

std::vector<int> rows_of(const std::string &way) {
    std::vector<int> rows;
    std::string menu;
    size_t begin = 0;
    while (begin <= way.size()) {
        const size_t end = std::min(way.find('/', begin), way.size());
        const std::string text = way.substr(begin, end - begin);
        const auto entries = menus().find(menu);
        if (entries == menus().end()) {
            return {};
        }
        const auto &texts = entries->second;
        const auto entry = std::find(texts.begin(), texts.end(), text);
        if (entry == texts.end()) {
            return {};
        }
        rows.push_back(static_cast<int>(entry - texts.begin()) + 1);
        menu = way.substr(0, end);
        begin = end + 1;
    }
    return rows;
}
