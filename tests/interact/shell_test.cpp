// The way out to a shell: which answer gives which shell, what is told, what is run.
#include "interact/shell.h"

#include "store/settings.h"
#include "tests/interact/keys_support.h"
#include "tests/support/child.h"
#include "tests/support/console.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::string started; // command lines, each with its end
int answer = 0;

int write_down(const char *command) {
    started += std::string(command) + "\n";
    return answer;
}

const std::string question = "\nLaunch UNIX shell? Which? ";

class Shell : public KeysTest {
  protected:
    void SetUp() override {
        KeysTest::SetUp();
        started.clear();
        answer = 0;
        run_command_line = write_down;
    }
    void TearDown() override {
        run_command_line = std::system;
        KeysTest::TearDown();
    }
    /// What setshell makes of a word, its result behind it, and what it prints.
    static std::string chosen(const std::string &word) {
        char name[shell_word_size] = "";
        std::strcpy(name, word.c_str());
        int32_t result = -1;
        const std::string text = printed([&] { result = setshell(name); });
        return name + std::string(" ") + std::to_string(result) + text;
    }
};

TEST_F(Shell, NamesItByWhatTheWordHolds) {
    EXPECT_EQ(chosen("tcsh"), "/bin/tcsh 1") << "it holds csh, too";
    EXPECT_EQ(chosen("csh"), "/bin/csh 1");
    EXPECT_EQ(chosen("ksh"), "/bin/ksh 1");
    EXPECT_EQ(chosen("bash"), "/bin/bash 1");
    EXPECT_EQ(chosen("zsh"), "/bin/zsh 1");
    EXPECT_EQ(chosen("xxbashxx"), "/bin/bash 1");
    EXPECT_EQ(chosen("zshbash"), "/bin/bash 1") << "the order of the tests decides";
    EXPECT_EQ(chosen("no-zsh"), "/bin/zsh 1") << "a known name counts before the letter n";
}

TEST_F(Shell, OtherWordsGiveThePlainShell) {
    for (const char *word : {"y", "sh", "yes", "N", "/bla", "TCSH", "fish", "-c"}) {
        EXPECT_EQ(chosen(word), "/bin/sh 1") << word;
    }
}

TEST_F(Shell, LetterNCancels) {
    for (const char *word : {"n", "no", "never", "/bin/sh", "xn"}) {
        EXPECT_EQ(chosen(word), std::string(word) + " 0Shell operation cancelled...\n");
    }
}

TEST_F(Shell, NullNameTakesThePlainShell) {
    EXPECT_EQ(setshell(nullptr), 1);
    EXPECT_EQ(printed([] { shell(nullptr); }), "/bin/sh\nShell operation terminated...\n");
    EXPECT_EQ(started, "/bin/sh\n");
}

TEST_F(Shell, TellsThePathRunsItAndEnds) {
    EXPECT_EQ(printed([] { shell("/bin/zsh"); }), "/bin/zsh\nShell operation terminated...\n");
    EXPECT_EQ(started, "/bin/zsh\n");
    dwbg = 1;
    EXPECT_EQ(printed([] { shell("/bin/zsh"); }), "/bin/zsh\n\nShell operation terminated...\n");
}

TEST_F(Shell, FailureIsNotLookedAt) {
    for (const int result : {-1, 127 << 8, 9}) {
        answer = result;
        EXPECT_EQ(printed([] { shell("/bin/csh"); }), "/bin/csh\nShell operation terminated...\n");
    }
}

TEST_F(Shell, EscapeAsksAndRuns) {
    for (int modifiers = 0; modifiers < key_states; ++modifiers) {
        started.clear();
        EXPECT_EQ(press(key_escape, modifiers, "y\n"),
                  question + "/bin/sh\nShell operation terminated...\n");
        EXPECT_EQ(started, "/bin/sh\n");
        EXPECT_EQ(posted(), 0) << "no redisplay on the way back";
    }
    EXPECT_EQ(press(key_escape, 0, "  tcsh now\n"),
              question + "/bin/tcsh\nShell operation terminated...\n");
}

TEST_F(Shell, EscapeCancelledByN) {
    EXPECT_EQ(press(key_escape, 0, "no\n"), question + "Shell operation cancelled...\n");
    EXPECT_EQ(started, "");
    EXPECT_EQ(posted(), 0);
}

TEST_F(Shell, EndOfInputStartsNothing) {
    EXPECT_EQ(press(key_escape, 0, ""), question);
    EXPECT_EQ(started, "");
}

TEST_F(Shell, OverlongWordIsCut) {
    EXPECT_EQ(press(key_escape, 0, std::string(5000, 'y') + "\n"),
              question + "/bin/sh\nShell operation terminated...\n");
    EXPECT_EQ(press(key_escape, 0, std::string(5000, 'y') + "n\n"),
              question + "/bin/sh\nShell operation terminated...\n")
        << "the letter lies behind the cut";
}

TEST_F(Shell, RealShellRuns) {
    const ChildResult result = in_child("", [] {
        run_command_line = std::system;
        shell("echo from the shell");
        std::fflush(stdout);
    });
    EXPECT_EQ(result.out, "echo from the shell\nfrom the shell\nShell operation terminated...\n");
    EXPECT_EQ(result.status, 0);
}

} // namespace
