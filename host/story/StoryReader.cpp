#include "story/StoryReader.h"

#include <unistd.h>

namespace zonstory {

namespace {

constexpr char kStandardInput[] = "-";

} // namespace

std::string StoryFile::Name() const {
    return path == kStandardInput ? "standard input" : path;
}

Story ReadStory(const StoryFile& file, bool recordLines) {
    zonscreenplay::ReadOptions options;
    options.format = file.format;
    options.strictFountain = file.strictFountain;
    options.recordLines = recordLines;
    options.limits = file.limits;
    if (file.path == kStandardInput) {
        return zonscreenplay::ReadScreenplay(STDIN_FILENO, file.Name(), options);
    }
    return zonscreenplay::ReadScreenplay(file.path, options);
}

} // namespace zonstory
