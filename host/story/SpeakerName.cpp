#include "story/SceneContent.h"

#include <string_view>

#include <fmt/format.h>

namespace zonstory {

namespace {

using zoncore::UString;
using namespace std::string_view_literals;

constexpr std::u16string_view kBlanks = u" \t\r\n\u00a0\u3000";

std::u16string_view WithoutBlanks(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::u16string_view::npos ? u""sv : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

// Where the bracket that ends the text was opened; npos when none does, or when nothing stands before it.
std::size_t StartOfExtension(std::u16string_view text) {
    if (text.empty() || (text.back() != u')' && text.back() != u'）')) {
        return std::u16string_view::npos;
    }
    const std::size_t open = text.find_last_of(u"(（");
    return open == 0 ? std::u16string_view::npos : open;
}

} // namespace

SceneContent GatherSceneContent(const zonstoryparser::Scene& scene) {
    SceneContent content;
    UString character;
    UString dialogue;
    for (const auto& paragraph : scene.paragraphs) {
        switch (paragraph ? paragraph->element : zonstoryparser::kUnknownElement) {
        case zonstoryparser::kSceneHeading:
            content.heading.clear();
            zonstoryparser::GetTextRuns(paragraph, content.heading);
            break;
        case zonstoryparser::kCharacter:
            zonstoryparser::PushCharacterDialogue(character, dialogue, content.dialogues);
            zonstoryparser::GetTextRuns(paragraph, character);
            break;
        case zonstoryparser::kDialog:
            zonstoryparser::GetTextRuns(paragraph, dialogue);
            break;
        case zonstoryparser::kAction:
            zonstoryparser::GetTextRuns(paragraph, content.action);
            break;
        default:
            break;
        }
    }
    zonstoryparser::PushCharacterDialogue(character, dialogue, content.dialogues);
    zonstoryparser::ParseSceneHeading(content.heading, content.setting, content.location, content.timeOfDay);
    return content;
}

UString SpeakerName(const UString& character) {
    std::u16string_view name = WithoutBlanks(character);
    for (std::size_t open = StartOfExtension(name); open != std::u16string_view::npos; open = StartOfExtension(name)) {
        name = WithoutBlanks(name.substr(0, open));
    }
    return UString(name);
}

UString NumberToWrite(const zonstoryparser::Scene& scene, std::size_t position) {
    if (!scene.sceneNumber.empty()) {
        return scene.sceneNumber;
    }
    const std::string digits = fmt::format("{:03}", position);
    return zoncore::AsciiToUTF16(digits.data(), digits.size());
}

} // namespace zonstory
