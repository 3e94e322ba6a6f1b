#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/Story.h>

/// Short ways to make what a story file would have given.
namespace support {

using zoncore::UString;

constexpr auto kScript = zonmetadata::kScriptNamespaceURI;
constexpr auto kDynamicMedia = zonmetadata::kDynamicMediaNamespaceURI;

inline boost::intrusive_ptr<zonstoryparser::Paragraph> MakeParagraph(zonstoryparser::ElementType type,
                                                                     std::initializer_list<UString> runs,
                                                                     UString id = u"p") {
    boost::intrusive_ptr<zonstoryparser::Paragraph> paragraph(new zonstoryparser::Paragraph);
    paragraph->objectID = zonstoryparser::ObjectID(std::move(id));
    paragraph->element = type;
    for (const UString& text : runs) {
        paragraph->textRuns.emplace_back(new zonstoryparser::TextRun);
        paragraph->textRuns.back()->text = text;
    }
    return paragraph;
}

/// A paragraph of one run; the first one's identity is "p0".
using Line = std::pair<zonstoryparser::ElementType, UString>;

inline boost::intrusive_ptr<zonstoryparser::Scene> MakeScene(std::initializer_list<Line> lines, UString number = {}) {
    boost::intrusive_ptr<zonstoryparser::Scene> scene(new zonstoryparser::Scene);
    scene->sceneNumber = std::move(number);
    for (const auto& [type, text] : lines) {
        scene->paragraphs.push_back(MakeParagraph(type, {text}, scene->paragraphs.empty() ? u"p0" : u"p"));
    }
    return scene;
}

inline boost::intrusive_ptr<zonstoryparser::Section> MakeSection(
    std::initializer_list<boost::intrusive_ptr<zonstoryparser::Scene>> scenes) {
    boost::intrusive_ptr<zonstoryparser::Section> section(new zonstoryparser::Section);
    section->scenes = scenes;
    return section;
}

/// "CHARACTER: dialogue" for each record, so that a failed comparison can be read.
inline std::vector<std::string> Lines(const std::vector<zonstoryparser::CharacterDialogue>& list) {
    std::vector<std::string> lines;
    for (const zonstoryparser::CharacterDialogue& record : list) {
        lines.push_back(zoncore::UTF16to8(record.character) + ": " + zoncore::UTF16to8(record.dialogue));
    }
    return lines;
}

/// The dialogue that metadata carries.
inline std::vector<std::string> DialogueOf(SXMPMeta& xmp) {
    std::vector<zonstoryparser::CharacterDialogue> list;
    zonstoryparser::GetCharacterDialogueFromXMP(xmp, nullptr, list);
    return Lines(list);
}

/// What a reader finds; "(none)" for a missing property.
template <typename Reader>
std::string ValueOf(Reader reader, SXMPMeta& xmp) {
    std::string value;
    return reader(xmp, nullptr, &value) ? value : "(none)";
}

/// All that a scene's metadata carries, a line each; the dialogue last.
inline std::vector<std::string> Carried(SXMPMeta& xmp) {
    using namespace zonstoryparser;
    const std::pair<const char*, bool (*)(SXMPMeta&, XMP_OptionBits*, std::string*)> readers[] = {
        {"setting ", GetSceneSettingFromXMP},    {"location ", GetShotLocationFromXMP},
        {"time ", GetSceneTimeOfDayFromXMP},     {"number ", GetSceneNumberFromXMP},
        {"name ", GetShotNameFromXMP},           {"shot ", GetShotNumberFromXMP},
        {"scale ", GetShotDurationScaleFromXMP}, {"length ", GetShotDurationValueFromXMP},
        {"action ", GetActionFromXMP},
    };
    std::vector<std::string> lines;
    for (const auto& [name, reader] : readers) {
        std::string value;
        if (reader(xmp, nullptr, &value)) {
            lines.push_back(name + value);
        }
    }
    const std::vector<std::string> dialogue = DialogueOf(xmp);
    lines.insert(lines.end(), dialogue.begin(), dialogue.end());
    return lines;
}

} // namespace support
