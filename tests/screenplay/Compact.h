#pragma once

#include <string>

#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/Story.h>

/// A body in short, one line a paragraph: "scene 12A|heading: INT. BAR|action: Rain.|cue: JO|dialogue: Hi." A line end
/// within a text is a slash.
namespace support {

inline const char* CompactKind(zonstoryparser::ElementType kind) {
    constexpr const char* kWords[] = {"heading", "cue",           "dialogue",   "action",
                                      "shot",    "parenthetical", "transition", "action"};
    return kWords[kind - zonstoryparser::kSceneHeading];
}

inline std::string Compact(const zonscreenplay::Screenplay& screenplay) {
    std::string all;
    for (const auto& scene : screenplay.root->document->body->section->scenes) {
        all += (all.empty() ? "scene" : "|scene") +
               (scene->sceneNumber.empty() ? "" : " " + zoncore::UTF16to8(scene->sceneNumber));
        for (const auto& paragraph : scene->paragraphs) {
            zoncore::UString text;
            zonstoryparser::GetTextRuns(paragraph, text);
            std::string line = std::string(CompactKind(paragraph->element)) + ": " + zoncore::UTF16to8(text);
            for (char& byte : line) {
                byte = byte == '\n' ? '/' : byte;
            }
            all += "|" + line;
        }
    }
    return all;
}

/// "line: text" of every warning, parted by bars.
inline std::string Warnings(const zonscreenplay::Screenplay& screenplay) {
    std::string all;
    for (const zonscreenplay::Warning& warning : screenplay.warnings) {
        all += (all.empty() ? "" : "|") + std::to_string(warning.line) + ": " + warning.text;
    }
    return all;
}

} // namespace support
