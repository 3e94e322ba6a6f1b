#include "commands/DiffText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <fmt/format.h>

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

WordCounts DialogueCounts(const SceneComparison& scene) {
    WordCounts counts;
    for (const auto& speech : scene.dialogue) {
        counts.in += speech.words.in;
        counts.out += speech.words.out;
    }
    return counts;
}

// "12", "12 -> 13", "#4" for a scene without a number.
std::string SceneName(const DiffFindings& diff, const SceneComparison& scene) {
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
UString OldName(const DiffFindings& diff, const UString& speaker) {
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

void AppendChanges(const DiffFindings& diff, const SceneComparison& scene, bool words, StyledText& text) {
    const SceneContent before = DiffFindings::Content(diff.oldScenes, scene.oldPosition);
    const SceneContent after = DiffFindings::Content(diff.newScenes, scene.newPosition);
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

void AppendScene(const DiffFindings& diff, const SceneComparison& scene, bool words, StyledText& text) {
    const SceneContent content = scene.newPosition ? DiffFindings::Content(diff.newScenes, scene.newPosition)
                                                   : DiffFindings::Content(diff.oldScenes, scene.oldPosition);
    const std::string state =
        std::string(SceneStateWord(scene)) + (scene.isMoved && scene.state != SceneState::Moved ? ", moved" : "");
    const std::string revision = diff.Revision(scene).empty() ? "" : "  (" + diff.Revision(scene) + ")";
    text.push_back({Look::Plain, SafeLine(fmt::format("{:<8}  {:<18}  {}{}", SceneName(diff, scene), state,
                                                      UTF16to8(content.heading), revision)) +
                                     '\n'});
    if (scene.oldPosition && scene.newPosition && scene.state != SceneState::Omitted) {
        AppendChanges(diff, scene, words, text);
    }
}

std::string Summary(const StoryComparison& comparison) {
    std::array<std::size_t, kSceneStateWords.size()> counts{};
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
                    : fmt::format("{}{} {}", line.empty() ? "" : ", ", counts[state], kSceneStateWords[state]);
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

} // namespace

StyledText DiffAsText(const DiffFindings& diff, const DiffOptions& options) {
    StyledText text;
    const auto add = [&text](const std::string& line) { text.push_back({Look::Plain, SafeLine(line) + '\n'}); };
    for (const Rename& rename : diff.comparison.renames) {
        add(fmt::format("{} {} is called {} now, in {} scenes", RenameWord(rename), UTF16to8(rename.from),
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
    for (const ComparedClip& row : diff.clips) {
        const std::string scene = row.answer.scene.empty() ? "" : ", scene " + row.answer.scene;
        add(fmt::format("{}: {}{}", row.clip, DraftStateWord(row.answer.state), scene));
    }
    return text;
}

} // namespace zonstory
