#include "custody/HashLists.h"

#include <sys/stat.h>

#include <gmock/gmock.h>

#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const std::string kMD5 = "d41d8cd98f00b204e9800998ecf8427e";

constexpr const char* kAscMhl = R"(<?xml version="1.0" encoding="UTF-8"?>
<hashlist version="2.0" xmlns="urn:ASC:MHL:v2.0">
  <creatorinfo><creationdate>2026-05-01T20:15:00+02:00</creationdate><hostname>cart</hostname>
    <tool version="1">offload</tool></creatorinfo>
  <processinfo><process>transfer</process><roothash><content><xxh64>0ea03b369a463d9d</xxh64></content></roothash>
    <ignore><pattern>day1/b.mov</pattern></ignore></processinfo>
  <hashes>
    <hash><path size="5" lastmodificationdate="2026-05-01T19:00:00+02:00">day1/a &amp; b.mov</path>
      <xxh64 action="original" hashdate="2026-05-01T20:15:01+02:00">0ea03b369a463d9d</xxh64></hash>
    <directoryhash><path>day1</path><content><xxh64>0ea03b369a463d9d</xxh64></content></directoryhash>
  </hashes>
  <references><hashlistreference><path>day1/b.mov</path><c4>c41</c4></hashlistreference></references>
</hashlist>)";

struct ListCase {
    const char* name;
    const char* list; ///< Its path below the folder of all.
    std::string bytes;
    const char* file; ///< Asked about.
    bool isSealed;
    const char* problem = ""; ///< A part of it.
};

// clang-format off
const ListCase kLists[] = {
    {"ASC",                "ascmhl/0001_roll_2026-05-01_181500Z.mhl", kAscMhl, "day1/a & b.mov", true},
    {"ASC, folder in caps", "AscMHL/0001.mhl", kAscMhl, "day1/a & b.mov", true},
    {"ASC, other places",  "ascmhl/0001.mhl", kAscMhl, "day1/b.mov", false},
    {"ASC, folder's hash", "ascmhl/0001.mhl", kAscMhl, "day1", false},
    {"ASC, cut off",       "ascmhl/0001.mhl", "<hashlist><hashes>\n<hash><path>a.mov</path>", "day1/z.mov", true, "is not well-formed in line 2"},
    {"older MHL",          "roll.mhl", "<hashlist version=\"1.1\"><hash><file>day1/a.mov</file><size>5</size><md5>" + kMD5 + "</md5></hash></hashlist>", "day1/a.mov", true},
    {"MHL of page text",   "roll.mhl", "<html/>", "a.mov", true, "is no hash list"},
    {"MHL with a type",    "roll.mhl", "<!DOCTYPE hashlist [<!ENTITY a \"b\">]><hashlist/>", "a.mov", true, "document type"},
    {"GNU",                "day1/x.md5", kMD5 + "  a.mov\n" + kMD5 + " *b.mov\r\n", "day1/b.mov", true},
    {"GNU, not named",     "day1/x.md5", kMD5 + "  a.mov\n", "day1/b.mov", false},
    {"not beneath",        "day2/x.md5", kMD5 + "  a.mov\n", "day1/a.mov", false},
    {"same name deeper",   "x.md5", kMD5 + "  a.mov\n", "day1/a.mov", false},
    {"absolute",           "x.md5", kMD5 + "  @/day1/a.mov\n", "day1/a.mov", true},
    {"dot in front",       "x.sha1", "da39a3ee5e6b4b0d3255bfef95601890afd80709  ./day1//a.mov", "day1/a.mov", true},
    {"escaped",            "x.md5", "\\" + kMD5 + "  two\\nlines\\\\.mov\n", "two\nlines\\.mov", true},
    {"Windows",            "x.md5", "\xEF\xBB\xBF; made by hand\r\n\r\n" + kMD5 + " *Day1\\A.MOV\r\n", "day1/a.mov", true},
    {"UTF-16",             "x.md5", "\xFF\xFE" "1\0" "2\0" "3\0" "4\0" "5\0" "6\0" "7\0" "8\0 \0 \0a\0\n\0"s, "a", true},
    {"other accents",      "x.md5", kMD5 + "  Cafe\xCC\x81.mov\n", "caf\xC3\xA9.mov", true},
    {"Latin-1",            "x.md5", kMD5 + "  caf\xE9.mov\n", "caf\xE9.mov", true},
    {"no name",            "a.mov.md5", kMD5 + "\n", "a.mov", true},
    {"BSD",                "x.md5", "MD5 (day (1).mov) = " + kMD5 + "\n", "day (1).mov", true},
    {"openssl",            "x.sha256", "SHA2-256(a.mov)= " + kMD5 + kMD5 + "\n", "a.mov", true},
    {"xxhsum",             "x.xxh128", kMD5 + "  a.mov\n", "a.mov", true},
    {"xxhsum, XXH3",       "x.xxhsum", "XXH3_0ea03b369a463d9d  a.mov\n", "a.mov", true},
    {"SFV",                "x.SFV", "; by hand\n01 take.mov  00000000\n", "01 take.mov", true},
    {"no list",            "x.md5", "what is this?\n", "a.mov", true, "cannot be read in line 1"},
    {"empty",              "x.md5", "", "a.mov", false},
    {"no list by name",    "md5.txt", kMD5 + "  a.mov\n", "a.mov", false},
};
// clang-format on

TEST(HashLists, NameFilesAsManyProgramsWriteThem) {
    for (const ListCase& c : kLists) {
        const support::TemporaryFolder folder;
        const fs::path root = fs::canonical(folder.Path());
        fs::create_directories((root / c.list).parent_path());
        fs::create_directories(root / "day1");
        std::string bytes = c.bytes;
        if (const std::size_t at = bytes.find('@'); at != std::string::npos) {
            bytes.replace(at, 1, root.native());
        }
        support::WriteFile(root / c.list, bytes);
        zonstory::HashLists lists;
        const auto found = lists.Find(root / c.file);
        EXPECT_EQ(found.has_value(), c.isSealed) << c.name;
        if (found) {
            EXPECT_EQ(found->path, root / c.list) << c.name;
            EXPECT_THAT(found->problem, testing::HasSubstr(c.problem)) << c.name;
            EXPECT_EQ(found->problem.empty(), *c.problem == '\0') << c.name << found->problem;
        }
    }
}

// A share may hold thousands of clips below one list, and lists that are no regular files.
TEST(HashLists, AreReadOnceAndNeverWaitedFor) {
    const support::TemporaryFolder folder;
    const fs::path root = fs::canonical(folder.Path());
    ASSERT_EQ(::mkfifo((root / "pipe.md5").c_str(), 0600), 0);
    support::WriteFile(root / "x.md5", kMD5 + "  a.mov\n");
    zonstory::HashLists lists;
    EXPECT_FALSE(lists.Find(root / "b.mov"));
    fs::remove(root / "x.md5");
    EXPECT_TRUE(lists.Find(root / "a.mov"));
}

} // namespace
