#include <sstream>

#include "host/match/Support.h"

namespace zonstory {
namespace {

const SceneNumbers kStory({"1", "2", "12", "12A", "", "14", "14"});

// "log 12A; ixml 2@3; file 12A-3.mov": sources and what they say, a take behind @.
std::vector<Statement> Statements(const std::string& sources) {
    std::vector<Statement> all;
    std::istringstream list(sources);
    for (std::string source; std::getline(list >> std::ws, source, ';');) {
        const std::size_t blank = source.find(' ');
        const std::string kind = source.substr(0, blank);
        const std::string text = source.substr(std::min(blank, source.size() - 1) + 1);
        const std::size_t take = std::min(text.find('@'), text.size());
        if (kind == "file") {
            const std::vector<Statement> path = test::StatePath(text, kStory);
            all.insert(all.end(), path.begin(), path.end());
        } else if (kind != "nothing") {
            const bool log = kind == "log";
            all.push_back(StateField(log              ? Source::Log
                                     : kind == "ixml" ? Source::IXml
                                                      : Source::Xmp,
                                     text.substr(0, take), text.substr(std::min(take + 1, text.size()))));
            all.back().ceiling = log ? Confidence::Certain : Confidence::High;
            all.back().where = log ? "a.csv:2" : "";
        }
    }
    return all;
}

std::string Told(const Decision& decision) {
    std::string told = decision.scene ? "scene " + kStory.Number(*decision.scene)
                                      : std::string(Name(decision.verdict)) + ": " + decision.reason;
    told += decision.take.empty() ? "" : ", take " + decision.take;
    told += decision.evidence ? ", " + std::string(Name(decision.evidence->confidence)) : "";
    return told + (decision.disagreeing.empty() ? "" : ", not unopposed");
}

constexpr char kDecisions[] = R"(
nothing = unmatched: nothing names a scene
log 12A = scene 12A, certain
log 2C = scene 2, high
log 2C-4 = scene 2, take 4, high
file 12A-3.mov; log 12 = scene 12, certain, not unopposed
file 12-3.mov; log 12 = scene 12, take 3, certain
log 1; log 2 = ambiguous: between 1 and 2, certain, not unopposed
log 2; log 2B = scene 2, certain
log 1, 2 = ambiguous: between 1 and 2, high
log 1/2 = ambiguous: between 1 and 2, high
log 99; file 12A-3.mov = unmatched: log a.csv:2 "99" says 99, which the story does not have, high, not unopposed
log 20240131; file 12A-3.mov = scene 12A, take 3, high
xmp 1; ixml 2 = scene 2, high, not unopposed
file 12A-3.mov; xmp 1 = scene 1, high, not unopposed
file 12A-3.mov; xmp 77 = unmatched: XMP "77" says 77, which the story does not have, high, not unopposed
xmp 005 = scene , high
log 14 = ambiguous: between 14 (#6) and 14 (#7), certain
file Scene 12/2.mov = scene 12, high
file 2 men.mov = unmatched: perhaps 2, of low confidence only, low
file 2B-7.mov; ixml 2 = scene 2, take 7, high
file 2B-7.mov; ixml 2@08 = scene 2, take 8, high
file 1B-7.mov; ixml 2 = scene 2, high, not unopposed)";

TEST(Decisions, AreAsSureAsTheirSources) {
    for (const auto& [sources, told] : test::Rows(kDecisions)) {
        EXPECT_EQ(Told(Decide(Statements(sources), kStory, Confidence::Medium)), told) << sources;
    }
    const std::vector<Statement> medium = Statements("file 12-3.mov");
    EXPECT_EQ(Decide(medium, kStory, Confidence::Medium).verdict, Verdict::Matched);
    EXPECT_EQ(Decide(medium, kStory, Confidence::High).verdict, Verdict::Unmatched);
}

TEST(Decisions, ExplainTheirEvidence) {
    for (const auto& [name, why] : test::Rows(R"(
12B-3.mov = a lettered number and a take; 12B is scene 12, set-up B
Sc12A.mov = a scene word; 12A is a scene of the story
99B-3.mov = a lettered number and a take; the story has no 99B
12AB-3.mov = a lettered number and a take; 12AB may be 12 and 12A)")) {
        const Decision decision = Decide(test::StatePath(name, kStory), kStory, Confidence::Medium);
        EXPECT_EQ(Explain(decision.evidence.value(), kStory), "file name \"" + name + "\": " + why);
    }
}

TEST(ConfidenceNames, AreReadByNameAndNumber) {
    EXPECT_EQ(ParseConfidence("Medium"), Confidence::Medium);
    EXPECT_EQ(ParseConfidence("0"), Confidence::None);
    EXPECT_EQ(ParseConfidence("71"), Confidence::High) << "the least level that reaches the bar";
    EXPECT_EQ(ParseConfidence("100"), Confidence::Certain);
    for (const char* const text : {"", "101", "-1", "sure", "70%", " 70", "99999999999"}) {
        EXPECT_FALSE(ParseConfidence(text)) << text;
    }
}

} // namespace
} // namespace zonstory
