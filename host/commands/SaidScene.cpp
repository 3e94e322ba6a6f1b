#include "commands/SaidScene.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include <fmt/ranges.h>
#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/Story.h>

#include "commands/SceneSync.h"
#include "match/SceneField.h"

namespace zonstory {

namespace {

using zonmetadata::kDynamicMediaNamespaceURI;
using zonmetadata::kScriptNamespaceURI;
using zonstoryparser::CarriedScene;

constexpr const char* kDialogue = "dialogSequence";

struct Property {
    const char* schemaNS;
    const char* name;
};

// Of simple text.
constexpr Property kTexts[] = {{kDynamicMediaNamespaceURI, "scene"},
                               {kScriptNamespaceURI, "sceneSetting"},
                               {kDynamicMediaNamespaceURI, "shotLocation"},
                               {kScriptNamespaceURI, "sceneTimeOfDay"},
                               {kScriptNamespaceURI, "action"}};

struct Part {
    const char* name;
    std::string CarriedScene::*text;
};

constexpr Part kParts[] = {{"setting", &CarriedScene::setting},
                           {"location", &CarriedScene::location},
                           {"time of day", &CarriedScene::timeOfDay},
                           {"action", &CarriedScene::action}};

bool Disagree(const std::string& left, const std::string& right) {
    return !left.empty() && !right.empty() && left != right;
}

CarriedScene DialogueOf(const CarriedScene& scene) {
    CarriedScene dialogue;
    dialogue.dialogues = scene.dialogues;
    return dialogue;
}

std::vector<std::string> DisagreeingParts(const CarriedScene& left, const CarriedScene& right) {
    std::vector<std::string> names;
    for (const Part& part : kParts) {
        if (Disagree(left.*part.text, right.*part.text)) {
            names.emplace_back(part.name);
        }
    }
    if (!left.dialogues.empty() && !right.dialogues.empty() && DialogueOf(left) != DialogueOf(right)) {
        names.emplace_back("dialogue");
    }
    return names;
}

bool AreTwoScenes(const SaidScene& left, const SaidScene& right) {
    return Disagree(left.number, right.number) && !CanNameOneScene(left.number, right.number);
}

void Delete(const Property& property, SXMPMeta& xmp) {
    xmp.DeleteProperty(property.schemaNS, property.name);
}

} // namespace

bool SaidScene::IsOfScript() const {
    return !script.IsEmpty() || !script.scene.empty() || !text.setting.empty() || !text.timeOfDay.empty() ||
           !text.action.empty() || !text.dialogues.empty();
}

SaidScene ReadSaidScene(const SXMPMeta& xmp) {
    SXMPMeta copy = xmp; // readers take what they could change
    SaidScene said;
    zonstoryparser::GetSceneNumberFromXMP(copy, nullptr, &said.number);
    said.text = zonstoryparser::ReadCarriedScene(copy);
    said.script = ReadScriptReference(copy);
    return said;
}

bool SceneSubject::IsIn(const SXMPMeta& xmp) const {
    return xmp.DoesPropertyExist(kScriptNamespaceURI, kDialogue) ||
           std::any_of(std::begin(kTexts), std::end(kTexts), [&](const Property& property) {
               return xmp.DoesPropertyExist(property.schemaNS, property.name);
           });
}

// What is copied was written here by this program, so that it can go again.
void SceneSubject::Copy(const SXMPMeta& from, SXMPMeta& to) const {
    for (const Property& property : kTexts) {
        std::string value;
        if (from.GetProperty(property.schemaNS, property.name, &value, nullptr) && !value.empty()) {
            to.SetProperty(property.schemaNS, property.name, value);
        }
    }
    const SaidScene said = ReadSaidScene(from);
    if (!said.text.dialogues.empty()) {
        zonstoryparser::WriteCharacterDialogueToXMP(said.text.dialogues, to);
    }
    ScriptReference script = said.script;
    script.scene = said.number;
    WriteScriptReference(script, to);
}

void SceneSubject::Withdraw(SXMPMeta& xmp, const SXMPMeta& better) const {
    ClearScene(xmp);
    const SaidScene left = ReadSaidScene(xmp);
    const SaidScene truth = ReadSaidScene(better);
    if (AreTwoScenes(left, truth)) {
        Delete(kTexts[0], xmp);
    }
    if (Disagree(left.text.location, truth.text.location)) {
        xmp.DeleteProperty(kDynamicMediaNamespaceURI, "shotLocation");
    }
}

std::string SceneSubject::Contradiction(const SXMPMeta& inside, const SXMPMeta& sidecar) const {
    const SaidScene left = ReadSaidScene(inside);
    const SaidScene right = ReadSaidScene(sidecar);
    if (AreTwoScenes(left, right)) {
        return fmt::format("scene {} inside and scene {} in its sidecar", left.number, right.number);
    }
    const std::vector<std::string> parts = DisagreeingParts(left.text, right.text);
    return parts.empty() ? "" : fmt::format("another {} inside than in its sidecar", fmt::join(parts, ", "));
}

} // namespace zonstory
