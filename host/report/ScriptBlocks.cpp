#include "report/ScriptBlocks.h"

#include <nlohmann/json.hpp>

#include <zonstoryparser/Story.h>

namespace zonstory {

namespace {

using zonstoryparser::Paragraph;

// Also the classes of the style sheet.
const char* KindName(zonstoryparser::ElementType kind) {
    switch (kind) {
    case zonstoryparser::kSceneHeading:
        return "heading";
    case zonstoryparser::kCharacter:
        return "cue";
    case zonstoryparser::kDialog:
        return "dialogue";
    case zonstoryparser::kParenthetical:
        return "parenthetical";
    case zonstoryparser::kTransition:
        return "transition";
    case zonstoryparser::kShot:
        return "shot";
    default:
        return "action";
    }
}

bool IsSpoken(zonstoryparser::ElementType kind) {
    return kind == zonstoryparser::kDialog || kind == zonstoryparser::kParenthetical;
}

const Paragraph* LastHeading(const zonstoryparser::Scene& scene) {
    const Paragraph* heading = nullptr;
    for (const auto& paragraph : scene.paragraphs) {
        heading = paragraph->element == zonstoryparser::kSceneHeading ? paragraph.get() : heading;
    }
    return heading;
}

Json LineOf(const boost::intrusive_ptr<Paragraph>& paragraph) {
    zoncore::UString text;
    zonstoryparser::GetTextRuns(paragraph, text);
    return {{"kind", KindName(paragraph->element)}, {"text", zoncore::UTF16to8(text)}};
}

} // namespace

DualCues DualCuesOf(const zonscreenplay::Screenplay& story) {
    DualCues cues;
    for (const zonscreenplay::DualDialogue& pair : story.dualDialogue) {
        cues.insert({pair.left.get(), pair.right.get()});
    }
    return cues;
}

Json ScriptBlocks(const zonstoryparser::Scene& scene, const DualCues& dualCues) {
    const Paragraph* const heading = LastHeading(scene);
    Json blocks = Json::array();
    bool isSpeechOpen = false;
    for (const auto& paragraph : scene.paragraphs) {
        if (paragraph.get() == heading) {
            continue;
        }
        if (!isSpeechOpen || !IsSpoken(paragraph->element)) {
            isSpeechOpen = paragraph->element == zonstoryparser::kCharacter || IsSpoken(paragraph->element);
            blocks.push_back({{"isSpeech", isSpeechOpen},
                              {"isDual", dualCues.count(paragraph.get()) > 0},
                              {"lines", Json::array()}});
        }
        blocks.back()["lines"].push_back(LineOf(paragraph));
    }
    return blocks;
}

} // namespace zonstory
