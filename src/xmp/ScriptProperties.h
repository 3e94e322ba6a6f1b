#pragma once

#include <zonmetadata/SchemaNamespaces.h>

namespace zonstoryparser {

using zonmetadata::kDublinCoreNamespaceURI;
using zonmetadata::kDynamicMediaNamespaceURI;
using zonmetadata::kScriptNamespaceURI;

/// A property by schema and name; for a struct's field also by its struct.
struct ScriptProperty {
    const char* schemaNS;
    const char* name;
};

/// The whole vocabulary. The names are stored in every clip ever written: they never change.
inline constexpr ScriptProperty kSceneSettingProperty = {kScriptNamespaceURI, "sceneSetting"};
inline constexpr ScriptProperty kShotLocationProperty = {kDynamicMediaNamespaceURI, "shotLocation"};
inline constexpr ScriptProperty kSceneTimeOfDayProperty = {kScriptNamespaceURI, "sceneTimeOfDay"};
inline constexpr ScriptProperty kSceneNumberProperty = {kDynamicMediaNamespaceURI, "scene"};
inline constexpr ScriptProperty kShotNameProperty = {kDynamicMediaNamespaceURI, "shotName"};
inline constexpr ScriptProperty kShotNumberProperty = {kDynamicMediaNamespaceURI, "shotNumber"};
inline constexpr ScriptProperty kShotDurationProperty = {kDynamicMediaNamespaceURI, "duration"};
inline constexpr ScriptProperty kActionProperty = {kScriptNamespaceURI, "action"};
inline constexpr ScriptProperty kDialogSequenceProperty = {kScriptNamespaceURI, "dialogSequence"};

/// Fields, each in the schema of its struct.
inline constexpr char kDurationValueField[] = "value";
inline constexpr char kDurationScaleField[] = "scale";
inline constexpr char kDialogCharacterField[] = "character";
inline constexpr char kDialogTextField[] = "dialog";

} // namespace zonstoryparser
