#include "output/Table.h"

#include <gtest/gtest.h>

namespace {

zonstory::Table MakeTable() {
    zonstory::Table table({{"position", "#", zonstory::Align::Right}, {"location", "location"}, {"who", "speakers"}});
    table.AddRow({"1", "KÜCHE", "ANN, BOB"});
    table.AddRow({"12", "医院", ""});
    table.AddRow({"7", "a\x1b[2J", "\"X\"\nY"});
    table.AddRow({" 3", "a ", "tab\there"});
    table.AddRow({"4", "x;y", ""});
    return table;
}

TEST(Table, AlignsTextByDisplayWidth) {
    EXPECT_EQ(MakeTable().AsText(), " #  location  speakers\n"
                                    " 1  KÜCHE     ANN, BOB\n"
                                    "12  医院\n"
                                    " 7  a\\x1b[2J  \"X\"\\nY\n"
                                    " 3  a         tab\\there\n"
                                    " 4  x;y\n");
}

TEST(Table, WritesCsvByTheBook) {
    EXPECT_EQ(MakeTable().AsCsv(), "position,location,who\r\n"
                                   "1,KÜCHE,\"ANN, BOB\"\r\n"
                                   "12,医院,\r\n"
                                   "7,a\x1b[2J,\"\"\"X\"\"\nY\"\r\n"
                                   "\" 3\",\"a \",\"tab\there\"\r\n"
                                   "4,\"x;y\",\r\n");
}

} // namespace
