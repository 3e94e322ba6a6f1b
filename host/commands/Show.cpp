#include "commands/Show.h"

#include <optional>

#include "commands/ClipScene.h"
#include "commands/ClipSelection.h"
#include "commands/SaidScene.h"
#include "commands/TargetWord.h"
#include "commands/Toolkit.h"
#include "output/ExitCode.h"
#include "output/Labelled.h"
#include "output/Record.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

struct ShowDocument {
    std::vector<ClipScene> clips;
};

struct Duration {
    std::string value;
    std::string scale;
};

Duration DurationOf(const ClipScene& scene) {
    return {scene.durationValue, scene.durationScale};
}

std::optional<ScriptReference> ScriptOf(const ClipScene& scene) {
    return scene.script.IsEmpty() ? std::nullopt : std::optional(scene.script);
}

// "pink.fdx, 2nd revision, xxh128:…"
std::string ScriptText(const ClipScene& scene) {
    std::string text;
    for (const std::string& part : {scene.script.name, scene.script.label, scene.script.digest}) {
        text += (text.empty() || part.empty() ? "" : ", ") + part;
    }
    return text;
}

std::vector<std::string> Speeches(const ClipScene& scene) {
    std::vector<std::string> speeches;
    for (const ClipScene::Speech& speech : scene.dialogue) {
        speeches.push_back(speech.character + ": " + speech.dialogue);
    }
    return speeches;
}

const char* TargetOf(const ClipScene& scene) {
    return TargetWord(scene.target);
}

std::string Indented(const char* label, const std::string& value) {
    return Labelled(label, value, 2);
}

// "12 s" for the scale of whole seconds, else "480 x 1/24 s".
std::string DurationText(const ClipScene& scene) {
    if (scene.durationValue.empty() && scene.durationScale.empty()) {
        return "";
    }
    return scene.durationScale == "1/1" ? scene.durationValue + " s"
                                        : scene.durationValue + " x " + scene.durationScale + " s";
}

std::string AsText(const ClipScene& scene) {
    std::string fields = Indented("scene", scene.scene) + Indented("setting", scene.setting) +
                         Indented("location", scene.location) + Indented("time of day", scene.timeOfDay) +
                         Indented("shot name", scene.shotName) + Indented("shot number", scene.shotNumber) +
                         Indented("duration", DurationText(scene)) + Indented("action", scene.action);
    const char* label = "dialogue";
    for (const std::string& speech : Speeches(scene)) {
        fields += Indented(label, speech);
        label = "";
    }
    fields += Indented("script", ScriptText(scene));
    const std::string source =
        scene.target == Target::Sidecar ? ", sidecar " + std::filesystem::path(scene.file).filename().string() : "";
    return SafeLine(scene.clip + source) + '\n' + (fields.empty() ? "  no script data\n" : fields);
}

std::string AsText(const std::vector<ClipScene>& scenes) {
    std::string text;
    for (const ClipScene& scene : scenes) {
        text += AsText(scene);
    }
    return text;
}

} // namespace

template <>
const Fields<ClipScene::Speech>& FieldsOf<ClipScene::Speech>() {
    static const Fields<ClipScene::Speech> fields = {{"character", nullptr, &ClipScene::Speech::character},
                                                     {"dialogue", nullptr, &ClipScene::Speech::dialogue}};
    return fields;
}

template <>
const Fields<ScriptReference>& FieldsOf<ScriptReference>() {
    static const Fields<ScriptReference> fields = {{"name", nullptr, &ScriptReference::name},
                                                   {"label", nullptr, &ScriptReference::label},
                                                   {"digest", nullptr, &ScriptReference::digest}};
    return fields;
}

template <>
const Fields<Duration>& FieldsOf<Duration>() {
    static const Fields<Duration> fields = {{"value", nullptr, &Duration::value}, {"scale", nullptr, &Duration::scale}};
    return fields;
}

template <>
const Fields<ClipScene>& FieldsOf<ClipScene>() {
    static const Fields<ClipScene> fields = {
        {"clip", nullptr, &ClipScene::clip},
        {"target", nullptr, TargetOf},
        {"file", nullptr, &ClipScene::file},
        {"scene", nullptr, &ClipScene::scene},
        {"setting", nullptr, &ClipScene::setting},
        {"location", nullptr, &ClipScene::location},
        {"timeOfDay", nullptr, &ClipScene::timeOfDay},
        {"shotName", nullptr, &ClipScene::shotName},
        {"shotNumber", nullptr, &ClipScene::shotNumber},
        {"duration", nullptr, DurationOf, Shown::InJson},
        {"durationValue", nullptr, &ClipScene::durationValue, Shown::InTables},
        {"durationScale", nullptr, &ClipScene::durationScale, Shown::InTables},
        {"action", nullptr, &ClipScene::action},
        {"dialogue", nullptr, &ClipScene::dialogue, Shown::InJson},
        {"dialogue", nullptr, Speeches, Shown::InTables, "\n"},
        Field<ClipScene>("script", nullptr, ScriptOf, Shown::InJson).WhereTold(),
    };
    return fields;
}

template <>
const Fields<ShowDocument>& FieldsOf<ShowDocument>() {
    static const Fields<ShowDocument> fields = {{"clips", nullptr, &ShowDocument::clips}};
    return fields;
}

namespace {

void RefuseIfUnfit(const SelectedClip& clip) {
    if (!clip.refusal.empty()) {
        throw ClipError(clip.refusal);
    }
}

} // namespace

int RunShow(const ShowOptions& options, Output& output) {
    const Toolkit toolkit;
    SceneRules rules;
    const ClipOptions clipOptions = rules.In(options.clip);
    ShowDocument document;
    int exitCode = kDone;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        try {
            RefuseIfUnfit(clip);
            document.clips.push_back(ReadClipScene(clip.path, clipOptions));
            WarnOfContradiction(clip.path, document.clips.back().contradiction, output);
            for (const std::string& note : document.clips.back().notes) {
                output.Note(clip.path.string() + ": " + note);
            }
        } catch (const std::exception& error) {
            output.Error(clip.path.string() + ": " + error.what());
            exitCode = kSomeFailed;
        }
    }
    output.Result(InFormat(
        options.format, [&] { return AsText(document.clips); }, [&] { return DocumentText("show", document); },
        [&] { return RecordTable(document.clips).AsCsv(); }));
    return exitCode;
}

Json ShowSchema() {
    return DocumentSchema<ShowDocument>("show");
}

} // namespace zonstory
