// The dialogue of interactive reading. The end of the console's input ends it: before the reading
// as a refusal, within the reading with what there is.

#include "import/afile_interactive.h"

#include "store/console.h"
#include "store/settings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using Word = char[256];

constexpr double smallest = 0.00001; // of a frequency or a duration that counts

bool confirm_reading() {
    std::fputs("Quillgrove> Reading interactively:\nQuillgrove> Please confirm (y/n): ", stdout);
    Word word = "";
    while (read_word(word, sizeof word)) {
        if (word[0] == 'y' || word[0] == 'n') {
            return word[0] == 'y';
        }
        std::fputs("Quillgrove> ", stdout);
    }
    return false;
}

/// The letters of the values, in reading order.
bool ask_sequence(Word &sequence) {
    std::puts("Quillgrove> Which parameters? (a|f|d)");
    std::puts("            f = freq.");
    std::puts("            a = amp.");
    std::puts("            d = dur.");
    std::fputs("            (no space, in reading order): ", stdout);
    if (!read_word(sequence, sizeof sequence)) {
        return false;
    }
    std::printf("Sequence of arguments: %s\n", sequence);
    if (std::strchr(sequence, 'f') == nullptr) {
        std::puts("Quillgrove> partials without frequency");
        std::puts("            don't make sense");
        return false;
    }
    return true;
}

/// Where a letter stands in the sequence, from 1 on.
int place_of(const char *sequence, char letter) {
    return static_cast<int>(std::strcspn(sequence, std::string(1, letter).c_str())) + 1;
}

/// How many of the three letters stand in the sequence.
size_t letters_in(const char *sequence) {
    size_t found = 0;
    for (const char letter : {'f', 'a', 'd'}) {
        found += std::strchr(sequence, letter) != nullptr ? 1 : 0;
    }
    return found;
}

void tell_sequence(const char *sequence) {
    const size_t length = std::strlen(sequence);
    const int f = place_of(sequence, 'f');
    std::printf("Number  of values:    %d\n", static_cast<int>(length));
    if (length == 1) {
        std::printf("f @ %d\n", f);
    } else if (length == 2) {
        std::printf("f @ pos.%d\t @ pos.%d\n", f, 3 - f);
    } else {
        std::printf("f @ pos.%d,  a @ pos.%d,  d @ pos.%d\n", f, place_of(sequence, 'a'),
                    place_of(sequence, 'd'));
    }
    std::puts("Begin reading:");
}

/// A token as text of at most a few hundred characters; a comma at its end becomes a blank.
std::string text_of(std::string_view token) {
    std::string text(token.substr(0, std::min(token.find('\0'), sizeof(Word) - 1)));
    if (!text.empty() && text.back() == ',') {
        text.back() = ' ';
    }
    return text;
}

/// What a reply makes of a number.
struct ReplyRow {
    const char *reply;
    int value;       // its place in the record
    bool above_zero; // counts only where it is above the smallest
    const char *echo;
};

constexpr ReplyRow reply_table[] = {
    {"f", 0, true, " F\n "},
    {"a", 1, false, " A\n "},
    {"d", 2, true, " D\n "},
};

/// Puts the number into the record as the reply says; false for a reply that passes it over.
bool store_value(PhRecord &record, const char *reply, double number, const char *sequence) {
    for (const ReplyRow &row : reply_table) {
        if (std::strcmp(reply, row.reply) != 0) {
            continue;
        }
        record.value[row.value] = static_cast<float>(number);
        std::snprintf(record.tag, sizeof record.tag, "%.3s", sequence);
        if (!row.above_zero || number > smallest) {
            record.index = static_cast<int32_t>(std::strlen(sequence));
        }
        if (dwbg) {
            std::fputs(row.echo, stdout);
        }
        return true;
    }
    return false;
}

bool wants_to_finish() {
    std::fputs("Finish reading? (y/n): ", stdout);
    Word word = "";
    return !read_word(word, sizeof word) || word[0] == 'y';
}

/// Reads the groups; returns how many records were begun.
int32_t read_records(TokenFile &file, PhRecord *ph, const char *sequence) {
    const size_t length = std::strlen(sequence);
    int32_t record = 0;
    size_t replies = 0; // of this record
    while (record < most_records) {
        const std::string text = text_of(read_token(file));
        if (file.ended) {
            break;
        }
        if (isDecimal(text.c_str()) != 1) {
            continue;
        }
        std::printf("    text:  \"%s\"  \t(f|a|d/n)?: ", text.c_str());
        Word reply = "";
        if (!read_word(reply, sizeof reply)) {
            break;
        }
        if (reply[0] == '/') {
            if (wants_to_finish()) {
                break;
            }
        } else if (store_value(ph[record], reply, token_number(text), sequence) &&
                   ++replies == length) {
            ++record;
            replies = 0;
        }
    }
    return replies > 0 ? record + 1 : record;
}

void dump_records(const PhRecord *ph, int32_t begun, int32_t filled) {
    std::printf(">>PARTIALS: %d\n", filled);
    for (int32_t i = 0; i < begun; ++i) {
        std::printf("ph[%d].index = %d\ttag = %s\tvalue[0] = %f\tvalue[1] = %f\tvalue[2] = %f\n", i,
                    ph[i].index, ph[i].tag, ph[i].value[0], ph[i].value[1], ph[i].value[2]);
    }
}

/// Toward zero, held to the type; 0 for what is no number.
int32_t whole_of(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<int32_t>(std::clamp(value, double{INT32_MIN}, double{INT32_MAX}));
}

/// Reads a number over the one in `value`; false where there is none.
template <class Number, class Convert> bool read_over(Number &value, const Convert &convert) {
    double number;
    if (!read_double(number)) {
        return false;
    }
    value = convert(number);
    return true;
}

} // namespace

int32_t isDecimal(const char *text) {
    const size_t length = std::strlen(text);
    int points = 0;
    int32_t decimal = std::strcmp(text, " ") == 0 ? 0 : 1;
    for (size_t i = 0; i < length && decimal == 1; ++i) {
        points += text[i] == '.' ? 1 : 0;
        const bool digit = text[i] >= '0' && text[i] <= '9';
        const bool blank_at_end = text[i] == ' ' && i + 1 == length;
        if (points > 1 || !(digit || text[i] == '.' || blank_at_end)) {
            decimal = 0;
        }
    }
    if (dwbg) {
        std::printf("\"%s\", %d\n", text, decimal);
    }
    return decimal;
}

int32_t read_interactively(TokenFile &file, PhRecord *ph) {
    Word sequence = "";
    if (!confirm_reading() || !ask_sequence(sequence)) {
        return -1;
    }
    if (letters_in(sequence) != std::strlen(sequence)) {
        std::exit(-1);
    }
    tell_sequence(sequence);
    const int32_t begun = read_records(file, ph, sequence);
    std::puts("End reading.");
    const int32_t filled = static_cast<int32_t>(
        std::count_if(ph, ph + begun, [](const PhRecord &record) { return record.index > 0; }));
    if (dbp) {
        dump_records(ph, begun, filled);
    }
    return filled;
}

int32_t construct_data(const int32_t *total, int32_t *pps, float *dur, float *level, float *decay) {
    const auto to_float = [](double number) { return static_cast<float>(number); };
    std::fputs("Quillgrove> Enter: <duration> <points/s.> <amp(dB)> <decay/s.>\n\t\t", stdout);
    static_cast<void>(read_over(*dur, to_float) && read_over(*pps, whole_of) &&
                      read_over(*level, to_float) && read_over(*decay, to_float));
    std::printf("%5.2f %d %6.2f", *dur, *pps, *level);
    if (*decay < 0.0f) {
        std::puts(" full decay");
    } else {
        std::printf(" %4.1f\n", *decay);
    }
    return *total;
}
