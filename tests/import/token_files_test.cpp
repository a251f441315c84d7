// Opening files for the scanner, and the echo of a token on the console.
#include "import/tokens.h"

#include "tests/support/child.h"
#include "tests/support/console.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

TEST(Tokens, AnEchoIsALineOfItsOwn) {
    EXPECT_EQ(printed([] { echo_token("SDIF"); }), "SDIF\n");
    EXPECT_EQ(printed([] { echo_token({}); }), "\n");
    EXPECT_EQ(printed([] { echo_token(std::string_view("ab\0cd", 5)); }), "ab\n");
}

TEST(Tokens, ALongEchoIsCut) {
    EXPECT_EQ(printed([] { echo_token(std::string(100000, 'x')); }), std::string(255, 'x') + "\n");
}

TEST(Tokens, APercentSignIsPlainText) {
    EXPECT_EQ(printed([] { echo_token("%s%n%d"); }), "%s%n%d\n");
}

class TokenFiles : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_NE(mkdtemp(folder), nullptr);
    }
    void TearDown() override {
        unlink(path().c_str());
        rmdir(folder);
    }
    std::string path() const {
        return std::string(folder) + "/list";
    }
    void write_text(const std::string &text) const {
        FILE *file = std::fopen(path().c_str(), "wb");
        ASSERT_NE(file, nullptr);
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
    char folder[64] = "/tmp/quillgrove-tokens-XXXXXX";
};

TEST_F(TokenFiles, ARegularFile) {
    write_text("one two");
    TokenFile file;
    ASSERT_TRUE(open_tokens(file, path().c_str()));
    EXPECT_EQ(file.size, 7u);
    EXPECT_EQ(read_token(file), "one");
    EXPECT_EQ(read_token(file), "two");
    close_tokens(file);
}

TEST_F(TokenFiles, AnEmptyFile) {
    write_text("");
    TokenFile file;
    ASSERT_TRUE(open_tokens(file, path().c_str()));
    EXPECT_EQ(read_token(file), "");
    close_tokens(file);
}

TEST_F(TokenFiles, AFileOfSeveralMegabytesIsReadWhole) {
    std::string text;
    for (int i = 0; i < 500000; ++i) {
        text += std::to_string(i) + " ";
    }
    write_text(text);
    TokenFile file;
    ASSERT_TRUE(open_tokens(file, path().c_str()));
    skip_tokens(file, 500000);
    EXPECT_EQ(file.token, "499999");
    EXPECT_FALSE(file.ended);
    close_tokens(file);
}

TEST_F(TokenFiles, AFileThatIsNotThere) {
    TokenFile file;
    EXPECT_FALSE(open_tokens(file, path().c_str()));
    EXPECT_EQ(file.data, nullptr);
}

TEST_F(TokenFiles, AFolderGivesTheSystemsReason) {
    const std::string name = folder;
    const ChildResult result = in_child("", [&] {
        TokenFile file;
        std::printf("%d", open_tokens(file, name.c_str()));
    });
    EXPECT_EQ(result.out, "0");
    EXPECT_EQ(result.err, "Quillgrove: " + name + ": Is a directory\n");
}

TEST_F(TokenFiles, ADeviceIsRefused) {
    const ChildResult result = in_child("", [] {
        TokenFile file;
        std::printf("%d", open_tokens(file, "/dev/zero"));
    });
    EXPECT_EQ(result.out, "0");
    EXPECT_EQ(result.err, "Quillgrove: /dev/zero: Invalid argument\n");
}

TEST_F(TokenFiles, AFileWithoutPermission) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permission bits do not bind this user";
    }
    write_text("one");
    chmod(path().c_str(), 0);
    TokenFile file;
    EXPECT_FALSE(open_tokens(file, path().c_str()));
}

TEST_F(TokenFiles, APipeIsReadToItsEnd) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    std::string text;
    for (int i = 0; i < 50000; ++i) {
        text += std::to_string(i) + "\n";
    }
    std::thread writer([&] { write_text(text); });
    TokenFile file;
    const bool opened = open_tokens(file, path().c_str());
    writer.join();
    ASSERT_TRUE(opened);
    EXPECT_EQ(file.size, text.size());
    skip_tokens(file, 50000);
    EXPECT_EQ(file.token, "49999");
    close_tokens(file);
}

TEST_F(TokenFiles, AClosedFileGivesEmptyTokens) {
    TokenFile file;
    open_tokens_from_memory(file, "one", 3);
    read_token(file);
    close_tokens(file);
    EXPECT_EQ(read_token(file), "");
    EXPECT_EQ(file.size, 0u);
}

} // namespace
