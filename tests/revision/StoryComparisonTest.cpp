#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <zonstoryparser/StoryComparison.h>

#include "../bench/DraftGenerator.h"
#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using bench::RevisionPlan;
using support::MakeScene;

struct PlanCase {
    const char* name;
    RevisionPlan plan;
    double right; ///< The share of scenes that must be told right, over all seeds.
};

const PlanCase kPlanCases[] = {
    {"Unchanged", {60, true}, 1},
    {"Unnumbered", {60, false}, 1},
    {"AThirdOfTheWords", {60, true, false, 60, 33}, 1},
    {"EverythingAtOnce", {60, true, false, 20, 33, 6, 6, 6, 4, 4, 2, 2}, 1},
    {"RewrittenFromFirstToLast", {60, true, false, 30, 100}, 1},
    {"NumberedAfresh", {60, true, true, 30, 33, 5, 5}, 0.99},
    {"UnnumberedEverythingAtOnce", {60, false, false, 20, 33, 6, 6, 0, 4, 4, 2, 2}, 0.98},
};

TEST(ComparedDrafts, TellWhatBecameOfEachScene) {
    for (const PlanCase& c : kPlanCases) {
        SCOPED_TRACE(c.name);
        std::size_t mistakes = 0;
        std::size_t scenes = 0;
        for (std::uint32_t seed = 1001; seed <= 1006; ++seed) {
            const bench::Revision revision = bench::MakeRevision(c.plan, seed);
            mistakes += bench::CountMistakes(revision, CompareStories(*revision.before, *revision.after));
            scenes += revision.key.size();
        }
        EXPECT_GE(1 - static_cast<double>(mistakes) / static_cast<double>(scenes), c.right) << mistakes;
    }
}

boost::intrusive_ptr<Talewright> Story(std::initializer_list<boost::intrusive_ptr<Scene>> scenes) {
    boost::intrusive_ptr<Talewright> story(new Talewright);
    story->document = new Document;
    story->document->body = new Stream;
    story->document->body->section = support::MakeSection(scenes);
    return story;
}

// "1>2 state parts", a scene a row.
std::vector<std::string> Rows(const StoryComparison& comparison) {
    constexpr const char* kStates[] = {"same", "changed", "added", "removed", "omitted", "moved", "renumbered"};
    std::vector<std::string> rows;
    for (const SceneComparison& scene : comparison.scenes) {
        rows.push_back(std::to_string(scene.oldPosition.value_or(0)) + ">" +
                       std::to_string(scene.newPosition.value_or(0)) + " " + kStates[static_cast<int>(scene.state)] +
                       (scene.headingChanged ? " heading" : "") + (scene.actionChanged ? " action" : "") +
                       (scene.dialogueChanged ? " dialogue" : ""));
    }
    return rows;
}

TEST(CompareStories, SaysWhichPartsChangedAndWhoSaysWhatElse) {
    const auto draft = [](const UString& heading, const UString& action, const UString& cue, const UString& said) {
        return Story({MakeScene({{kSceneHeading, heading},
                                 {kAction, action},
                                 {kCharacter, cue},
                                 {kDialog, said},
                                 {kCharacter, u"BOB"},
                                 {kDialog, u"Here."}},
                                u"12A")});
    };
    const auto before = draft(u"INT. HUT - DAY", u"Ann waits. It rains.", u"ANN (V.O.)", u"Where is he now?");
    const auto after = draft(u"INT. HUT - NIGHT", u"Ann waits.   It rains.", u"ANN (CONT'D)", u"Where is my hat?");
    const StoryComparison comparison = CompareStories(*before, *after);
    EXPECT_THAT(Rows(comparison), testing::ElementsAre("1>1 changed heading dialogue"));
    ASSERT_EQ(comparison.scenes[0].dialogue.size(), 1U);
    EXPECT_EQ(comparison.scenes[0].dialogue[0].speaker, u"ANN");
    EXPECT_EQ(comparison.scenes[0].dialogue[0].words.in, 2U);
    EXPECT_EQ(comparison.scenes[0].dialogue[0].words.out, 2U);
}

TEST(CompareStories, RenamesEverywhereAreSaidOnceAndChangeNoScene) {
    const auto scene = [](const UString& number, const UString& name, const UString& prose, const UString& text) {
        return MakeScene({{kSceneHeading, u"EXT. PIER - DAY"},
                          {kAction, prose + u" looks up. " + prose + u"'s hat flies."},
                          {kCharacter, name},
                          {kDialog, text}},
                         number);
    };
    const auto before = Story({scene(u"1", u"CAPTAIN ROTH", u"Captain Roth", u"One two three."),
                               scene(u"2", u"CAPTAIN ROTH", u"Captain Roth", u"Four five six.")});
    const auto after = Story({scene(u"1", u"MAJOR LUND", u"Major Lund", u"One two three."),
                              scene(u"2", u"MAJOR LUND", u"Major Lund", u"Four five seven.")});
    const StoryComparison comparison = CompareStories(*before, *after);
    EXPECT_THAT(Rows(comparison), testing::ElementsAre("1>1 same", "2>2 changed dialogue"));
    ASSERT_EQ(comparison.renames.size(), 1U);
    EXPECT_EQ(comparison.renames[0].from, u"CAPTAIN ROTH");
    EXPECT_EQ(comparison.renames[0].to, u"MAJOR LUND");
    EXPECT_EQ(comparison.renames[0].scenes, 2U);
}

TEST(CompareStories, ATieIsReportedAndNotGuessed) {
    const auto say = [](const UString& text) { return MakeScene({{kSceneHeading, u"INT. BAR"}, {kAction, text}}); };
    const auto before = Story({say(u"He drinks one red beer slowly.")});
    const auto after = Story({say(u"He drinks one big beer slowly."), say(u"He drinks one old beer slowly.")});
    const StoryComparison comparison = CompareStories(*before, *after);
    ASSERT_EQ(comparison.ties.size(), 1U);
    EXPECT_THAT(comparison.ties[0].newPositions, testing::ElementsAre(1U, 2U));
    EXPECT_THAT(Rows(comparison), testing::ElementsAre("1>0 removed", "0>1 added", "0>2 added"));
    EXPECT_THAT(Rows(CompareStories(*Story({say(u"A."), say(u"A.")}), *Story({say(u"A."), say(u"A."), say(u"A.")}))),
                testing::ElementsAre("1>1 same", "2>2 same", "0>3 added")); // word for word alike: in order
}

TEST(CompareStories, OmittedScenesKeepTheirNumber) {
    const auto before = Story({MakeScene({{kSceneHeading, u"INT. BAR - DAY"}, {kAction, u"He drinks."}}, u"7")});
    const auto after = Story({MakeScene({{kSceneHeading, u"Omitted"}}, u"7")});
    EXPECT_THAT(Rows(CompareStories(*before, *after)), testing::ElementsAre("1>1 omitted heading action"));
    EXPECT_THAT(Rows(CompareStories(*after, *after)), testing::ElementsAre("1>1 same"));
    EXPECT_TRUE(CompareStories(Talewright(), Talewright()).scenes.empty());
}

UString Only(const std::vector<WordRun>& runs, WordRun::Kind left) {
    UString text;
    for (const WordRun& run : runs) {
        if (run.kind != left) {
            text.append(text.empty() ? u"" : u" ").append(run.words);
        }
    }
    return text;
}

RC_GTEST_PROP(CompareWords, GivesBothTextsBackWithTheFewestChanges, ()) {
    const auto text = [] {
        UString made;
        for (const int word : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 4))) {
            made.append(made.empty() ? u"" : u" ").push_back(static_cast<char16_t>(u'a' + word));
        }
        return made;
    };
    const UString before = text();
    const UString after = text();
    const std::vector<WordRun> runs = CompareWords(before, after);
    RC_ASSERT(Only(runs, WordRun::Kind::In) == before);
    RC_ASSERT(Only(runs, WordRun::Kind::Out) == after);
    std::vector<std::size_t> common((after.size() + 1) / 2 + 1, 0); // of the longest common subsequence, row by row
    for (std::size_t one = 0; one < before.size(); one += 2) {
        std::size_t diagonal = 0;
        for (std::size_t other = 0; other < after.size(); other += 2) {
            const std::size_t above = common[other / 2 + 1];
            common[other / 2 + 1] = before[one] == after[other] ? diagonal + 1 : std::max(above, common[other / 2]);
            diagonal = above;
        }
    }
    std::size_t kept = 0;
    for (const WordRun& run : runs) {
        kept += run.kind == WordRun::Kind::Kept ? (run.words.size() + 1) / 2 : 0;
    }
    RC_ASSERT(kept == common.back());
}

TEST(CarriedScene, IsWhatWritingLeaves) {
    const auto scene = MakeScene({{kSceneHeading, u"INT. HUT - DAY"},
                                  {kAction, u"Rain\u0007 falls."}, // stored as a space
                                  {kCharacter, u"ANN"},
                                  {kDialog, u"Oh."}});
    SXMPMeta xmp;
    std::vector<zonmetadata::Path> changed;
    WriteSceneMetadataIntoXMP(scene, xmp, changed);
    EXPECT_EQ(ReadCarriedScene(xmp), SceneToCarry(scene));
    WriteActionToXMP(u"Snow.", xmp);
    EXPECT_NE(ReadCarriedScene(xmp), SceneToCarry(scene));
    EXPECT_TRUE(SceneToCarry(MakeScene({})).IsEmpty());
}

} // namespace
