#include "host/match/Support.h"

namespace zonstory {
namespace {

const SceneNumbers kStory({"1", "2", "12", "12A", "", "14", "14"});

Statement Log(const char* scene, const char* where = "log.csv:2") {
    Statement statement = StateField(Source::Log, scene, "");
    statement.ceiling = Confidence::Certain;
    statement.where = where;
    return statement;
}

Statement FileName(const char* name) {
    return StatePath(name, kStory, SlateStyle::Scene).front();
}

struct DecisionCase {
    const char* name;
    std::vector<Statement> statements;
    Verdict verdict;
    const char* scene; ///< Or, without an answer, words of the reason.
    Confidence confidence;
    std::size_t disagreeing = 0;
};
void PrintTo(const DecisionCase& c, std::ostream* os) {
    *os << c.name;
}

class Decisions : public ::testing::TestWithParam<DecisionCase> {};

TEST_P(Decisions, AreAsSureAsTheirSources) {
    const DecisionCase& c = GetParam();
    const Decision decision = Decide(c.statements, kStory, Confidence::Medium);
    EXPECT_EQ(decision.verdict, c.verdict);
    if (c.verdict == Verdict::Matched) {
        ASSERT_TRUE(decision.scene);
        EXPECT_EQ(kStory.Number(*decision.scene), c.scene);
        EXPECT_EQ(decision.reason, "");
    } else {
        EXPECT_FALSE(decision.scene);
        EXPECT_NE(decision.reason.find(c.scene), std::string::npos) << decision.reason;
    }
    EXPECT_EQ(decision.evidence ? decision.evidence->confidence : Confidence::None, c.confidence);
    EXPECT_EQ(decision.disagreeing.size(), c.disagreeing);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, Decisions,
    ::testing::Values(
        DecisionCase{"Nothing", {}, Verdict::Unmatched, "nothing names", Confidence::None},
        DecisionCase{"LogExact", {Log("12A")}, Verdict::Matched, "12A", Confidence::Certain},
        DecisionCase{"LogSetUpStripped", {Log("2C")}, Verdict::Matched, "2", Confidence::High},
        DecisionCase{"LogWithTakeInTheField", {Log("2C-4")}, Verdict::Matched, "2", Confidence::High},
        DecisionCase{
            "LogBeatsName", {FileName("12A-3.mov"), Log("12")}, Verdict::Matched, "12", Confidence::Certain, 1},
        DecisionCase{"LogAndNameAgree", {FileName("12-3.mov"), Log("12")}, Verdict::Matched, "12", Confidence::Certain},
        DecisionCase{"LogsDisagree",
                     {Log("1"), Log("2", "b.csv:9")},
                     Verdict::Ambiguous,
                     "between 1 and 2",
                     Confidence::Certain,
                     1},
        DecisionCase{"LogsAgree", {Log("2"), Log("2B", "b.csv:9")}, Verdict::Matched, "2", Confidence::Certain},
        DecisionCase{"LogNamesTwo", {Log("1, 2")}, Verdict::Ambiguous, "between 1 and 2", Confidence::High},
        DecisionCase{"LogNamesTwoBySlash", {Log("1/2")}, Verdict::Ambiguous, "between 1 and 2", Confidence::High},
        DecisionCase{"LogOfAnotherStory",
                     {Log("99"), FileName("12A-3.mov")},
                     Verdict::Unmatched,
                     "log log.csv:2 \"99\" says 99",
                     Confidence::High,
                     1},
        DecisionCase{
            "LogSaysADate", {Log("20240131"), FileName("12A-3.mov")}, Verdict::Matched, "12A", Confidence::High},
        DecisionCase{"IXmlBeatsXmp",
                     {StateField(Source::Xmp, "1", ""), StateField(Source::IXml, "2", "")},
                     Verdict::Matched,
                     "2",
                     Confidence::High,
                     1},
        DecisionCase{"XmpBeatsName",
                     {FileName("12A-3.mov"), StateField(Source::Xmp, "1", "")},
                     Verdict::Matched,
                     "1",
                     Confidence::High,
                     1},
        DecisionCase{"XmpOfAnotherStory",
                     {FileName("12A-3.mov"), StateField(Source::Xmp, "77", "")},
                     Verdict::Unmatched,
                     "77",
                     Confidence::High,
                     1},
        DecisionCase{"XmpPlaceOfASceneWithoutNumber",
                     {StateField(Source::Xmp, "005", "")},
                     Verdict::Matched,
                     "",
                     Confidence::High},
        DecisionCase{
            "RepeatedNumber", {Log("14")}, Verdict::Ambiguous, "between 14 (#6) and 14 (#7)", Confidence::Certain},
        DecisionCase{"NumberOfANameInAFolderOfAScene", StatePath("Scene 12/2.mov", kStory, SlateStyle::Scene),
                     Verdict::Matched, "12", Confidence::High},
        DecisionCase{
            "LowNameAlone", {FileName("2 men.mov")}, Verdict::Unmatched, "perhaps 2, of low", Confidence::Low}),
    [](const auto& one) { return one.param.name; });

TEST(Decisions, StopAtTheBar) {
    const std::vector<Statement> name = {FileName("12-3.mov")}; // Medium
    EXPECT_EQ(Decide(name, kStory, Confidence::Medium).verdict, Verdict::Matched);
    EXPECT_EQ(Decide(name, kStory, Confidence::High).verdict, Verdict::Unmatched);
    EXPECT_EQ(Decide({FileName("2 men.mov")}, kStory, Confidence::Low).verdict, Verdict::Matched);
}

TEST(Decisions, TakeComesFromTheStrongestThatAgrees) {
    EXPECT_EQ(Decide({FileName("2B-7.mov"), StateField(Source::IXml, "2", "")}, kStory, Confidence::Medium).take, "7");
    EXPECT_EQ(Decide({FileName("2B-7.mov"), StateField(Source::IXml, "2", "08")}, kStory, Confidence::Medium).take,
              "8");
    EXPECT_EQ(Decide({FileName("1B-7.mov"), StateField(Source::IXml, "2", "")}, kStory, Confidence::Medium).take, "");
}

TEST(Decisions, ExplainTheirEvidence) {
    const auto explain = [](const char* name) {
        return Explain(Decide({FileName(name)}, kStory, Confidence::Medium).evidence.value(), kStory);
    };
    EXPECT_EQ(explain("12B-3.mov"), "file name \"12B-3.mov\": a lettered number and a take; 12B is scene 12, set-up B");
    EXPECT_EQ(explain("Sc12A.mov"), "file name \"Sc12A.mov\": a scene word; 12A is a scene of the story");
    EXPECT_EQ(explain("99B-3.mov"), "file name \"99B-3.mov\": a lettered number and a take; the story has no 99B");
    EXPECT_EQ(explain("12AB-3.mov"), "file name \"12AB-3.mov\": a lettered number and a take; 12AB may be 12 and 12A");
}

TEST(ConfidenceNames, AreReadByNameAndNumber) {
    EXPECT_EQ(ParseConfidence("Medium"), Confidence::Medium);
    EXPECT_EQ(ParseConfidence("0"), Confidence::None);
    EXPECT_EQ(ParseConfidence("71"), Confidence::High) << "the least level that reaches the bar";
    EXPECT_EQ(ParseConfidence("100"), Confidence::Certain);
    for (const char* const text : {"", "101", "-1", "sure", "70%", " 70"}) {
        EXPECT_FALSE(ParseConfidence(text)) << text;
    }
}

} // namespace
} // namespace zonstory
