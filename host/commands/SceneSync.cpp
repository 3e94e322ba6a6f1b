#include "commands/SceneSync.h"

#include <fmt/format.h>
#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/SceneContent.h>

#include "commands/SaidScene.h"
#include "match/SceneField.h"

namespace zonstory {

namespace {

using Changed = std::vector<zonmetadata::Path>;
using zonmetadata::kDynamicMediaNamespaceURI;
using zonmetadata::kScriptNamespaceURI;

zonmetadata::Path SceneNumberPath() {
    return zonmetadata::PathForSchemaNameAndPropertyName(kDynamicMediaNamespaceURI, "scene");
}

struct HeadingPart {
    const char* schemaNS;
    const char* name;
    const zoncore::UString& value;
};

void Require(bool isDone, const char* problem) {
    if (!isDone) {
        throw SceneSyncError(problem);
    }
}

bool NamesIt(const std::string& number, const SceneToWrite& scene) {
    return NamesScene(number, scene.numbers, scene.selected.position - 1);
}

void RequireMayWrite(const SceneToWrite& scene, const SaidScene& before) {
    if (scene.existing == Existing::Stays && !before.IsEmpty()) {
        throw SceneStays(before.number.empty() ? "says something of a scene already"
                                               : fmt::format("says scene {} already", before.number),
                         false);
    }
    if (scene.existing == Existing::OtherSceneStays && !before.number.empty() && !NamesIt(before.number, scene)) {
        throw SceneStays(
            fmt::format("says scene {} already, and is written over with '--replace' alone", before.number), true);
    }
}

// What is lost with the old values, as far as people put it there.
std::vector<std::string> NotesOn(const SaidScene& before, const SaidScene& after, const std::string& number) {
    std::vector<std::string> notes;
    if (after.number != number) {
        notes.push_back(fmt::format("keeps the slate {}, which names scene {}", after.number, number));
    } else if (!before.number.empty() && before.number != number) {
        notes.push_back(fmt::format("said scene {} before", before.number));
    }
    if (!before.IsOfScript() && !before.text.location.empty() && before.text.location != after.text.location) {
        notes.push_back(fmt::format("said location {} before", before.text.location));
    }
    return notes;
}

// The number, unless a slate stays. What was written there by this program is still its own.
std::string WriteNumber(const SceneToWrite& scene, const SaidScene& before, SXMPMeta& xmp) {
    if (NamesIt(before.number, scene)) {
        return before.IsOwnNumber() ? before.number : std::string();
    }
    const zoncore::UString number = NumberToWrite(scene.selected);
    Require(zonstoryparser::WriteSceneNumberToXMP(number, xmp), "Error writing scene number to XMP");
    return zoncore::UTF16to8(number);
}

// The library leaves alone what a scene does not have. The headings paths are reported by the library when it writes one.
void RemoveStaleHeading(const zonstoryparser::SceneContent& content, SXMPMeta& xmp, Changed& changed) {
    const HeadingPart parts[] = {{kScriptNamespaceURI, "sceneSetting", content.setting},
                                 {kDynamicMediaNamespaceURI, "shotLocation", content.location},
                                 {kScriptNamespaceURI, "sceneTimeOfDay", content.timeOfDay}};
    bool isStale = false;
    for (const HeadingPart& part : parts) {
        isStale = isStale || (part.value.empty() && xmp.DoesPropertyExist(part.schemaNS, part.name));
    }
    if (!isStale) {
        return;
    }
    Require(zonstoryparser::DeleteSceneHeadingFromXMP(xmp), "the old scene heading cannot be removed");
    for (const HeadingPart& part : parts) {
        if (content.heading.empty()) {
            changed.push_back(zonmetadata::PathForSchemaNameAndPropertyName(part.schemaNS, part.name));
        }
    }
}

} // namespace

SceneChange WriteScene(const SceneToWrite& scene, SXMPMeta& xmp) {
    const SaidScene before = ReadSaidScene(xmp);
    RequireMayWrite(scene, before);
    const zonstoryparser::SceneContent content = zonstoryparser::GatherSceneContent(*scene.selected.scene);
    SceneChange change;
    RemoveStaleHeading(content, xmp, change.paths);
    if (content.action.empty()) {
        Require(zonstoryparser::DeleteActionFromXMP(xmp), "the old action cannot be removed");
    }
    const zoncore::UString problem = zonstoryparser::WriteSceneMetadataIntoXMP(scene.selected.scene, xmp, change.paths);
    Require(problem.empty(), zoncore::UTF16to8(problem).c_str());
    ScriptReference script = scene.script;
    script.scene = WriteNumber(scene, before, xmp);
    change.paths.push_back(SceneNumberPath());
    const SaidScene after = ReadSaidScene(xmp);
    if (after.number != before.number || after.text != before.text) {
        WriteScriptReference(script, xmp);
        change.paths.push_back(ScriptReferencePath());
        change.notes = NotesOn(before, after, zoncore::UTF16to8(NumberToWrite(scene.selected)));
    }
    return change;
}

SceneChange ClearScene(SXMPMeta& xmp) {
    const SaidScene before = ReadSaidScene(xmp);
    SceneChange change;
    if (!before.IsOfScript()) {
        return change;
    }
    const zoncore::UString problem = zonstoryparser::ClearSceneMetadataFromXMP(xmp, change.paths);
    Require(problem.empty(), zoncore::UTF16to8(problem).c_str());
    if (before.IsOwnNumber()) {
        Require(zonstoryparser::DeleteSceneNumberFromXMP(xmp), "Error deleting scene number from XMP");
        change.paths.push_back(SceneNumberPath());
    } else if (!before.number.empty()) {
        change.notes.push_back(fmt::format("keeps scene {}, which another program wrote", before.number));
    }
    if (ClearScriptReference(xmp)) {
        change.paths.push_back(ScriptReferencePath());
    }
    return change;
}

std::string PathText(const zonmetadata::Path& path) {
    std::string prefix;
    SXMPMeta::GetNamespacePrefix(path.SchemaNamespace().c_str(), &prefix);
    return prefix + path.PropertyPath();
}

} // namespace zonstory
