#include "export/guard.h"

#include <cstdio>

const GuardWords plain_guard = {"File %s exists\n", "Cannot create file %s\n"};
const GuardWords selection_guard = {"File %s exists\n", "Error: Can't create file \"%s\"\n"};
const GuardWords list_guard = {"Error: File \"%s\" already exists\n",
                               "Error: Can't create file \"%s\"\n"};

const char *const name_prompt = "                 ";

bool refuse_existing(const char *name, const GuardWords &words) {
    if (!NewFile::exists(name)) {
        return false;
    }
    std::printf(words.exists, name);
    return true;
}

bool create_or_refuse(NewFile &file, const char *name, const GuardWords &words) {
    if (file.create(name)) {
        return true;
    }
    std::printf(words.cannot_create, name);
    return false;
}

bool pass_guard(NewFile &file, const char *name, const GuardWords &words) {
    return !refuse_existing(name, words) && create_or_refuse(file, name, words);
}
