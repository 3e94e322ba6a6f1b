// Sets one property of one clip in a process of its own, so that a test can kill it, starve it or run many at once.
//
//     clip_driver CLIP PROPERTY VALUE [--sidecar] [--dry-run] [--preserve-time]
//
// Prints the outcome and the notes. Exit code 0 when the clip carries the value now, 1 with the reason on standard error.
#include <csignal>
#include <cstdio>
#include <string>

#include <zonstoryparser/Story.h>

#include "clip/Clip.h"
#include "clip/Interrupt.h"

namespace {

zonstory::ClipOptions Options(int count, char** words) {
    zonstory::ClipOptions options;
    for (int index = 0; index < count; ++index) {
        const std::string word = words[index];
        options.forceSidecar = options.forceSidecar || word == "--sidecar";
        options.dryRun = options.dryRun || word == "--dry-run";
        options.preserveTime = options.preserveTime || word == "--preserve-time";
    }
    return options;
}

const char* Name(zonstory::Outcome outcome) {
    switch (outcome) {
    case zonstory::Outcome::Written:
        return "written";
    case zonstory::Outcome::WouldWrite:
        return "would write";
    default:
        return "unchanged";
    }
}

int Run(int count, char** words) try {
    zonstoryparser::RegisterNamespaces();
    const zonstory::UpdateResult result =
        zonstory::UpdateClip(words[1], Options(count - 4, words + 4), [&](SXMPMeta& xmp) {
            xmp.SetProperty("http://purl.org/dc/elements/1.1/", words[2], words[3]);
        });
    std::printf("%s %s\n", Name(result.outcome), result.file.c_str());
    for (const std::string& note : result.notes) {
        std::printf("note: %s\n", note.c_str());
    }
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}

} // namespace

int main(int count, char** words) {
    if (count < 4 || !SXMPMeta::Initialize()) {
        return 2;
    }
    std::signal(SIGINT, [](int) { zonstory::RequestInterrupt(); });
    const int code = Run(count, words);
    SXMPMeta::Terminate();
    return code;
}
