#include <gmock/gmock.h>

#include "match/SceneCoverage.h"

namespace zonstory {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SceneCoverage, SortsClipsToScenes) {
    const SceneNumbers story({"1", "2", "12A", "", "14", "14", "20"});
    const SceneCoverage coverage = FindSceneCoverage({{"a", "2", "10"},
                                                      {"b", "2", "9"},
                                                      {"c", "2B", "9"},
                                                      {"d", "2", "1A"},
                                                      {"e", "12a", ""},
                                                      {"f", "004", "1"},
                                                      {"g", "14", "1"},
                                                      {"h", "99", "1"},
                                                      {"i", "", "1"},
                                                      {"j", "the garden", ""}},
                                                     story);
    ASSERT_EQ(coverage.scenes.size(), 7u);
    EXPECT_THAT(coverage.scenes[1].clips, ElementsAre(3, 1, 2, 0)) << "by take";
    EXPECT_THAT(coverage.scenes[2].clips, ElementsAre(4));
    EXPECT_THAT(coverage.scenes[3].clips, ElementsAre(5)) << "the place of a scene without number";
    EXPECT_THAT(coverage.uncovered, ElementsAre(0, 4, 5, 6));
    EXPECT_THAT(coverage.ambiguous, ElementsAre(6));
    EXPECT_THAT(coverage.unknown, ElementsAre(7, 9));
    EXPECT_THAT(coverage.withoutScene, ElementsAre(8));
}

// "002" may be the second scene, which has no number, or the third, whose number is 2.
TEST(SceneCoverage, PlaceThatIsANumberElsewhereIsAmbiguous) {
    const SceneNumbers story({"1", "", "2"});
    const SceneCoverage coverage = FindSceneCoverage({{"a", "002", ""}, {"b", "2", ""}}, story);
    EXPECT_THAT(coverage.ambiguous, ElementsAre(0));
    EXPECT_THAT(coverage.scenes[2].clips, ElementsAre(1));
    EXPECT_THAT(FindSceneCoverage({}, SceneNumbers({})).uncovered, IsEmpty());
}

} // namespace
} // namespace zonstory
