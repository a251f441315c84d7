#include "interact/command.h"

#include "edit/extend.h"
#include "edit/generate.h"
#include "edit/join.h"
#include "edit/merge.h"
#include "edit/remove.h"
#include "edit/replicate.h"
#include "edit/split.h"
#include "interact/clear.h"
#include "interact/selection.h"
#include "store/console.h"
#include "store/settings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

bool require_split() {
    if (found != 0 && numfound == 2 && split_precheck(foundSubscriptions)) {
        return true;
    }
    std::puts("Unacceptable Selection for: Split");
    return false;
}

bool split(int) {
    std::puts("Split");
    split3d(foundSubscriptions);
    return true;
}

bool require_join() {
    const FoundPoints &queue = foundSubscriptions;
    if (found == 0 || queue.count < 2) {
        return false;
    }
    if (!verify_found(queue.part0, queue.point0, queue.part1, queue.point1)) {
        std::puts("INVALID SELECTION");
        return false;
    }
    return true;
}

bool join(int) {
    join3d(foundSubscriptions.part0, foundSubscriptions.part1);
    return true;
}

bool refuse_remove() {
    std::puts("Unacceptable Selection for: Remove");
    return false;
}

bool require_remove() {
    const bool nothing = found == 0 && selected == 0;
    const bool not_one_point = selected == 0 && numfound != 1;
    return nothing || not_one_point ? refuse_remove() : true;
}

/// The second slot is passed with its partial number in both places; that is the entry's law.
bool remove(int) {
    const FoundPoints &queue = foundSubscriptions;
    if (remove_precheck(queue.part0, queue.point0, selected)) {
        remove3d(queue.part0, queue.point0, selected);
        return true;
    }
    if (remove_precheck(queue.part1, queue.part1, selected)) {
        remove3d(queue.part1, queue.part1, selected);
        return true;
    }
    return refuse_remove();
}

bool require_extend() {
    if (found == 0) {
        return false;
    }
    std::printf("numfound = %d\n", numfound);
    if (numfound >= 2) {
        std::puts("Invalid selection");
        deselect_all();
        return false;
    }
    return true;
}

bool extend(int) {
    char word[word_size] = "";
    if (!read_parameter(word, "QuillGrove > Enter additionl points:\n             ")) {
        return false;
    }
    extend3d(foundSubscriptions.part0, std::atoi(word));
    return true;
}

bool merge(int) {
    merge3d();
    return true;
}

/// Stores a reply of one letter. A longer one ends the program, as an overrun does.
void take_letter(char (&letter)[2], const char *word) {
    if (std::strlen(word) >= sizeof letter) {
        std::fprintf(stderr, "Quillgrove: \"%s\" is longer than one letter\n", word);
        std::exit(-1);
    }
    std::memcpy(letter, word, std::strlen(word) + 1);
}

bool harmonics(int) {
    char word[word_size] = "";
    if (!read_parameter(word, "Enter: <number>, <type>, <order>, <amp.decay>")) {
        return false;
    }
    menu_state.iarg0 = std::atoi(word);
    if (!read_word(word, sizeof word)) {
        return false;
    }
    take_letter(menu_state.carg0, word);
    if (!read_word(word, sizeof word)) {
        return false;
    }
    menu_state.iarg1 = std::atoi(word);
    if (!read_word(word, sizeof word)) {
        return false;
    }
    take_letter(menu_state.carg1, word);
    artificial_harmonics(&menu_state.iarg0, menu_state.carg0, &menu_state.iarg1, menu_state.carg1);
    return true;
}

bool replicate(int) {
    char word[word_size] = "";
    if (!read_parameter(word, "Enter: <destination_time> (-1 = @end)\n\t")) {
        return false;
    }
    replicate_selections(word);
    return true;
}

bool arbitrary(int) {
    constexpr size_t line_size = 100;
    char line[line_size] = "";
    say("Enter: <freq_mult1> <freq_mult2> ...[c|r|q|e|b]\n\t");
    std::fflush(stdout);
    do {
        // What does not fit of a line stays for the next reader.
        if (std::fgets(line, sizeof line, stdin) == nullptr) {
            return false;
        }
    } while (std::strcmp(line, "\n") == 0);
    if (std::strcmp(line, "-c\n") == 0) {
        std::puts("Command cancelled");
        return false;
    }
    if (dbp) {
        std::printf("num_chars = %d\n", static_cast<int>(std::strlen(line)));
    }
    std::puts(line);
    arbitrary_partials(line);
    return true;
}

const Command rows[] = {
    {11, false, "Edit:  Split\t ", "Invalid Selection Mode for: Split", require_split, split,
     finish_refresh},
    {12, false, "Edit:  Join\t \t ", "Invalid Selection Mode for: Join", require_join, join,
     finish_refresh},
    {13, false, "Edit:  Remove\t ", "Invalid Selection Mode for: Remove", require_remove, remove,
     finish_refresh},
    {14, true, "Edit:  Extend...\t ", "Invalid Selection Mode for: Extend", require_extend, extend,
     finish_refresh},
    {15, false, "Edit:  Merge\t ", "Invalid Selection Mode for: Merge", require_selection, merge,
     finish_refresh_without_phase},
    {80, true, "Generate artificial harmonics...\t ", nullptr, require_selection_plainly, harmonics,
     finish_redisplay},
    {81, true, "Replicate selected partials...\t ", nullptr, require_selection_plainly, replicate,
     finish_redisplay},
    {82, true, "\nGenerate arbitrary partials...\t ", nullptr, require_selection_plainly, arbitrary,
     finish_redisplay},
};

} // namespace

std::span<const Command> edit_commands() {
    return rows;
}
