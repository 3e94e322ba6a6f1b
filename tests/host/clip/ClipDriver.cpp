// Sets one property of one clip in a process of its own, so that a test can kill it, starve it or run many at once.
//
//     clip_driver CLIP PROPERTY VALUE
//
// Exit code 0 when the clip carries the value now, 1 with the reason on standard error.
#include <csignal>
#include <cstdio>

#include <zonstoryparser/Story.h>

#include "clip/Clip.h"
#include "clip/Interrupt.h"

int main(int count, char** words) try {
    if (count != 4 || !SXMPMeta::Initialize()) {
        return 2;
    }
    zonstoryparser::RegisterNamespaces();
    std::signal(SIGINT, [](int) { zonstory::RequestInterrupt(); });
    zonstory::UpdateClip(
        words[1], {}, [&](SXMPMeta& xmp) { xmp.SetProperty("http://purl.org/dc/elements/1.1/", words[2], words[3]); });
    SXMPMeta::Terminate();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
