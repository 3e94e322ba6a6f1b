#include "clip/SharedNames.h"

#include <system_error>

#include "clip/FindClips.h"
#include "clip/FrameSequence.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

std::string Stem(const fs::path& clip) {
    return LowerCase(SequenceName(clip).stem().native());
}

std::unordered_set<std::string> SharedIn(const fs::path& folder) {
    std::unordered_map<std::string, std::string> first; // clip by stem
    std::unordered_set<std::string> shared;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const fs::path& path = entry->path();
        if (!IsMediaName(path)) {
            continue;
        }
        const std::string name = SequenceName(path).filename().native();
        const auto [known, isNew] = first.try_emplace(Stem(path), name);
        if (!isNew && known->second != name) {
            shared.insert(known->first);
        }
    }
    return shared;
}

} // namespace

bool SharedNames::IsShared(const fs::path& clip) {
    const std::lock_guard lock(mMutex);
    const fs::path folder = clip.parent_path();
    const auto [known, isNew] = mShared.try_emplace(folder.native());
    if (isNew) {
        known->second = SharedIn(folder);
    }
    return known->second.contains(Stem(clip));
}

} // namespace zonstory
