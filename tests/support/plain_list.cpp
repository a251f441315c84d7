#include "tests/support/plain_list.h"

#include <cmath>
#include <cstdlib>
#include <sstream>

namespace {

/// Words one after another; behind the last it comes again and again.
struct Words {
    std::vector<std::string> all;
    size_t next = 0;
    bool past_end = false;

    std::string read() {
        if (next >= all.size()) {
            past_end = true;
            return all.empty() ? "" : all.back();
        }
        return all[next++];
    }
    std::string read(long count) {
        std::string last;
        for (long i = 0; i < count; ++i) {
            last = read();
            if (past_end) {
                break; // all further ones are the same
            }
        }
        return last;
    }
};

int integer(const std::string &word) {
    const double value = std::strtod(word.c_str(), nullptr);
    return value > 2e9 ? 2147483647 : std::atoi(word.c_str());
}

/// The pass that looks for broken structure.
void check(Words words, size_t size, PlainList &list) {
    words.read(2);
    list.partials = integer(words.read());
    int i = 0;
    bool opening_read = false;
    while (opening_read || list.partials > i) {
        if (!opening_read) {
            words.read();
        }
        opening_read = false;
        const std::string keyword = words.read();
        if (keyword == ")") {
            return;
        }
        if (keyword != "POINTS") {
            list.result = -1;
            return;
        }
        const int n = integer(words.read());
        if (n > 0 && 3.0 * n > static_cast<double>(size)) {
            list.result = -1;
            return;
        }
        if (n >= 2) {
            ++list.kept;
            ++i;
            words.read(3L * n);
            opening_read = words.read()[0] == '(';
        } else {
            --list.partials;
            if (n >= 0) {
                words.read(3L * n + 1);
            }
            if (words.past_end) {
                list.partials = i;
            }
        }
    }
    list.result = words.read() == ")" ? 0 : -1;
}

float plain_amp(float amp, int j, int n) {
    if (j == n - 2) {
        return amp > -32.0f ? amp - 18.0f : amp;
    }
    if (j == 0) {
        return amp - 6.0f;
    }
    if (j == n - 1 && amp > -90.0f) {
        return -90.0f;
    }
    return amp;
}

PlainPoint plain_point(Words &words, const std::vector<PlainPoint> &before, int n,
                       PlainList &list) {
    PlainPoint point = {};
    const int j = static_cast<int>(before.size());
    point.time = static_cast<float>(std::atof(words.read().c_str()));
    const double freq = std::atof(words.read().c_str());
    point.freq = static_cast<float>(freq < 4.0 ? 4.0 : freq > 22050.0 ? 22050.0 : freq);
    point.amp = plain_amp(static_cast<float>(std::atof(words.read().c_str())), j, n);
    list.maxfreq = point.freq > list.maxfreq ? point.freq : list.maxfreq;
    list.minfreq = point.freq < list.minfreq ? point.freq : list.minfreq;
    list.maxamp = point.amp > list.maxamp ? point.amp : list.maxamp;
    if (j > 0) {
        const PlainPoint &last = before.back();
        const double c = (static_cast<double>(point.time) - static_cast<double>(last.time)) *
                         static_cast<double>(last.freq);
        double whole;
        const double fr = std::modf(c, &whole);
        float x = static_cast<float>(static_cast<double>(last.phase) / 6.283185307179586 + fr);
        x = x >= 1.0f ? x - 1.0f : x;
        point.phase = static_cast<float>(static_cast<double>(x) * 6.283185307179586);
    }
    return point;
}

void read_values(Words words, PlainList &list) {
    words.read(3);
    bool opening_read = false;
    while (static_cast<int>(list.points.size()) < list.partials) {
        if (!opening_read) {
            words.read();
        }
        opening_read = false;
        words.read();
        const int n = integer(words.read());
        if (n < 2) {
            words.read(n >= 0 ? 3L * n + 1 : 0);
            continue;
        }
        std::vector<PlainPoint> points;
        for (int j = 0; j < n; ++j) {
            points.push_back(plain_point(words, points, n, list));
        }
        list.counts.push_back(n);
        list.points.push_back(points);
        opening_read = words.read()[0] == '(';
    }
}

} // namespace

std::vector<std::string> words_of(const std::string &text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

PlainList plain_list(const std::string &text) {
    PlainList list;
    const Words words{words_of(text)};
    check(words, text.size(), list);
    if (list.result == 0) {
        list.partials = list.kept < list.partials ? list.kept : list.partials;
        read_values(words, list);
    }
    return list;
}
