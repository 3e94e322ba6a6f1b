#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// The table that the documentation gives hosts, against the table above and the functions' own names.
TEST(PropertiesDocument, NamesEveryPropertyWithItsFunctions) {
    const std::set<std::string> expected = {
        "xmpScript|sceneSetting|WriteSceneHeadingToXMP|GetSceneSettingFromXMP|DeleteSceneHeadingFromXMP",
        "xmpDM|shotLocation|WriteSceneHeadingToXMP|GetShotLocationFromXMP|DeleteSceneHeadingFromXMP",
        "xmpScript|sceneTimeOfDay|WriteSceneHeadingToXMP|GetSceneTimeOfDayFromXMP|DeleteSceneHeadingFromXMP",
        "xmpDM|scene|WriteSceneNumberToXMP|GetSceneNumberFromXMP|DeleteSceneNumberFromXMP",
        "xmpDM|shotName|WriteShotNameToXMP|GetShotNameFromXMP|DeleteShotNameFromXMP",
        "xmpDM|shotNumber|never|GetShotNumberFromXMP|DeleteShotNumberFromXMP",
        "xmpDM|duration|WriteShotDurationToXMP|GetShotDurationValueFromXMP, GetShotDurationScaleFromXMP|"
        "DeleteShotDurationFromXMP",
        "xmpScript|action|WriteActionToXMP|GetActionFromXMP|DeleteActionFromXMP",
        "xmpScript|dialogSequence|WriteCharacterDialogueToXMP|GetCharacterDialogueFromXMP|"
        "DeleteCharacterDialogueFromXMP",
    };
    std::ifstream document(PROPERTIES_DOCUMENT);
    std::set<std::string> rows;
    for (std::string line; std::getline(document, line);) {
        std::vector<std::string> cells;
        std::istringstream stream(line);
        for (std::string cell; std::getline(stream, cell, '|');) {
            const std::size_t first = cell.find_first_not_of(" `");
            const std::size_t last = cell.find_last_not_of(" `");
            cells.push_back(first == std::string::npos ? "" : cell.substr(first, last + 1 - first));
        }
        if (cells.size() > 7 && cells[1].rfind("xmp", 0) == 0) {
            std::string row = cells[1] + '|' + cells[2] + '|' + cells[5] + '|' + cells[6] + '|' + cells[7];
            row.erase(std::remove(row.begin(), row.end(), '`'), row.end());
            rows.insert(row);
        }
    }
    EXPECT_EQ(rows, expected);
}

} // namespace
