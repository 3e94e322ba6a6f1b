// Story bytes through the program's XML parser into the model, then the breakdown and synchronisation of each scene.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "SceneInvariants.h"
#include "Toolkit.h"
#include <zonscreenplay/Screenplay.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::StartToolkit();
    try {
        const zonscreenplay::Screenplay story =
            zonscreenplay::ReadScreenplayFromMemory({reinterpret_cast<const char*>(data), size}, "story");
        fuzz::CheckStory(story.root);
    } catch (const zonscreenplay::ReadError&) {
        return 0;
    }
    return 0;
}
