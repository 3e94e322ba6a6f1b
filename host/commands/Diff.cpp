#include "commands/Diff.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <zonstoryparser/SceneContent.h>
#include <zonstoryparser/StoryComparison.h>

#include "commands/ClipDrafts.h"
#include "commands/ClipSelection.h"
#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "output/ExitCode.h"
#include "output/Json.h"
#include "output/SafeText.h"
#include "output/Table.h"

namespace zonstory {

namespace {

using zoncore::UString;
using zoncore::UTF16to8;
using zonstoryparser::Rename;
using zonstoryparser::SceneComparison;
using zonstoryparser::SceneContent;
using zonstoryparser::SceneState;
using zonstoryparser::StoryComparison;
using zonstoryparser::WordCounts;
using zonstoryparser::WordRun;

constexpr std::array kStateWords = {"same", "changed", "added", "removed", "omitted", "moved", "renumbered"};

struct Part {
    const char* name;
    bool SceneComparison::*hasChanged;
};
constexpr Part kParts[] = {{"heading", &SceneComparison::headingChanged},
                           {"action", &SceneComparison::actionChanged},
                           {"dialogue", &SceneComparison::dialogueChanged},
                           {"duration", &SceneComparison::durationChanged}};

struct ClipRow {
    std::string clip; ///< As the user named it; any bytes.
    DraftAnswer answer;
};

/// All that is printed of a comparison.
struct Diff {
    const Story& before;
    const Story& after;
    const std::vector<SelectedScene> oldScenes;
    const std::vector<SelectedScene> newScenes;
    const StoryComparison comparison;
    std::vector<ClipRow> clips;

    Diff(const Story& oldStory, const Story& newStory)
        : before(oldStory), after(newStory), oldScenes(SceneSelection(*oldStory.root).All()),
          newScenes(SceneSelection(*newStory.root).All()),
          comparison(zonstoryparser::CompareStories(*oldStory.root, *newStory.root)) {}

    static std::string NumberAt(const std::vector<SelectedScene>& scenes, std::optional<std::size_t> position) {
        return position ? UTF16to8(scenes[*position - 1].scene->sceneNumber) : std::string();
    }
    std::string OldNumber(const SceneComparison& scene) const { return NumberAt(oldScenes, scene.oldPosition); }
    std::string NewNumber(const SceneComparison& scene) const { return NumberAt(newScenes, scene.newPosition); }
    SceneContent Content(const std::vector<SelectedScene>& scenes, std::optional<std::size_t> position) const {
        return position ? zonstoryparser::GatherSceneContent(*scenes[*position - 1].scene) : SceneContent();
    }
    /// The draft's own label of the scene's revision; of the old draft for a scene that is gone.
    std::string Revision(const SceneComparison& scene) const {
        const Story& story = scene.newPosition ? after : before;
        const std::size_t index = (scene.newPosition ? *scene.newPosition : *scene.oldPosition) - 1;
        return index < story.scenes.size() ? story.scenes[index].revision : std::string();
    }
};

const char* StateWord(const SceneComparison& scene) {
    return kStateWords.at(static_cast<std::size_t>(scene.state));
}

std::vector<std::string> ChangedParts(const SceneComparison& scene) {
    std::vector<std::string> names;
    for (const Part& part : kParts) {
        if (scene.*part.hasChanged) {
            names.emplace_back(part.name);
        }
    }
    return names;
}

WordCounts DialogueCounts(const SceneComparison& scene) {
    WordCounts counts;
    for (const auto& speech : scene.dialogue) {
        counts.in += speech.words.in;
        counts.out += speech.words.out;
    }
    return counts;
}

const char* KindWord(const Rename& rename) {
    return rename.kind == Rename::Kind::Character ? "character" : "place";
}

// ---- text

// "12", "12 -> 13", "#4" for a scene without a number.
std::string SceneName(const Diff& diff, const SceneComparison& scene) {
    const auto name = [](const std::string& number, std::optional<std::size_t> position) {
        return number.empty() && position ? fmt::format("#{}", *position) : number;
    };
    const std::string before = name(diff.OldNumber(scene), scene.oldPosition);
    const std::string after = name(diff.NewNumber(scene), scene.newPosition);
    if (before.empty() || before == after || scene.state != SceneState::Renumbered) {
        return after.empty() ? before : after;
    }
    return before + " -> " + after;
}

StyledText StyledWords(const UString& before, const UString& after) {
    StyledText text;
    for (const WordRun& run : zonstoryparser::CompareWords(before, after)) {
        const Look look = run.kind == WordRun::Kind::Kept ? Look::Plain
                          : run.kind == WordRun::Kind::In ? Look::Added
                                                          : Look::Struck;
        text.push_back({Look::Plain, text.empty() ? "" : " "});
        text.push_back({look, SafeLine(UTF16to8(run.words))});
    }
    return text;
}

void AppendField(StyledText& text, std::string_view label, StyledText value) {
    text.push_back({Look::Plain, fmt::format("  {:<13}", SafeLine(label))});
    std::move(value.begin(), value.end(), std::back_inserter(text));
    text.push_back({Look::Plain, "\n"});
}

StyledText Counted(const WordCounts& counts) {
    return {{Look::Plain, fmt::format("{} words in, {} out", counts.in, counts.out)}};
}

UString SpeechesOf(const SceneContent& content, const UString& speaker) {
    UString all;
    for (const auto& [character, dialogue] : content.dialogues) {
        if (zonstoryparser::SpeakerName(character) == speaker) {
            all.append(all.empty() ? u"" : u" ").append(dialogue);
        }
    }
    return all;
}

// What a speaker was called in the old draft.
UString OldName(const Diff& diff, const UString& speaker) {
    const auto& renames = diff.comparison.renames;
    const auto found = std::find_if(renames.begin(), renames.end(), [&](const Rename& rename) {
        return rename.kind == Rename::Kind::Character && rename.to == speaker;
    });
    return found == renames.end() ? speaker : found->from;
}

void AppendHeading(const SceneContent& before, const SceneContent& after, StyledText& text) {
    AppendField(text, "heading", StyledWords(before.heading, after.heading));
    if (!before.timeOfDay.empty() && !after.timeOfDay.empty() && before.timeOfDay != after.timeOfDay) {
        AppendField(text, "time of day",
                    {{Look::Plain, SafeLine(UTF16to8(before.timeOfDay + u" -> " + after.timeOfDay))}});
    }
}

void AppendChanges(const Diff& diff, const SceneComparison& scene, bool words, StyledText& text) {
    const SceneContent before = diff.Content(diff.oldScenes, scene.oldPosition);
    const SceneContent after = diff.Content(diff.newScenes, scene.newPosition);
    if (scene.headingChanged) {
        AppendHeading(before, after, text);
    }
    if (scene.actionChanged) {
        AppendField(text, "action", words ? StyledWords(before.action, after.action) : Counted(scene.action));
    }
    for (const auto& speech : scene.dialogue) {
        AppendField(
            text, UTF16to8(speech.speaker),
            words ? StyledWords(SpeechesOf(before, OldName(diff, speech.speaker)), SpeechesOf(after, speech.speaker))
                  : Counted(speech.words));
    }
    if (scene.dialogueChanged && scene.dialogue.empty()) {
        AppendField(text, "dialogue", {{Look::Plain, "the same words by other speakers or in another order"}});
    }
    if (scene.durationChanged) {
        const auto duration = [](const std::vector<SelectedScene>& scenes, std::optional<std::size_t> position) {
            return SafeLine(UTF16to8(scenes[*position - 1].scene->shotDuration));
        };
        AppendField(text, "duration",
                    {{Look::Struck, duration(diff.oldScenes, scene.oldPosition)},
                     {Look::Plain, " "},
                     {Look::Added, duration(diff.newScenes, scene.newPosition)}});
    }
}

void AppendScene(const Diff& diff, const SceneComparison& scene, bool words, StyledText& text) {
    const SceneContent content = scene.newPosition ? diff.Content(diff.newScenes, scene.newPosition)
                                                   : diff.Content(diff.oldScenes, scene.oldPosition);
    const std::string state =
        std::string(StateWord(scene)) + (scene.isMoved && scene.state != SceneState::Moved ? ", moved" : "");
    const std::string revision = diff.Revision(scene).empty() ? "" : "  (" + diff.Revision(scene) + ")";
    text.push_back({Look::Plain, SafeLine(fmt::format("{:<8}  {:<18}  {}{}", SceneName(diff, scene), state,
                                                      UTF16to8(content.heading), revision)) +
                                     '\n'});
    if (scene.oldPosition && scene.newPosition && scene.state != SceneState::Omitted) {
        AppendChanges(diff, scene, words, text);
    }
}

std::string Summary(const StoryComparison& comparison) {
    std::array<std::size_t, kStateWords.size()> counts{};
    WordCounts words;
    for (const SceneComparison& scene : comparison.scenes) {
        ++counts.at(static_cast<std::size_t>(scene.state));
        words.in += DialogueCounts(scene).in + scene.action.in;
        words.out += DialogueCounts(scene).out + scene.action.out;
    }
    std::string line;
    for (std::size_t state = 0; state < counts.size(); ++state) {
        line += counts[state] == 0
                    ? ""
                    : fmt::format("{}{} {}", line.empty() ? "" : ", ", counts[state], kStateWords[state]);
    }
    return fmt::format("{}; {} words in, {} out", line.empty() ? "no scenes" : line, words.in, words.out);
}

std::string Positions(const std::vector<std::size_t>& positions) {
    std::string text;
    for (const std::size_t position : positions) {
        text += fmt::format("{}#{}", text.empty() ? "" : ", ", position);
    }
    return text;
}

StyledText AsText(const Diff& diff, const DiffOptions& options) {
    StyledText text;
    const auto add = [&text](const std::string& line) { text.push_back({Look::Plain, SafeLine(line) + '\n'}); };
    for (const Rename& rename : diff.comparison.renames) {
        add(fmt::format("{} {} is called {} now, in {} scenes", KindWord(rename), UTF16to8(rename.from),
                        UTF16to8(rename.to), rename.scenes));
    }
    for (const SceneComparison& scene : diff.comparison.scenes) {
        if (!options.stat && scene.state != SceneState::Same) {
            AppendScene(diff, scene, options.words, text);
        }
    }
    for (const auto& tie : diff.comparison.ties) {
        add(fmt::format("old {} and new {} are as like as each other, so which became which is not told",
                        Positions(tie.oldPositions), Positions(tie.newPositions)));
    }
    add(Summary(diff.comparison));
    for (const ClipRow& row : diff.clips) {
        const std::string scene = row.answer.scene.empty() ? "" : ", scene " + row.answer.scene;
        add(fmt::format("{}: {}{}", row.clip, DraftStateWord(row.answer.state), scene));
    }
    return text;
}

// ---- JSON and CSV

Json Position(std::optional<std::size_t> position) {
    return position ? Json(*position) : Json(nullptr);
}

Json SceneJson(const Diff& diff, const SceneComparison& scene) {
    Json dialogue = Json::array();
    for (const auto& speech : scene.dialogue) {
        dialogue.push_back(
            {{"speaker", UTF16to8(speech.speaker)}, {"wordsIn", speech.words.in}, {"wordsOut", speech.words.out}});
    }
    Json row = {{"oldPosition", Position(scene.oldPosition)},
                {"newPosition", Position(scene.newPosition)},
                {"oldNumber", diff.OldNumber(scene)},
                {"newNumber", diff.NewNumber(scene)},
                {"state", StateWord(scene)},
                {"moved", scene.isMoved},
                {"changes", ChangedParts(scene)},
                {"dialogue", std::move(dialogue)},
                {"action", {{"wordsIn", scene.action.in}, {"wordsOut", scene.action.out}}}};
    if (const std::string revision = diff.Revision(scene); !revision.empty()) {
        row["revision"] = revision;
    }
    return row;
}

std::string AsJson(const Diff& diff) {
    Json document = JsonDocument("diff", 1);
    for (const char* const name : {"scenes", "ties", "renames", "clips"}) {
        document[name] = Json::array();
    }
    for (const SceneComparison& scene : diff.comparison.scenes) {
        document["scenes"].push_back(SceneJson(diff, scene));
    }
    for (const auto& tie : diff.comparison.ties) {
        document["ties"].push_back({{"oldPositions", tie.oldPositions}, {"newPositions", tie.newPositions}});
    }
    for (const Rename& rename : diff.comparison.renames) {
        document["renames"].push_back({{"kind", KindWord(rename)},
                                       {"from", UTF16to8(rename.from)},
                                       {"to", UTF16to8(rename.to)},
                                       {"scenes", rename.scenes}});
    }
    for (const ClipRow& row : diff.clips) {
        document["clips"].push_back({{"clip", JsonString(row.clip)},
                                     {"scene", JsonString(row.answer.scene)},
                                     {"state", DraftStateWord(row.answer.state)}});
    }
    return JsonText(document);
}

std::string ScenesAsCsv(const Diff& diff) {
    Table table({{"old_position", ""},
                 {"new_position", ""},
                 {"old_number", ""},
                 {"new_number", ""},
                 {"state", ""},
                 {"moved", ""},
                 {"changes", ""},
                 {"dialogue_words_in", ""},
                 {"dialogue_words_out", ""},
                 {"action_words_in", ""},
                 {"action_words_out", ""},
                 {"revision", ""}});
    const auto cell = [](std::optional<std::size_t> position) { return position ? std::to_string(*position) : ""; };
    for (const SceneComparison& scene : diff.comparison.scenes) {
        const WordCounts dialogue = DialogueCounts(scene);
        std::string changes;
        for (const std::string& part : ChangedParts(scene)) {
            changes += (changes.empty() ? "" : " ") + part;
        }
        table.AddRow({cell(scene.oldPosition), cell(scene.newPosition), diff.OldNumber(scene), diff.NewNumber(scene),
                      StateWord(scene), scene.isMoved ? "true" : "false", changes, std::to_string(dialogue.in),
                      std::to_string(dialogue.out), std::to_string(scene.action.in), std::to_string(scene.action.out),
                      diff.Revision(scene)});
    }
    return table.AsCsv();
}

// What `write --map` reads. A clip that somebody edited, or whose scene was cut, has no scene here, so that feeding the
// table back as it is loses nothing; its number stands beside.
std::string ClipsAsCsv(const Diff& diff) {
    Table table({{"clip", ""}, {"scene", ""}, {"state", ""}, {"carried", ""}});
    std::vector<bool> isCut(diff.newScenes.size() + 1, false); // by position
    for (const SceneComparison& scene : diff.comparison.scenes) {
        isCut[scene.newPosition.value_or(0)] = scene.state == SceneState::Omitted;
    }
    for (const ClipRow& row : diff.clips) {
        const DraftAnswer& answer = row.answer;
        const bool isSafe = answer.state == DraftState::Current || answer.state == DraftState::Outdated;
        table.AddRow({row.clip, isSafe && !isCut[*answer.position] ? fmt::format("#{}", *answer.position) : "",
                      DraftStateWord(answer.state), answer.scene});
    }
    return table.AsCsv();
}

std::string NamesOfOutdated(const Diff& diff) {
    std::string names;
    for (const ClipRow& row : diff.clips) {
        names += row.answer.state == DraftState::Outdated ? row.clip + '\n' : "";
    }
    return names;
}

// ---- clips

// Adds a row for each clip that can be read.
bool ReadClips(const DiffOptions& options, Diff& diff, Output& output) {
    ClipDrafts drafts(diff.before.root.get(), *diff.after.root, diff.comparison);
    bool allRead = true;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        const std::string name = clip.path.string();
        try {
            if (!clip.refusal.empty()) {
                throw ClipError(clip.refusal);
            }
            ClipContents contents = ReadClip(clip.path, options.clip);
            std::string number;
            zonstoryparser::GetSceneNumberFromXMP(contents.xmp, nullptr, &number);
            diff.clips.push_back({name, drafts.Tell(number, zonstoryparser::ReadCarriedScene(contents.xmp))});
        } catch (const std::exception& error) {
            output.Error(name + ": " + error.what());
            allRead = false;
        }
    }
    return allRead;
}

void Print(const Diff& diff, const DiffOptions& options, Output& output) {
    if (options.onlyOutdated) {
        output.Result(NamesOfOutdated(diff));
    } else if (options.format == Format::Json) {
        output.Result(AsJson(diff));
    } else if (options.format == Format::Csv) {
        output.Result(options.clips.empty() ? ScenesAsCsv(diff) : ClipsAsCsv(diff));
    } else {
        output.Result(AsText(diff, options));
    }
}

bool Differs(const Diff& diff) {
    return diff.comparison.HasDifferences() ||
           std::any_of(diff.clips.begin(), diff.clips.end(), [](const ClipRow& row) {
               return row.answer.state != DraftState::Current && row.answer.state != DraftState::None;
           });
}

} // namespace

int RunDiff(const DiffOptions& options, Output& output) {
    if (options.onlyOutdated && options.clips.empty()) {
        throw UsageError("zonstory: diff --outdated needs a CLIP");
    }
    if (options.oldStory.path == "-" && options.newStory.path == "-") {
        throw UsageError("zonstory: diff can read one draft from standard input, not both");
    }
    const Story before = ReadStory(options.oldStory);
    const Story after = ReadStory(options.newStory);
    const Toolkit toolkit;
    Diff diff(before, after);
    const bool allRead = options.clips.empty() || ReadClips(options, diff, output);
    Print(diff, options, output);
    if (!allRead) {
        return kSomeFailed;
    }
    return options.exitCode && Differs(diff) ? kDiffers : kDone;
}

} // namespace zonstory
