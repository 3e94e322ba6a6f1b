#include "commands/Match.h"

#include <algorithm>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "commands/Toolkit.h"
#include "output/Json.h"
#include "output/SafeText.h"
#include "output/Table.h"

namespace zonstory {

namespace {

/// Scenes of a story under names that `write` finds them by.
class SceneNames {
public:
    explicit SceneNames(const SceneSelection& scenes) : mScenes(scenes) {}

    /// The number, or "#7" where that would not find the scene.
    std::string Name(std::size_t scene, const SceneNumbers& story) const {
        const std::string& number = story.Number(scene);
        try {
            if (!number.empty() && mScenes.Find(number).position == scene + 1) {
                return number;
            }
        } catch (const SceneSelectionError&) { // several scenes have the number
        }
        return fmt::format("#{}", scene + 1);
    }

private:
    const SceneSelection& mScenes;
};

std::string Sureness(const ClipMatch& match) {
    return std::string(Name(match.decision.evidence ? match.decision.evidence->confidence : Confidence::None));
}

std::string EvidenceText(const ClipMatch& match, const SceneNumbers& story) {
    return match.decision.evidence ? Explain(*match.decision.evidence, story) : "";
}

std::string SceneText(const ClipMatch& match, const SceneNumbers& story, const SceneNames& names) {
    return match.decision.scene ? names.Name(*match.decision.scene, story) : "";
}

std::string Joined(const std::vector<std::string>& parts, const char* separator) {
    std::string joined;
    for (const std::string& part : parts) {
        joined += (joined.empty() ? "" : separator) + part;
    }
    return joined;
}

std::vector<std::string> Candidates(const ClipMatch& match, const SceneNumbers& story, const SceneNames& names) {
    std::vector<std::string> candidates;
    for (const std::size_t scene : match.decision.between) {
        candidates.push_back(names.Name(scene, story));
    }
    return candidates;
}

std::vector<std::string> Dissent(const ClipMatch& match, const SceneNumbers& story) {
    std::vector<std::string> dissent;
    for (const Evidence& evidence : match.decision.disagreeing) {
        dissent.push_back(Explain(evidence, story));
    }
    return dissent;
}

std::string AsText(const ClipMatches& matches, const SceneNames& names) {
    Table table({{"clip", "clip"}, {"scene", "scene"}, {"take", "take"}, {"confidence", "sure"}, {"why", "why"}});
    for (const ClipMatch& match : matches.clips) {
        if (match.clip.refusal.empty()) {
            const bool matched = match.decision.scene.has_value();
            std::string why = matched ? EvidenceText(match, matches.story) : match.decision.reason;
            for (const std::string& dissent : Dissent(match, matches.story)) {
                why += "; but " + dissent;
            }
            table.AddRow({match.clip.path.string(), matched ? SceneText(match, matches.story, names) : "?",
                          match.decision.take, matched ? Sureness(match) : "", why});
        }
    }
    return table.AsText();
}

std::string AsCsv(const ClipMatches& matches, const SceneNames& names) {
    Table table({{"clip", ""},
                 {"scene", ""},
                 {"take", ""},
                 {"verdict", ""},
                 {"confidence", ""},
                 {"source", ""},
                 {"evidence", ""},
                 {"candidates", ""},
                 {"reason", ""},
                 {"disagreeing", ""}});
    for (const ClipMatch& match : matches.clips) {
        if (match.clip.refusal.empty()) {
            const Decision& decision = match.decision;
            table.AddRow({match.clip.path.string(), SceneText(match, matches.story, names), decision.take,
                          std::string(Name(decision.verdict)), Sureness(match),
                          decision.evidence ? std::string(Name(decision.evidence->source)) : "",
                          EvidenceText(match, matches.story), Joined(Candidates(match, matches.story, names), " "),
                          decision.reason, Joined(Dissent(match, matches.story), "; ")});
        }
    }
    return table.AsCsv();
}

Json EvidenceJson(const Evidence& evidence, const SceneNumbers& story, const SceneNames& names) {
    Json scenes = Json::array();
    for (const std::size_t scene : evidence.scenes) {
        scenes.push_back(names.Name(scene, story));
    }
    return {{"source", Name(evidence.source)},
            {"text", JsonString(evidence.text)},
            {"where", JsonString(evidence.where)},
            {"rule", Describe(evidence.rule)},
            {"said", JsonString(evidence.said)},
            {"setUp", evidence.setUp},
            {"exact", evidence.fit == SceneNumbers::Fit::Exact},
            {"take", JsonString(evidence.take)},
            {"confidence", Name(evidence.confidence)},
            {"scenes", std::move(scenes)}};
}

Json LogRowJson(const std::vector<std::pair<std::string, std::string>>& fields) {
    Json columns = Json::object();
    for (std::size_t column = 1; column < fields.size(); ++column) {
        columns[ValidUTF8(fields[column].first)] = JsonString(fields[column].second);
    }
    return {{"where", JsonString(fields.front().second)}, {"fields", std::move(columns)}};
}

Json MatchJson(const ClipMatch& match, const SceneNumbers& story, const SceneNames& names) {
    const Decision& decision = match.decision;
    Json disagreeing = Json::array();
    for (const Evidence& evidence : decision.disagreeing) {
        disagreeing.push_back(EvidenceJson(evidence, story, names));
    }
    Json logRows = Json::array();
    for (const auto& fields : match.logRows) {
        logRows.push_back(LogRowJson(fields));
    }
    return {{"clip", JsonString(match.clip.path.string())},
            {"verdict", Name(decision.verdict)},
            {"scene", decision.scene ? Json(names.Name(*decision.scene, story)) : Json()},
            {"position", decision.scene ? Json(*decision.scene + 1) : Json()},
            {"take", JsonString(decision.take)},
            {"confidence", Sureness(match)},
            {"candidates", Candidates(match, story, names)},
            {"reason", JsonString(decision.reason)},
            {"evidence", decision.evidence ? EvidenceJson(*decision.evidence, story, names) : Json()},
            {"disagreeing", std::move(disagreeing)},
            {"log", std::move(logRows)}};
}

std::string AsJson(const ClipMatches& matches, const SceneNames& names) {
    Json clips = Json::array();
    for (const ClipMatch& match : matches.clips) {
        if (match.clip.refusal.empty()) {
            clips.push_back(MatchJson(match, matches.story, names));
        }
    }
    Json document = JsonDocument("match", 1);
    document["clips"] = std::move(clips);
    return JsonText(document);
}

std::string AsFormat(Format format, const ClipMatches& matches, const SceneNames& names) {
    return InFormat(
        format, [&] { return AsText(matches, names); }, [&] { return AsJson(matches, names); },
        [&] { return AsCsv(matches, names); });
}

} // namespace

int RunMatch(const MatchOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const SceneSelection scenes(*story.root);
    const Toolkit toolkit;
    const ClipMatches matches =
        MatchClips(scenes, SelectClips(options.clips, options.recursive), options.match, options.clip, output);
    for (const ClipMatch& match : matches.clips) {
        if (!match.clip.refusal.empty()) {
            output.Error(match.clip.path.string() + ": " + match.clip.refusal);
        }
    }
    output.Result(AsFormat(options.format, matches, SceneNames(scenes)));
    output.Note(Summary(matches));
    return ExitCodeOf(matches);
}

} // namespace zonstory
