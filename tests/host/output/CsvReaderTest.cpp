#include "output/CsvReader.h"

#include <ostream>

#include <gmock/gmock.h>

#include <zoncore/UString.h>

#include "support/TemporaryFolder.h"

namespace {

using ::testing::ElementsAre;
using zonstory::CsvError;
using zonstory::ParseCsv;

std::string InUTF16(const std::string& utf8, bool isBigEndian) {
    std::string bytes;
    for (const char16_t unit : zoncore::UTF8to16(utf8)) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += isBigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

struct FileCase {
    const char* name;
    std::string bytes;
};
void PrintTo(const FileCase& c, std::ostream* stream) {
    *stream << c.name;
}
class CsvFile : public ::testing::TestWithParam<FileCase> {};

TEST_P(CsvFile, ReadsTheSameRows) {
    const zonstory::CsvContents contents = ParseCsv(GetParam().bytes, "t.csv");
    EXPECT_THAT(contents.header.fields, ElementsAre("clip", "scene"));
    ASSERT_EQ(contents.rows.size(), 2U);
    EXPECT_THAT(contents.rows[0].fields, ElementsAre("é.mov", "1,A"));
    EXPECT_THAT(contents.rows[1].fields, ElementsAre("b c.mov", "2"));
}

INSTANTIATE_TEST_SUITE_P(
    Spellings, CsvFile,
    ::testing::Values(FileCase{"Commas", "clip,scene\né.mov,\"1,A\"\nb c.mov,2\n"},
                      FileCase{"Semicolons", "clip;scene\r\né.mov;1,A\r\nb c.mov;2"},
                      FileCase{"Tabs", "clip\tscene\né.mov\t1,A\n\n\nb c.mov\t2\n"},
                      FileCase{"Bars", "clip|scene\né.mov|1,A\nb c.mov|2\n"},
                      FileCase{"OldLineEnds", "clip,scene\ré.mov,\"1,A\"\rb c.mov,2\r"},
                      FileCase{"SeparatorLine", "sep=;\r\nclip;scene\r\né.mov;1,A\r\nb c.mov;2\r\n"},
                      FileCase{"Windows1252", "clip,scene\n\xE9.mov,\"1,A\"\nb c.mov,2\n"},
                      FileCase{"UTF8Mark", "\xEF\xBB\xBF\"clip\",scene\né.mov,\"1,A\"\nb c.mov,2\n"},
                      FileCase{"UTF16Little", "\xFF\xFE" + InUTF16("clip\tscene\né.mov\t1,A\nb c.mov\t2\n", false)},
                      FileCase{"UTF16Big", "\xFE\xFF" + InUTF16("clip,scene\né.mov,\"1,A\"\nb c.mov,2\n", true)},
                      FileCase{"UTF16WithoutMark", InUTF16("clip;scene\né.mov;1,A\nb c.mov;2\n", false)},
                      FileCase{"BlanksAndEmptyRows", " clip , scene \n,\n é.mov , \"1,A\" \n  \nb c.mov,2\n"}),
    [](const auto& row) { return row.param.name; });

TEST(CsvReader, CountsLinesOfTheFile) {
    const auto rows = ParseCsv("sep=,\r\na,b\r\n\r\n\"x\r\ny\",1\r\nz,2\r\n", "t.csv").rows;
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].line, 4U);
    EXPECT_EQ(rows[0].fields[0], "x\r\ny");
    EXPECT_EQ(rows[1].line, 6U);
}

std::string ProblemWith(const std::string& bytes) {
    try {
        ParseCsv(bytes, "t.csv");
    } catch (const CsvError& error) {
        return error.what();
    }
    return "";
}

TEST(CsvReader, SaysWhereAFileIsBroken) {
    EXPECT_EQ(ProblemWith("a,b\n1,2\n\"x,3\n4,5\n"), "t.csv:3: a quote is out of place or not closed");
    EXPECT_EQ(ProblemWith("a,b\n1,x\"y\n"), "t.csv:2: a quote is out of place or not closed");
    EXPECT_EQ(ProblemWith(""), "t.csv: has no rows");
    EXPECT_EQ(ProblemWith("\n\n"), "t.csv: has no rows");
    const support::TemporaryFolder folder;
    EXPECT_THROW(zonstory::ReadCsv(folder / "none.csv"), CsvError);
    EXPECT_THROW(zonstory::ReadCsv(folder.Path()), CsvError);
}

} // namespace
