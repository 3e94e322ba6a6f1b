#include "commands/SceneSync.h"

#include <utility>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/SceneContent.h>
#include <zonstoryparser/StoryComparison.h>

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

// A scene's number and all that it says.
using Said = std::pair<std::string, zonstoryparser::CarriedScene>;

Said ReadSaid(SXMPMeta& xmp) {
    Said said;
    zonstoryparser::GetSceneNumberFromXMP(xmp, nullptr, &said.first);
    said.second = zonstoryparser::ReadCarriedScene(xmp);
    return said;
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

Changed WriteScene(const SelectedScene& selected, const ScriptReference& script, SXMPMeta& xmp) {
    const Said before = ReadSaid(xmp);
    const zonstoryparser::SceneContent content = zonstoryparser::GatherSceneContent(*selected.scene);
    Changed changed;
    RemoveStaleHeading(content, xmp, changed);
    if (content.action.empty()) {
        Require(zonstoryparser::DeleteActionFromXMP(xmp), "the old action cannot be removed");
    }
    const zoncore::UString problem = zonstoryparser::WriteSceneMetadataIntoXMP(selected.scene, xmp, changed);
    Require(problem.empty(), zoncore::UTF16to8(problem).c_str());
    const zoncore::UString number = NumberToWrite(selected);
    Require(zonstoryparser::WriteSceneNumberToXMP(number, xmp), "Error writing scene number to XMP");
    changed.push_back(SceneNumberPath());
    if (ReadSaid(xmp) != before) {
        WriteScriptReference(script, xmp);
        changed.push_back(ScriptReferencePath());
    }
    return changed;
}

Changed ClearScene(SXMPMeta& xmp) {
    Changed changed;
    const zoncore::UString problem = zonstoryparser::ClearSceneMetadataFromXMP(xmp, changed);
    Require(problem.empty(), zoncore::UTF16to8(problem).c_str());
    Require(zonstoryparser::DeleteSceneNumberFromXMP(xmp), "Error deleting scene number from XMP");
    changed.push_back(SceneNumberPath());
    if (ClearScriptReference(xmp)) {
        changed.push_back(ScriptReferencePath());
    }
    return changed;
}

std::string PathText(const zonmetadata::Path& path) {
    std::string prefix;
    SXMPMeta::GetNamespacePrefix(path.SchemaNamespace().c_str(), &prefix);
    return prefix + path.PropertyPath();
}

} // namespace zonstory
