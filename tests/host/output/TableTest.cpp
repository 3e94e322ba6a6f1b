#include "output/Table.h"

#include <gtest/gtest.h>

#include "output/Csv.h"
#include "output/CsvReader.h"

namespace {

zonstory::Table MakeTable() {
    zonstory::Table table({{"position", "#", zonstory::Align::Right}, {"location", "location"}, {"who", "speakers"}});
    table.AddRow({"1", "KÜCHE", "ANN, BOB"});
    table.AddRow({"12", "医院", ""});
    table.AddRow({"7", "a\x1b[2J", "\"X\"\nY"});
    return table;
}

TEST(Table, AlignsTextByDisplayWidth) {
    EXPECT_EQ(MakeTable().AsText(), " #  location  speakers\n"
                                    " 1  KÜCHE     ANN, BOB\n"
                                    "12  医院\n"
                                    " 7  a\\x1b[2J  \"X\"\\nY\n");
}

TEST(Table, WritesCsvByTheBook) {
    EXPECT_EQ(MakeTable().AsCsv(), "position,location,who\r\n"
                                   "1,KÜCHE,\"ANN, BOB\"\r\n"
                                   "12,医院,\r\n"
                                   "7,a\x1b[2J,\"\"\"X\"\"\nY\"\r\n");
}

TEST(CsvRecord, ReadsBackAsWritten) {
    const std::vector<std::string> fields = {"clip", "", " a ", "x,y;z", "\"q\"", "two\r\nlines", "café", "tab\there"};
    const zonstory::CsvContents contents =
        zonstory::ParseCsv("1,2,3,4,5,6,7,8\r\n" + zonstory::CsvRecord(fields), "t.csv");
    ASSERT_EQ(contents.rows.size(), 1U);
    EXPECT_EQ(contents.rows[0].fields, fields);
}

} // namespace
