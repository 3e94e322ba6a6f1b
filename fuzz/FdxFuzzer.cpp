// Bytes as FDX into the model and a story file: what is written reads back as the same story, every paragraph has an
// identity and text, and no facts are without their scene.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <zonscreenplay/Screenplay.h>

#include "Require.h"
#include "SceneInvariants.h"
#include "Toolkit.h"

namespace {

void CheckScreenplay(const zonscreenplay::Screenplay& screenplay) {
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
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::StartToolkit();
    zonscreenplay::ReadOptions options;
    options.format = zonscreenplay::Format::FDX;
    try {
        const zonscreenplay::Screenplay screenplay =
            zonscreenplay::ReadScreenplayFromMemory({reinterpret_cast<const char*>(data), size}, "film.fdx", options);
        CheckScreenplay(screenplay);
        fuzz::CheckStory(screenplay.root);
        const std::string written = zonscreenplay::WriteStoryFile(*screenplay.root);
        REQUIRE(zonscreenplay::WriteStoryFile(*zonscreenplay::ReadScreenplayFromMemory(written, "film").root) ==
                written);
    } catch (const zonscreenplay::ReadError&) {
        return 0;
    }
    return 0;
}
