// Story bytes through the program's XML parser into the model, then the breakdown and synchronisation of each scene.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "SceneInvariants.h"
#include "Toolkit.h"
#include "story/StoryReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::StartToolkit();
    try {
        const zonstory::Story story =
            zonstory::ReadStoryFromMemory({reinterpret_cast<const char*>(data), size}, "story");
        fuzz::CheckStory(story.root);
    } catch (const zonstory::StoryError&) {
        return 0;
    }
    return 0;
}
