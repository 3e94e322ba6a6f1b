#include "commands/DiffRecords.h"

#include <numeric>

#include <fmt/format.h>

#include "output/Record.h"

namespace zonstory {

namespace {

using zoncore::UTF16to8;
using zonstoryparser::Rename;
using zonstoryparser::SceneComparison;
using zonstoryparser::SceneState;

struct Part {
    const char* name;
    bool SceneComparison::*hasChanged;
};
constexpr Part kParts[] = {{"heading", &SceneComparison::headingChanged},
                           {"action", &SceneComparison::actionChanged},
                           {"dialogue", &SceneComparison::dialogueChanged},
                           {"duration", &SceneComparison::durationChanged}};

std::vector<std::string> ChangedParts(const SceneComparison& scene) {
    std::vector<std::string> names;
    for (const Part& part : kParts) {
        if (scene.*part.hasChanged) {
            names.emplace_back(part.name);
        }
    }
    return names;
}

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

SceneRecord RecordOf(const DiffFindings& diff, const SceneComparison& scene) {
    const std::string revision = diff.Revision(scene);
    SceneRecord record = {scene.oldPosition,
                          scene.newPosition,
                          diff.OldNumber(scene),
                          diff.NewNumber(scene),
                          SceneStateWord(scene),
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
std::vector<ClipRecordOfDiff> ClipRecords(const DiffFindings& diff) {
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

DiffDocument DocumentOf(const DiffFindings& diff) {
    DiffDocument document;
    for (const SceneComparison& scene : diff.comparison.scenes) {
        document.scenes.push_back(RecordOf(diff, scene));
    }
    for (const auto& tie : diff.comparison.ties) {
        document.ties.push_back({tie.oldPositions, tie.newPositions});
    }
    for (const Rename& rename : diff.comparison.renames) {
        document.renames.push_back({RenameWord(rename), UTF16to8(rename.from), UTF16to8(rename.to), rename.scenes});
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

std::string DiffAsJson(const DiffFindings& diff) {
    return DocumentText("diff", DocumentOf(diff));
}

std::string DiffAsCsv(const DiffFindings& diff, bool ofClips) {
    const DiffDocument document = DocumentOf(diff);
    return ofClips ? RecordTable(document.clips).AsCsv() : RecordTable(document.scenes).AsCsv();
}

Json DiffSchema() {
    return DocumentSchema<DiffDocument>("diff");
}

} // namespace zonstory
