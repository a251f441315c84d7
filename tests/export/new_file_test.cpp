// The files that exporters make: never over an existing one, gone when they are not whole.
#include "export/guard.h"

#include "tests/export/export_support.h"
#include "tests/support/console.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using NewFiles = ExportTest;

TEST_F(NewFiles, HoldsTheTextWhenFinished) {
    NewFile file;
    ASSERT_TRUE(file.create(path().c_str()));
    std::string whole;
    for (int i = 0; i < 100000; ++i) {
        file.text.print("line %d\n", i);
        whole += formatted("line %d\n", i);
        file.drain();
    }
    EXPECT_LT(file.text.size(), 70000u) << "the text goes out on its way";
    EXPECT_TRUE(file.good());
    EXPECT_TRUE(file.finish());
    EXPECT_EQ(text_of(), whole);
}

TEST_F(NewFiles, IsGoneUnlessFinished) {
    {
        NewFile file;
        ASSERT_TRUE(file.create(path().c_str()));
        EXPECT_EQ(text_of(), "");
        file.text.put("something");
    }
    EXPECT_EQ(text_of(), "none");
}

TEST_F(NewFiles, LeavesWhatExists) {
    make("out", "kept");
    {
        NewFile file;
        EXPECT_FALSE(file.create(path().c_str()));
    }
    EXPECT_EQ(text_of(), "kept");
}

TEST_F(NewFiles, FollowsNoDanglingLink) {
    ASSERT_EQ(symlink(path("aim").c_str(), path().c_str()), 0);
    EXPECT_FALSE(NewFile::exists(path().c_str()));
    NewFile file;
    EXPECT_FALSE(file.create(path().c_str()));
    EXPECT_EQ(files(), std::vector<std::string>{"out"});
}

TEST_F(NewFiles, APipeExistsAndDoesNotWait) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_TRUE(NewFile::exists(path().c_str()));
    EXPECT_TRUE(NewFile::exists("/tmp"));
    EXPECT_TRUE(NewFile::exists("/dev/full"));
    EXPECT_FALSE(NewFile::exists(path("none").c_str()));
}

TEST_F(NewFiles, AFullDiskIsToldAndLeavesNoFile) {
    const std::string name = path();
    const ShortOfRoom result = short_of_room(100000, "", [&name] {
        NewFile file;
        file.create(name.c_str());
        for (int i = 0; i < 20000 && file.good(); ++i) {
            file.text.put("0123456789");
            file.drain();
        }
        std::printf("%d %d\n", file.good(), file.finish());
    });
    EXPECT_EQ(result.out, "0 0\n");
    EXPECT_EQ(result.err, "Quillgrove: " + name + ": File too large\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(NewFiles, TheLastBlockCounts) {
    const std::string name = path();
    const ShortOfRoom result = short_of_room(1000, "", [&name] {
        NewFile file;
        file.create(name.c_str());
        file.text.put(std::string(1001, 'x'));
        std::printf("%d\n", file.finish());
    });
    EXPECT_EQ(result.out, "0\n");
    EXPECT_EQ(result.err, "Quillgrove: " + name + ": File too large\n");
    EXPECT_TRUE(files().empty());
}

std::string guarded(const std::string &name, const GuardWords &words, bool &passed) {
    return printed([&] {
        NewFile file;
        passed = pass_guard(file, name.c_str(), words);
    });
}

TEST_F(NewFiles, GuardInItsWords) {
    make("out", "kept");
    const std::string there = path();
    const std::string nowhere = path("no/where");
    bool passed = true;
    EXPECT_EQ(guarded(there, plain_guard, passed), "File " + there + " exists\n");
    EXPECT_FALSE(passed);
    EXPECT_EQ(guarded(nowhere, plain_guard, passed), "Cannot create file " + nowhere + "\n");
    EXPECT_FALSE(passed);
    EXPECT_EQ(guarded(there, selection_guard, passed), "File " + there + " exists\n");
    EXPECT_EQ(guarded(nowhere, selection_guard, passed),
              "Error: Can't create file \"" + nowhere + "\"\n");
    EXPECT_EQ(guarded(there, list_guard, passed), "Error: File \"" + there + "\" already exists\n");
    EXPECT_EQ(guarded(nowhere, list_guard, passed),
              "Error: Can't create file \"" + nowhere + "\"\n");
    EXPECT_EQ(guarded(path("new"), plain_guard, passed), "");
    EXPECT_TRUE(passed);
    EXPECT_EQ(text_of(), "kept");
}

TEST_F(NewFiles, DevicesAreNeverWrittenInto) {
    bool passed = true;
    EXPECT_EQ(guarded("/dev/full", plain_guard, passed), "File /dev/full exists\n");
    EXPECT_FALSE(passed);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(NewFiles, AFolderWithoutTheRight) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permission bits do not bind this user";
    }
    std::filesystem::create_directory(path("closed"));
    chmod(path("closed").c_str(), 0500);
    bool passed = true;
    const std::string name = path("closed/out");
    EXPECT_EQ(guarded(name, plain_guard, passed), "Cannot create file " + name + "\n");
    EXPECT_FALSE(passed);
}

} // namespace
