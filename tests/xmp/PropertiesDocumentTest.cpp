#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <string>

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
    const std::regex row("\\| (xmp\\w+) \\| (\\w+) (?:\\|[^|]*){2}\\| (.*) \\| (.*) \\| (.*) \\|");
    std::set<std::string> found;
    for (std::string line; std::getline(document, line);) {
        line.erase(std::remove(line.begin(), line.end(), '`'), line.end());
        if (std::smatch cells; std::regex_match(line, cells, row)) {
            found.insert(cells.format("$1|$2|$3|$4|$5"));
        }
    }
    EXPECT_EQ(found, expected);
}

} // namespace
