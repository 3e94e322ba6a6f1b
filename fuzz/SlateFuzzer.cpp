// Names of clips and fields for scene numbers, held against a story. The input is text: the clip's path, then what a
// log, the sound file and the metadata say, a line each; further lines are numbers of the story beside the fixed ones.
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "Require.h"
#include "match/ClipStatements.h"
#include "match/Decision.h"
#include "match/NameRuns.h"
#include "match/SceneText.h"

namespace {

using namespace zonstory;

constexpr Confidence kAnyBar = Confidence::None;

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// ---- What is read ----------------------------------------------------------------------------------------------------

/// A name as the readers see it.
struct Seen {
    std::vector<std::string> digits; ///< Whole runs of them.
    std::string letters;             ///< All of them.

    explicit Seen(std::string_view name) {
        const NameRuns runs(name);
        for (std::size_t run = 0; run < runs.size(); ++run) {
            if (runs[run].digits) {
                digits.emplace_back(runs.Text(run));
            } else {
                letters += runs.Text(run);
            }
        }
    }

    // Cut from a run of digits at no other place than behind its zeros.
    bool HasNumber(std::string_view number) const {
        return std::any_of(digits.begin(), digits.end(),
                           [&](const std::string& run) { return WithoutLeadingZeros(run) == number; });
    }
};

// A scene is put together of the name's own letters and whole numbers.
bool IsMadeOf(std::string_view scene, const Seen& seen) {
    for (std::size_t at = 0; at < scene.size();) {
        std::size_t end = at;
        while (end < scene.size() && IsDigit(scene[end])) {
            ++end;
        }
        if (end > at) {
            if (!seen.HasNumber(scene.substr(at, end - at))) {
                return false;
            }
            at = end;
        } else if (scene[at] != '.' && seen.letters.find(scene[at]) == std::string::npos) {
            return false;
        } else {
            ++at;
        }
    }
    return true;
}

auto Fields(const SlateReading& reading) {
    return std::tie(reading.scene, reading.take, reading.rule, reading.confidence, reading.standing, reading.exactOnly,
                    reading.place);
}

void RequireSame(const std::vector<SlateReading>& left, const std::vector<SlateReading>& right) {
    REQUIRE(std::equal(left.begin(), left.end(), right.begin(), right.end(),
                       [](const auto& one, const auto& other) { return Fields(one) == Fields(other); }));
}

void CheckReadings(const std::vector<SlateReading>& readings, std::string_view text) {
    const Seen seen(text);
    for (const SlateReading& reading : readings) {
        REQUIRE(!reading.scene.empty() && IsMadeOf(reading.scene, seen));
        REQUIRE(reading.take.empty() || seen.HasNumber(reading.take));
        REQUIRE(reading.confidence != Confidence::None);
        REQUIRE(reading.confidence <= Confidence::High || reading.rule == SlateRule::WholeField);
    }
}

std::string OtherCase(std::string text) {
    for (char& c : text) {
        const bool isLetter = static_cast<unsigned char>(c) < 0x80 && std::isalpha(c) != 0;
        c = isLetter ? static_cast<char>(c ^ 0x20) : c;
    }
    return text;
}

void CheckName(const std::string& name, const SceneNumbers& story) {
    const auto read = [&](const std::string& text, SlateStyle style) {
        return StatePath(text, story, style).front().readings;
    };
    const std::vector<SlateReading> readings = read(name, SlateStyle::Scene);
    CheckReadings(readings, name);
    RequireSame(readings, read(OtherCase(name), SlateStyle::Scene));
    if (!name.empty() && WithoutMediaExtension(name) == name) {
        RequireSame(readings, read(name + ".mov", SlateStyle::Scene));
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

// Two scenes of the story that one name means as surely as each other, as the ends of a range, are never decided.
void CheckRivals(const Statement& name, const SceneNumbers& story) {
    const auto reach = [&](const SlateReading& reading) {
        return std::pair(reading.confidence, story.Find(reading.scene, reading.exactOnly).scenes);
    };
    auto best = std::pair(Confidence::None, std::vector<std::size_t>());
    bool isTied = false;
    for (const SlateReading& reading : name.readings) {
        const auto fits = reach(reading);
        if (fits.second.empty() || fits.first < best.first) {
            continue;
        }
        isTied = fits.first == best.first ? isTied || fits.second != best.second : false;
        best = fits;
    }
    if (isTied || best.second.size() > 1) {
        REQUIRE(!Decide({name}, story, kAnyBar).scene);
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> lines = Lines({reinterpret_cast<const char*>(data), size});
    lines.resize(std::max<std::size_t>(lines.size(), 4));
    std::vector<std::string> numbers = {"1", "2", "3", "12", "12A", "14", "14", "", "PROLOGUE", "101.12", "A12", "5FS"};
    numbers.insert(numbers.end(), lines.begin() + 4, lines.end());
    const SceneNumbers story(std::move(numbers));
    CheckStory(story);

    std::vector<Statement> statements = StatePath(lines[0], story, SlateStyle::Scene);
    REQUIRE(!statements.empty() && statements.size() <= 5);
    CheckName(statements.front().text, story);
    CheckRivals(statements.front(), story);
    constexpr Source kFields[] = {Source::Log, Source::IXml, Source::Xmp};
    for (std::size_t field = 0; field < std::size(kFields); ++field) {
        const std::string& text = lines[field + 1];
        CheckReadings(ReadSceneField(text), text);
        if (!text.empty()) {
            statements.push_back(StateField(kFields[field], text, "3"));
        }
    }
    CheckDecisions(std::move(statements), story);
    return 0;
}
