// tests/support/plain_list.h -- a Lisp partials list read the plain way, over a vector of
// words, for the readers to be compared with.
#pragma once

#include <string>
#include <vector>

struct PlainPoint {
    float time, freq, amp, phase;
};

struct PlainList {
    int result = 0;          // of the pass that looks for broken structure
    int partials = 0;        // as it leaves the count
    int kept = 0;            // partials of 2 points and more
    std::vector<int> counts; // of each partial kept, as far as `partials` goes
    std::vector<std::vector<PlainPoint>> points;
    float maxamp = -200.0f;
    float minfreq = 22050.0f;
    float maxfreq = 1.0f;
};

/// White-space separated words.
std::vector<std::string> words_of(const std::string &text);

/// Reads the list. Point counts of more than a third of the text's length count as broken.
PlainList plain_list(const std::string &text);
