#include "commands/Diff.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include <fmt/format.h>
#include <zonstoryparser/SceneContent.h>
#include <zonstoryparser/StoryComparison.h>

#include "commands/ClipSelection.h"
#include "commands/DraftFinder.h"
#include "commands/Toolkit.h"
#include "commands/UsageError.h"
#include "output/ExitCode.h"
#include "output/Record.h"
#include "output/SafeText.h"

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

struct WordsRecord {
    std::size_t wordsIn = 0;
    std::size_t wordsOut = 0;
};

struct SpeechRecord {
    std::string speaker;
    std::size_t wordsIn = 0;
    std::size_t wordsOut = 0;
};

struct SceneRecord {
    std::optional<std::size_t> oldPosition;
    std::optional<std::size_t> newPosition;
    std::string oldNumber;
    std::string newNumber;
    std::string state;
    bool moved = false;
    std::vector<std::string> changes;
    std::vector<SpeechRecord> dialogue;
    WordsRecord action;
    std::optional<std::string> revision;
};

struct TieRecord {
    std::vector<std::size_t> oldPositions;
    std::vector<std::size_t> newPositions;
};

struct RenameRecord {
    std::string kind;
    std::string from;
    std::string to;
    std::size_t scenes = 0;
};

// In CSV this is what `write --map` reads.
struct ClipRecordOfDiff {
    std::string clip;
    std::string scene; ///< The number.
    std::string state;
    std::string mapped; ///< What the map is to write; empty for a clip that it is to leave alone.
};

struct DiffDocument {
    std::vector<SceneRecord> scenes;
    std::vector<TieRecord> ties;
    std::vector<RenameRecord> renames;
    std::vector<ClipRecordOfDiff> clips;
};

SceneRecord RecordOf(const Diff& diff, const SceneComparison& scene) {
    const std::string revision = diff.Revision(scene);
    SceneRecord record = {scene.oldPosition,
                          scene.newPosition,
                          diff.OldNumber(scene),
                          diff.NewNumber(scene),
                          StateWord(scene),
                          scene.isMoved,
                          ChangedParts(scene),
                          {},
                          {scene.action.in, scene.action.out},
                          revision.empty() ? std::nullopt : std::optional(revision)};
    for (const auto& speech : scene.dialogue) {
        record.dialogue.push_back({UTF16to8(speech.speaker), speech.words.in, speech.words.out});
    }
    return record;
}

// A clip that somebody edited, or whose scene was cut, is not mapped, so that feeding the table back as it is loses nothing.
std::vector<ClipRecordOfDiff> ClipRecords(const Diff& diff) {
    std::vector<bool> isCut(diff.newScenes.size() + 1, false); // by position
    for (const SceneComparison& scene : diff.comparison.scenes) {
        isCut[scene.newPosition.value_or(0)] = scene.state == SceneState::Omitted;
    }
    std::vector<ClipRecordOfDiff> records;
    for (const auto& [clip, answer] : diff.clips) {
        const bool isSafe = answer.state == DraftState::Current || answer.state == DraftState::Outdated;
        records.push_back({clip, answer.scene, DraftStateWord(answer.state),
                           isSafe && !isCut[*answer.position] ? fmt::format("#{}", *answer.position) : ""});
    }
    return records;
}

DiffDocument DocumentOf(const Diff& diff) {
    DiffDocument document;
    for (const SceneComparison& scene : diff.comparison.scenes) {
        document.scenes.push_back(RecordOf(diff, scene));
    }
    for (const auto& tie : diff.comparison.ties) {
        document.ties.push_back({tie.oldPositions, tie.newPositions});
    }
    for (const Rename& rename : diff.comparison.renames) {
        document.renames.push_back({KindWord(rename), UTF16to8(rename.from), UTF16to8(rename.to), rename.scenes});
    }
    document.clips = ClipRecords(diff);
    return document;
}

std::size_t DialogueWordsIn(const SceneRecord& scene) {
    return std::accumulate(scene.dialogue.begin(), scene.dialogue.end(), std::size_t{0},
                           [](std::size_t sum, const SpeechRecord& speech) { return sum + speech.wordsIn; });
}

std::size_t DialogueWordsOut(const SceneRecord& scene) {
    return std::accumulate(scene.dialogue.begin(), scene.dialogue.end(), std::size_t{0},
                           [](std::size_t sum, const SpeechRecord& speech) { return sum + speech.wordsOut; });
}

std::size_t ActionWordsIn(const SceneRecord& scene) {
    return scene.action.wordsIn;
}

std::size_t ActionWordsOut(const SceneRecord& scene) {
    return scene.action.wordsOut;
}

} // namespace

template <>
const Fields<WordsRecord>& FieldsOf<WordsRecord>() {
    static const Fields<WordsRecord> fields = {{"wordsIn", nullptr, &WordsRecord::wordsIn},
                                               {"wordsOut", nullptr, &WordsRecord::wordsOut}};
    return fields;
}

template <>
const Fields<SpeechRecord>& FieldsOf<SpeechRecord>() {
    static const Fields<SpeechRecord> fields = {{"speaker", nullptr, &SpeechRecord::speaker},
                                                {"wordsIn", nullptr, &SpeechRecord::wordsIn},
                                                {"wordsOut", nullptr, &SpeechRecord::wordsOut}};
    return fields;
}

template <>
const Fields<SceneRecord>& FieldsOf<SceneRecord>() {
    static const Fields<SceneRecord> fields = {
        {"oldPosition", nullptr, &SceneRecord::oldPosition},
        {"newPosition", nullptr, &SceneRecord::newPosition},
        {"oldNumber", nullptr, &SceneRecord::oldNumber},
        {"newNumber", nullptr, &SceneRecord::newNumber},
        {"state", nullptr, &SceneRecord::state},
        {"moved", nullptr, &SceneRecord::moved},
        {"changes", nullptr, &SceneRecord::changes, Shown::Everywhere, " "},
        {"dialogue", nullptr, &SceneRecord::dialogue, Shown::InJson},
        {"action", nullptr, &SceneRecord::action, Shown::InJson},
        {"dialogueWordsIn", nullptr, DialogueWordsIn, Shown::InTables},
        {"dialogueWordsOut", nullptr, DialogueWordsOut, Shown::InTables},
        {"actionWordsIn", nullptr, ActionWordsIn, Shown::InTables},
        {"actionWordsOut", nullptr, ActionWordsOut, Shown::InTables},
        Field<SceneRecord>("revision", nullptr, &SceneRecord::revision).WhereTold(),
    };
    return fields;
}

template <>
const Fields<TieRecord>& FieldsOf<TieRecord>() {
    static const Fields<TieRecord> fields = {{"oldPositions", nullptr, &TieRecord::oldPositions},
                                             {"newPositions", nullptr, &TieRecord::newPositions}};
    return fields;
}

template <>
const Fields<RenameRecord>& FieldsOf<RenameRecord>() {
    static const Fields<RenameRecord> fields = {{"kind", nullptr, &RenameRecord::kind},
                                                {"from", nullptr, &RenameRecord::from},
                                                {"to", nullptr, &RenameRecord::to},
                                                {"scenes", nullptr, &RenameRecord::scenes}};
    return fields;
}

template <>
const Fields<ClipRecordOfDiff>& FieldsOf<ClipRecordOfDiff>() {
    static const Fields<ClipRecordOfDiff> fields = {
        {"clip", nullptr, &ClipRecordOfDiff::clip},
        {"scene", nullptr, &ClipRecordOfDiff::scene, Shown::InJson},
        {"scene", nullptr, &ClipRecordOfDiff::mapped, Shown::InTables},
        {"state", nullptr, &ClipRecordOfDiff::state},
        {"carried", nullptr, &ClipRecordOfDiff::scene, Shown::InTables},
    };
    return fields;
}

template <>
const Fields<DiffDocument>& FieldsOf<DiffDocument>() {
    static const Fields<DiffDocument> fields = {{"scenes", nullptr, &DiffDocument::scenes},
                                                {"ties", nullptr, &DiffDocument::ties},
                                                {"renames", nullptr, &DiffDocument::renames},
                                                {"clips", nullptr, &DiffDocument::clips}};
    return fields;
}

namespace {

std::string AsCsv(const DiffDocument& document, bool withClips) {
    return withClips ? RecordTable(document.clips).AsCsv() : RecordTable(document.scenes).AsCsv();
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
    DraftFinder drafts(diff.before.root.get(), *diff.after.root, diff.comparison);
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
            diff.clips.push_back({name, drafts.Find(number, zonstoryparser::ReadCarriedScene(contents.xmp))});
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
        output.Result(DocumentText("diff", DocumentOf(diff)));
    } else if (options.format == Format::Csv) {
        output.Result(AsCsv(DocumentOf(diff), !options.clips.empty()));
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

Json DiffSchema() {
    return DocumentSchema<DiffDocument>("diff");
}

} // namespace zonstory
