#include "commands/Show.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "commands/ClipScene.h"
#include "commands/ClipSelection.h"
#include "commands/Toolkit.h"
#include "output/ExitCode.h"
#include "output/Json.h"
#include "output/SafeText.h"
#include "output/Table.h"

namespace zonstory {

namespace {

const char* TargetWord(const ClipScene& scene) {
    return scene.target == Target::Inside ? "inside" : "sidecar";
}

std::string Labelled(const char* label, const std::string& value) {
    return value.empty() ? "" : fmt::format("  {:<13}{}\n", label, SafeLine(value));
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
    std::string fields = Labelled("scene", scene.scene) + Labelled("setting", scene.setting) +
                         Labelled("location", scene.location) + Labelled("time of day", scene.timeOfDay) +
                         Labelled("shot name", scene.shotName) + Labelled("shot number", scene.shotNumber) +
                         Labelled("duration", DurationText(scene)) + Labelled("action", scene.action);
    const char* label = "dialogue";
    for (const ClipScene::Speech& speech : scene.dialogue) {
        fields += Labelled(label, speech.character + ": " + speech.dialogue);
        label = "";
    }
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

std::string AsJson(const std::vector<ClipScene>& scenes) {
    Json rows = Json::array();
    for (const ClipScene& scene : scenes) {
        Json dialogue = Json::array();
        for (const ClipScene::Speech& speech : scene.dialogue) {
            dialogue.push_back({{"character", speech.character}, {"dialogue", speech.dialogue}});
        }
        rows.push_back({{"clip", JsonString(scene.clip)},
                        {"target", TargetWord(scene)},
                        {"file", JsonString(scene.file)},
                        {"scene", scene.scene},
                        {"setting", scene.setting},
                        {"location", scene.location},
                        {"timeOfDay", scene.timeOfDay},
                        {"shotName", scene.shotName},
                        {"shotNumber", scene.shotNumber},
                        {"duration", {{"value", scene.durationValue}, {"scale", scene.durationScale}}},
                        {"action", scene.action},
                        {"dialogue", std::move(dialogue)}});
    }
    Json document = JsonDocument("show", 1);
    document["clips"] = std::move(rows);
    return JsonText(document);
}

std::string AsCsv(const std::vector<ClipScene>& scenes) {
    Table table({{"clip", ""},
                 {"target", ""},
                 {"file", ""},
                 {"scene", ""},
                 {"setting", ""},
                 {"location", ""},
                 {"time_of_day", ""},
                 {"shot_name", ""},
                 {"shot_number", ""},
                 {"duration_value", ""},
                 {"duration_scale", ""},
                 {"action", ""},
                 {"dialogue", ""}});
    for (const ClipScene& scene : scenes) {
        std::string dialogue;
        for (const ClipScene::Speech& speech : scene.dialogue) {
            dialogue += (dialogue.empty() ? "" : "\n") + speech.character + ": " + speech.dialogue;
        }
        table.AddRow({scene.clip, TargetWord(scene), scene.file, scene.scene, scene.setting, scene.location,
                      scene.timeOfDay, scene.shotName, scene.shotNumber, scene.durationValue, scene.durationScale,
                      scene.action, dialogue});
    }
    return table.AsCsv();
}

void RefuseIfUnfit(const SelectedClip& clip) {
    if (!clip.refusal.empty()) {
        throw ClipError(clip.refusal);
    }
}

} // namespace

int RunShow(const ShowOptions& options, Output& output) {
    const Toolkit toolkit;
    std::vector<ClipScene> scenes;
    int exitCode = kDone;
    for (const SelectedClip& clip : SelectClips(options.clips, options.recursive)) {
        try {
            RefuseIfUnfit(clip);
            scenes.push_back(ReadClipScene(clip.path, options.clip));
        } catch (const std::exception& error) {
            output.Error(clip.path.string() + ": " + error.what());
            exitCode = kSomeFailed;
        }
    }
    output.Result(InFormat(
        options.format, [&] { return AsText(scenes); }, [&] { return AsJson(scenes); }, [&] { return AsCsv(scenes); }));
    return exitCode;
}

} // namespace zonstory
