// Names of clips and fields for scene numbers, held against a story. The input is text: the clip's path, then what a
// log, the sound file and the metadata say, a line each; further lines are numbers of the story beside the fixed ones.
#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Target.h"
#include "TextInvariants.h"
#include "match/NamePatterns.h"
#include "match/NameRuns.h"
#include "text/AsciiText.h"

namespace {

using namespace zonstory;

constexpr Confidence kAnyBar = Confidence::None;

std::vector<Statement> StatePath(const std::string& path, const SceneNumbers& story, SlateStyle style) {
    return NamePatterns({&path, 1}, {}, story, {style, std::nullopt}).Statements(0);
}

// ---- What is read ----------------------------------------------------------------------------------------------------

/// A name as the readers see it: what its runs are made of.
struct Seen {
    std::set<std::string, std::less<>> numbers; ///< Cut from runs of digits at no other place than behind their zeros.
    std::string letters;

    explicit Seen(std::string_view name) {
        const NameRuns runs(name);
        for (std::size_t run = 0; run < runs.size(); ++run) {
            letters += runs[run].digits ? std::string_view() : runs.Text(run);
            numbers.emplace(runs[run].digits ? WithoutLeadingZeros(runs.Text(run)) : std::string_view());
        }
    }
};

// A scene is put together of the name's own letters and whole numbers.
bool IsMadeOf(std::string_view scene, const Seen& seen) {
    const NameRuns runs(scene);
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const bool known = runs[run].digits ? seen.numbers.contains(runs.Text(run))
                                            : runs.Text(run).find_first_not_of(seen.letters) == std::string_view::npos;
        if (!known) {
            return false;
        }
    }
    return runs.size() > 0;
}

void CheckReadings(const std::vector<SlateReading>& readings, std::string_view text) {
    const Seen seen(text);
    for (const SlateReading& reading : readings) {
        REQUIRE(!reading.scene.empty() && IsMadeOf(reading.scene, seen));
        REQUIRE(reading.take.empty() || IsMadeOf(reading.take, seen)); // a take may have a point, as scenes do
        REQUIRE(reading.confidence != Confidence::None);
        REQUIRE(reading.confidence <= Confidence::High || reading.rule == SlateRule::WholeField);
    }
}

void CheckName(const std::string& name, const SceneNumbers& story) {
    const auto read = [&](const std::string& text, SlateStyle style) {
        return StatePath(text, story, style).front().readings;
    };
    const std::vector<SlateReading> readings = read(name, SlateStyle::Scene);
    CheckReadings(readings, name);
    REQUIRE(readings == read(LowerCase(name), SlateStyle::Scene));
    if (!name.empty() && WithoutMediaExtension(name) == name) {
        REQUIRE(readings == read(name + ".mov", SlateStyle::Scene));
    }
    for (const SlateReading& reading : read(name, SlateStyle::Continuous)) {
        REQUIRE(reading.rule == SlateRule::SceneWord);
    }
    const SlateNumber slate = ReadSlateNumber(name);
    REQUIRE(slate.slate.empty() ? slate.take.empty() : IsMadeOf(slate.slate, Seen(name)));
}

// ---- What is decided -------------------------------------------------------------------------------------------------

void CheckDecision(const Decision& decision, const SceneNumbers& story, Confidence bar) {
    REQUIRE(std::is_sorted(decision.between.begin(), decision.between.end()));
    REQUIRE(decision.between.empty() || decision.between.back() < story.size());
    REQUIRE((decision.verdict == Verdict::Matched) == decision.scene.has_value());
    REQUIRE((decision.verdict == Verdict::Matched) == decision.reason.empty());
    REQUIRE((decision.verdict == Verdict::Ambiguous) == !decision.between.empty());
    if (decision.evidence) {
        REQUIRE(!Explain(*decision.evidence, story).empty());
    }
    if (!decision.scene) {
        return;
    }
    REQUIRE(*decision.scene < story.size());
    REQUIRE(decision.evidence && decision.evidence->scenes == std::vector{*decision.scene});
    const Evidence& deciding = *decision.evidence;
    REQUIRE(deciding.confidence >= bar && deciding.confidence > Confidence::None && deciding.unknown.empty());
    for (const Evidence& other : decision.disagreeing) {
        const bool isLow = other.confidence < Confidence::Medium && deciding.confidence >= Confidence::Medium;
        const bool isAsGood = other.source == deciding.source && !isLow;
        const bool isSurer = other.source > deciding.source && other.confidence > deciding.confidence;
        REQUIRE(!isAsGood && !isSurer);
    }
}

void CheckDecisions(std::vector<Statement> statements, const SceneNumbers& story) {
    const Decision plain = Decide(statements, story, kAnyBar);
    for (const Confidence bar : {kAnyBar, Confidence::Medium, Confidence::Certain}) {
        const Decision barred = Decide(statements, story, bar);
        CheckDecision(barred, story, bar);
        REQUIRE(!barred.scene || barred.scene == plain.scene); // a bar only takes answers away
    }
    std::reverse(statements.begin(), statements.end());
    const Decision reversed = Decide(statements, story, kAnyBar);
    REQUIRE(reversed.verdict == plain.verdict && reversed.scene == plain.scene);
    statements.insert(statements.end(), statements.begin(), statements.end());
    const Decision said = Decide(statements, story, kAnyBar); // saying it twice makes it no truer
    REQUIRE(said.verdict == plain.verdict && said.scene == plain.scene);
}

void CheckStory(const SceneNumbers& story) {
    for (std::size_t scene = 0; scene < story.size(); ++scene) {
        const std::string canonical = CanonicalSceneNumber(story.Number(scene));
        for (const auto& found : {story.Find(canonical), story.FindWritten(story.Number(scene))}) {
            REQUIRE(canonical.empty() || std::count(found.scenes.begin(), found.scenes.end(), scene) == 1);
        }
        REQUIRE(!SceneLabel(scene, story).empty());
    }
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    std::istringstream text{std::string(bytes)};
    std::vector<std::string> lines(4);
    for (std::size_t line = 0; line < 4; ++line) {
        std::getline(text, lines[line]);
    }
    std::vector<std::string> numbers = {"1", "2", "3", "12", "12A", "14", "14", "", "PROLOGUE", "101.12", "A12", "5FS"};
    for (std::string number; std::getline(text, number);) {
        numbers.push_back(number);
    }
    const SceneNumbers story(std::move(numbers));
    CheckStory(story);

    std::vector<Statement> statements = StatePath(lines[0], story, SlateStyle::Scene);
    REQUIRE(!statements.empty() && statements.size() <= 5);
    CheckName(statements.front().text, story);
    constexpr Source kFields[] = {Source::Log, Source::IXml, Source::Xmp};
    for (std::size_t field = 0; field < std::size(kFields); ++field) {
        const std::string& said = lines[field + 1];
        if (!IsUTF8(said)) { // logs, iXML and XMP are decoded before they are read
            continue;
        }
        CheckReadings(ReadSceneField(said), said);
        if (!said.empty()) {
            statements.push_back(StateField(kFields[field], said, "3"));
        }
    }
    CheckDecisions(std::move(statements), story);
}
