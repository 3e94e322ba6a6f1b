#include "log/SheetFilling.h"

#include <gmock/gmock.h>

#include "output/CsvReader.h"

namespace zonstory {
namespace {

using namespace std::string_literals;

// What every row is to say: "Set" EXT, and whatever the action is.
struct Filled {
    LogSheet sheet;
    Filling filling;
    std::string bytes;
};

Filled Fill(const std::string& bytes, const std::string& action, bool replace = false) {
    Filled filled;
    filled.sheet = ReadLogSheet(bytes, "day.log", [](const std::vector<std::string>& titles) {
        return titles.front().ends_with("Name") ? 1 : 0;
    });
    std::vector<SheetColumn> columns = {{"Set", std::nullopt}, {"Action", std::nullopt}};
    for (SheetColumn& column : columns) {
        const std::vector<std::string> titles = TextsOf(filled.sheet.header);
        const auto found = std::find(titles.begin(), titles.end(), column.title);
        column.at = found == titles.end() ? std::nullopt : std::optional<std::size_t>(found - titles.begin());
    }
    const std::vector<std::vector<std::string>> values(filled.sheet.rows.size(), {"EXT", action});
    filled.filling = FillSheet(filled.sheet, columns, values, replace);
    filled.bytes = ApplyEdits(bytes, filled.filling.edits);
    return filled;
}

std::string Wide(const std::string& latin, bool bigEndian) {
    std::string wide;
    for (const char c : latin) {
        wide += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return wide;
}

struct SheetCase {
    std::string before;
    std::string after;
};

TEST(Sheets, GetTheirCellsAndKeepAllElse) {
    const std::string ale = "Heading\r\nFIELD_DELIM\tTABS\r\n\r\nColumn\r\n";
    const SheetCase cases[] = {
        {ale + "Name\tSet\r\n\r\nData\r\na \t\r\n", ale + "Name\tSet\tAction\r\n\r\nData\r\na \tEXT\tRain\r\n"},
        {ale +
             "Name\tAction\tSet\t\r\nData\r\na\t  \t\t\r\nb\tRain\tEXT\t", // a delimiter behind the last, a row that says it
         ale + "Name\tAction\tSet\t\r\nData\r\na\tRain\tEXT\t\r\nb\tRain\tEXT\t"},
        {ale + "Name\rData\ra\t\rb\t\n\nc",
         ale + "Name\tSet\tAction\rData\ra\tEXT\tRain\rb\tEXT\tRain\n\nc\tEXT\tRain"},
        {ale + "Name\tLens\tFps\nData\na\n", ale + "Name\tLens\tFps\tSet\tAction\nData\na\t\t\tEXT\tRain\n"},
        {"Name,Set\n# of day 3\na,INT\nb,\n\n,\n", // none of ours; another value; an empty row
         "Name,Set,Action\n# of day 3,EXT,Rain\na,INT,Rain\nb,EXT,Rain\n\n,\n"},
        {"Day;3\nsep=;\nName;Set\na; \n", "Day;3\nsep=;\nName;Set;Action\na;EXT;Rain\n"},
        {"\"Name\";\"Set\"\r\n\"a \"\"1\"\"\r\n\";\"\"\r\n", // quotes around all
         "\"Name\";\"Set\";\"Action\"\r\n\"a \"\"1\"\"\r\n\";\"EXT\";\"Rain\"\r\n"},
        {"\xEF\xBB\xBFName|Set\na|\xC3\xA9", "\xEF\xBB\xBFName|Set|Action\na|\xC3\xA9|Rain"},
        {"\xFF\xFE" + Wide("Name\tSet\r\na\xE9\t\r\n", false) + "x", // half a unit at the end
         "\xFF\xFE" + Wide("Name\tSet\tAction\r\na\xE9\tEXT\tRain\r\n", false) + "x"},
        {Wide("Name,Set\na,\n", true), Wide("Name,Set,Action\na,EXT,Rain\n", true)}};
    for (const auto& [before, after] : cases) {
        const Filled filled = Fill(before, "Rain");
        EXPECT_EQ(filled.bytes, after);
        EXPECT_EQ(Fill(after, "Rain").bytes, after) << "a second time";
    }
}

TEST(Sheets, TakeAnyValue) {
    const std::string longOne(5000, 'x');
    const SheetCase values[] = {{"a\tb\r\nc\x0B\x1B\xE2\x80\xA8"
                                 "d",
                                 "a b  c   d"}, // and what it is in a cell
                                {" \"Now\", he; says | ", "\"Now\", he; says |"},
                                {"\"", "\""},
                                {longOne, longOne},
                                {"=1\n\n", "=1"},
                                {"\t\n", ""}};
    for (const auto& [value, cell] : values) {
        for (const char delimiter : kCsvDelimiters) {
            const Filled csv =
                Fill("Name"s + delimiter + "Action" + delimiter + "\na" + delimiter + delimiter + "\n", value);
            const CsvContents read = ParseCsv(csv.bytes, "day.csv");
            ASSERT_EQ(read.rows.size(), 1U) << csv.bytes;
            EXPECT_THAT(read.rows[0].fields, ::testing::ElementsAre("a", cell, "", "EXT")) << csv.bytes;
        }
        const Filled ale = Fill("Heading\nColumn\nName\tAction\tEnd\nData\na\t\tz\n", value);
        EXPECT_EQ(ale.bytes, "Heading\nColumn\nName\tAction\tEnd\tSet\nData\na\t" + cell + "\tz\tEXT\n");
    }
}

TEST(Sheets, TellWhatTheyDidNotTake) {
    const Filled kept = Fill("Name,Set\na,INT\n", "");
    ASSERT_EQ(kept.filling.cells.size(), 1U);
    EXPECT_EQ(kept.filling.cells[0].state, CellState::Kept);
    EXPECT_EQ(kept.filling.cells[0].old, "INT");
    EXPECT_EQ(Fill("Name,Set\na, \"INT\" \n", "", true).bytes, "Name,Set\na,\"EXT\"\n");

    const std::string windows = "Name,Action\nCaf\xE9,\n";
    EXPECT_EQ(Fill(windows, "\xE2\x82\xAC\xC3\xA9").bytes, "Name,Action,Set\nCaf\xE9,\x80\xE9,EXT\n");
    const Filled unwritable = Fill(windows, "\xE6\x97\xA5");
    EXPECT_EQ(unwritable.bytes, "Name,Action,Set\nCaf\xE9,,EXT\n");
    EXPECT_EQ(unwritable.filling.cells[0].state, CellState::Unwritable);

    std::string titles = "Name";
    for (int column = 2; column <= 63; ++column) {
        titles += "\tC" + std::to_string(column);
    }
    const Filled full = Fill("Heading\nColumn\n" + titles + "\nData\na\n", "Rain");
    EXPECT_EQ(full.bytes, "Heading\nColumn\n" + titles + "\tSet\nData\na" + std::string(63, '\t') + "EXT\n");
    EXPECT_THAT(full.filling.notes, ::testing::ElementsAre("no column Action: an ALE file has at most 64"));
    EXPECT_THAT(Fill("Name,Lens\na,50,x\n", "Rain").filling.notes,
                ::testing::Each(::testing::HasSubstr("line 2 has cells behind the last title")));
}

} // namespace
} // namespace zonstory
