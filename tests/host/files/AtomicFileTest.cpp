#include "files/AtomicFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using zonstory::OutputError;
using zonstory::WriteFileAtomically;

TEST(AtomicFile, MakesAndReplacesAndKeepsPermissions) {
    const support::TemporaryFolder folder;
    WriteFileAtomically(folder / "r.csv", "one");
    EXPECT_EQ(support::ReadFile(folder / "r.csv"), "one");
    fs::permissions(folder / "r.csv", fs::perms::owner_read | fs::perms::owner_write);
    WriteFileAtomically(folder / "r.csv", "two");
    EXPECT_EQ(support::ReadFile(folder / "r.csv"), "two");
    EXPECT_EQ(fs::status(folder / "r.csv").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(support::NamesIn(folder.Path()).size(), 1U);
}

TEST(AtomicFile, ReplacesWhatALinkLeadsTo) {
    const support::TemporaryFolder folder;
    support::WriteFile(folder / "real", "old");
    fs::create_symlink("real", folder / "link");
    WriteFileAtomically(folder / "link", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(support::ReadFile(folder / "real"), "new");
}

TEST(AtomicFile, LeavesTheOldFileWhenItFails) {
    const support::TemporaryFolder folder;
    EXPECT_THROW(WriteFileAtomically(folder / "none" / "r.csv", "x"), OutputError);
    EXPECT_THROW(WriteFileAtomically(folder.Path(), "x"), OutputError);
    EXPECT_THROW(WriteFileAtomically("/dev/full", "x"), OutputError);
    WriteFileAtomically("/dev/null", "x");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(support::NamesIn(folder.Path()).size(), 0U);
}

} // namespace
