// How often made-up clips are matched to the right scene: a table by kind of shoot, and by confidence.
//
//   zonstory_match_bench [tuning|held-out|second|third] [--faults]     --faults lists each pattern that went wrong, with an example
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "Shoots.h"
#include "match/ClipLog.h"
#include "match/Decision.h"
#include "match/LogIndex.h"
#include "match/NamePatterns.h"
#include "output/CsvReader.h"

namespace {

using namespace zonstory;
using namespace zonstory::bench;

enum Outcome { Right, WrongScene, FalseAnswer, Missed, Left, kOutcomes };
constexpr const char* kOutcomeNames[] = {"right", "wrong", "false", "missed", "left"};

struct Tally {
    std::array<std::size_t, kOutcomes> outcomes = {};
    std::size_t takes = 0, takesRight = 0;
};

struct Results {
    std::map<std::string, Tally> kinds;
    std::map<std::string, Tally> levels;
    std::map<std::string, std::pair<std::size_t, std::string>> faults;
};

Outcome Judge(const MadeClip& clip, const Decision& decision) {
    if (!clip.scene) {
        return decision.scene ? FalseAnswer : Left;
    }
    return !decision.scene ? Missed : *decision.scene == *clip.scene ? Right : WrongScene;
}

void Count(const Shoot& shoot, const MadeClip& clip, const Decision& decision, Results& results) {
    const Outcome outcome = Judge(clip, decision);
    const std::string level =
        decision.scene ? std::string(Name(decision.evidence->confidence)) : std::string("no answer");
    const bool takeRight = decision.take == clip.take;
    const bool hasTake = outcome == Right && !clip.take.empty();
    for (Tally* const tally : {&results.kinds[clip.scene ? shoot.kind : "no scene"], &results.levels[level]}) {
        ++tally->outcomes[outcome];
        tally->takes += hasTake ? 1 : 0;
        tally->takesRight += hasTake && takeRight ? 1 : 0;
    }
    const bool wrongTake = hasTake && !takeRight;
    if ((outcome != Right && outcome != Left) || wrongTake) {
        auto& [count, example] = results.faults[fmt::format("{:7} {}{}", wrongTake ? "take" : kOutcomeNames[outcome],
                                                            shoot.kind == "lone" ? "lone " : "", shoot.pattern)];
        ++count;
        example = fmt::format("{} {} take {} for {} ({})", clip.path, level, decision.take,
                              clip.scene ? shoot.story[*clip.scene] : "-",
                              decision.scene ? shoot.story[*decision.scene] : decision.reason);
    }
}

std::vector<ClipLog> LogsOf(const Shoot& shoot) {
    if (shoot.log.empty()) {
        return {};
    }
    try {
        return {ReadClipLog(shoot.log, "day.csv")};
    } catch (const CsvError&) {
        return {};
    }
}

double Match(const Shoot& shoot, Results& results) {
    const std::vector<ClipLog> logs = LogsOf(shoot);
    const SceneNumbers story(shoot.story);
    std::vector<std::string> paths;
    for (const MadeClip& clip : shoot.clips) {
        paths.push_back(clip.path);
    }
    const std::clock_t begin = std::clock();
    const LogIndex index(logs, paths, SlateStyle::Scene);
    std::vector<std::vector<Statement>> known(paths.size());
    for (std::size_t at = 0; at < paths.size(); ++at) {
        known[at] = index.Statements(at);
        if (!shoot.clips[at].ixmlScene.empty()) {
            known[at].push_back(StateField(Source::IXml, shoot.clips[at].ixmlScene, shoot.clips[at].ixmlTake));
        }
    }
    const NamePatterns patterns(paths, known, story, {});
    std::vector<Decision> decisions;
    for (std::size_t at = 0; at < paths.size(); ++at) {
        std::vector<Statement> statements = patterns.Statements(at);
        statements.insert(statements.end(), known[at].begin(), known[at].end());
        decisions.push_back(Decide(statements, story, Confidence::Medium));
    }
    const std::clock_t end = std::clock();
    for (std::size_t at = 0; at < paths.size(); ++at) {
        Count(shoot, shoot.clips[at], decisions[at], results);
    }
    return static_cast<double>(end - begin) / CLOCKS_PER_SEC;
}

double Share(std::size_t part, std::size_t whole) {
    return whole == 0 ? 1.0 : static_cast<double>(part) / static_cast<double>(whole);
}

void Print(const std::map<std::string, Tally>& tallies) {
    fmt::print("{:10} {:>7} {:>6} {:>6} {:>7} {:>7} {:>9} {:>7} {:>7}\n", "", "right", "wrong", "false", "missed",
               "left", "precision", "recall", "takes");
    for (const auto& [name, tally] : tallies) {
        const auto& o = tally.outcomes;
        fmt::print("{:10} {:7} {:6} {:6} {:7} {:7} {:9.5f} {:7.4f} {:7.4f}\n", name, o[Right], o[WrongScene],
                   o[FalseAnswer], o[Missed], o[Left], Share(o[Right], o[Right] + o[WrongScene] + o[FalseAnswer]),
                   Share(o[Right], o[Right] + o[WrongScene] + o[Missed]), Share(tally.takesRight, tally.takes));
    }
    fmt::print("\n");
}

void Measure(Part part, const char* name, bool faults) {
    Results results;
    double seconds = 0;
    std::size_t clips = 0;
    const std::vector<Shoot> shoots = MakeShoots(part);
    for (const Shoot& shoot : shoots) {
        seconds += Match(shoot, results);
        clips += shoot.clips.size();
    }
    fmt::print("{}: {} names of {} shoots, {:.2f} s of CPU for 100,000\n", name, clips, shoots.size(),
               seconds * 100000 / static_cast<double>(clips));
    Print(results.kinds);
    Print(results.levels);
    for (const auto& [pattern, fault] : results.faults) {
        if (faults) {
            fmt::print("{:6} {:60} {}\n", fault.first, pattern, fault.second);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto given = [&](const char* word) {
        return std::find(arguments.begin(), arguments.end(), word) != arguments.end();
    };
    constexpr std::pair<Part, const char*> kParts[] = {
        {Part::Tuning, "tuning"}, {Part::HeldOut, "held-out"}, {Part::Second, "second"}, {Part::Third, "third"}};
    const bool isAnyGiven =
        std::any_of(std::begin(kParts), std::end(kParts), [&](const auto& part) { return given(part.second); });
    for (const auto& [part, name] : kParts) {
        if (!isAnyGiven || given(name)) {
            Measure(part, name, given("--faults"));
        }
    }
}
