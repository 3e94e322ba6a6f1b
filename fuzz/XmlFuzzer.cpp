// Story files and FDX into the model: the breakdown and synchronisation of each scene; and of FDX, what is written as a
// story file reads back as the same story, every paragraph has an identity and text, and no facts are without their scene.
#include <cstddef>
#include <string>

#include <zonscreenplay/Screenplay.h>

#include "SceneInvariants.h"
#include "Target.h"

namespace {

using zonscreenplay::ReadScreenplayFromMemory;
using zonscreenplay::Screenplay;

void CheckFdx(const Screenplay& screenplay) {
    const auto& scenes = screenplay.root->document->body->section->scenes;
    REQUIRE(scenes.size() == screenplay.scenes.size());
    for (const auto& scene : scenes) {
        for (const auto& paragraph : scene->paragraphs) {
            REQUIRE(!paragraph->objectID.AsString().empty());
            REQUIRE(paragraph->textRuns.size() == 1 && !paragraph->textRuns[0]->text.empty());
            REQUIRE(screenplay.lines.Of(*paragraph) >= screenplay.lines.Of(*scene));
        }
    }
    for (std::size_t index = 1; index < screenplay.warnings.size(); ++index) {
        REQUIRE(screenplay.warnings[index - 1].line <= screenplay.warnings[index].line);
    }
    const std::string written = zonscreenplay::WriteStoryFile(*screenplay.root);
    REQUIRE(zonscreenplay::WriteStoryFile(*ReadScreenplayFromMemory(written, "film").root) == written);
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    try {
        const Screenplay screenplay = ReadScreenplayFromMemory(bytes, "film");
        CheckStory(screenplay.root);
        if (screenplay.format == zonscreenplay::Format::FDX) {
            CheckFdx(screenplay);
        }
    } catch (const zonscreenplay::ReadError&) {
        return;
    }
}
