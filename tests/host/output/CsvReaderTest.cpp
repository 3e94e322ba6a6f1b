#include "output/CsvReader.h"

#include <gmock/gmock.h>

#include "support/MessageOf.h"
#include "support/TemporaryFolder.h"
#include "support/Utf16.h"

namespace {

using support::InUTF16;
using ::testing::ElementsAre;
using zonstory::CsvError;
using zonstory::ParseCsv;

struct FileCase {
    const char* name;
    std::string bytes;
};

const FileCase kFileCases[] = {
    {"Commas", "clip,scene\né.mov,\"1,A\"\nb c.mov,2\n"},
    {"Semicolons", "clip;scene\r\né.mov;1,A\r\nb c.mov;2"},
    {"Tabs", "clip\tscene\né.mov\t1,A\n\n\nb c.mov\t2\n"},
    {"Bars", "clip|scene\né.mov|1,A\nb c.mov|2\n"},
    {"OldLineEnds", "clip,scene\ré.mov,\"1,A\"\rb c.mov,2\r"},
    {"SeparatorLine", "sep=;\r\nclip;scene\r\né.mov;1,A\r\nb c.mov;2\r\n"},
    {"Windows1252", "clip,scene\n\xE9.mov,\"1,A\"\nb c.mov,2\n"},
    {"UTF8Mark", "\xEF\xBB\xBF\"clip\",scene\né.mov,\"1,A\"\nb c.mov,2\n"},
    {"UTF16WithoutMark", InUTF16("clip;scene\né.mov;1,A\nb c.mov;2\n", false, false)},
    {"BlanksAndEmptyRows", " clip , scene \n,\n é.mov , \"1,A\" \n  \nb c.mov,2\n"},
};

TEST(CsvFile, ReadsTheSameRows) {
    for (const FileCase& c : kFileCases) {
        SCOPED_TRACE(c.name);
        const zonstory::CsvContents contents = ParseCsv(c.bytes, "t.csv");
        EXPECT_THAT(contents.header.fields, ElementsAre("clip", "scene"));
        ASSERT_EQ(contents.rows.size(), 2U);
        EXPECT_THAT(contents.rows[0].fields, ElementsAre("é.mov", "1,A"));
        EXPECT_THAT(contents.rows[1].fields, ElementsAre("b c.mov", "2"));
    }
}

TEST(CsvReader, CountsLinesOfTheFile) {
    const auto rows = ParseCsv("sep=,\r\na,b\r\n \r\n\"x\r\ny\",1\r\nz,2\r\n", "t.csv").rows;
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].line, 4U);
    EXPECT_EQ(rows[0].fields[0], "x\r\ny");
    EXPECT_EQ(rows[1].line, 6U);
}

std::string ProblemWith(const std::string& bytes) {
    return support::MessageOf<CsvError>([&] { ParseCsv(bytes, "t.csv"); });
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
