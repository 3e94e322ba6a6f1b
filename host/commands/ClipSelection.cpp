#include "commands/ClipSelection.h"

#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "clip/FindClips.h"
#include "clip/SidecarConflicts.h"

namespace zonstory {

namespace fs = std::filesystem;

std::vector<SelectedClip> SelectClips(const std::vector<std::string>& paths, bool recursive) {
    FoundClips list = FindClips({paths.begin(), paths.end()}, recursive);
    std::vector<SelectedClip> clips;
    for (UnsearchedPath& error : list.errors) {
        clips.push_back({std::move(error.path), std::move(error.reason)});
    }
    for (fs::path& clip : list.clips) {
        clips.push_back({std::move(clip), ""});
    }
    return clips;
}

void WarnOfContradiction(const fs::path& clip, const std::string& contradiction, Output& output) {
    if (!contradiction.empty()) {
        output.Warning(fmt::format("{}: says {}", clip.string(), contradiction));
    }
}

void RefuseSharedSidecars(std::vector<SelectedClip>& clips, const ClipOptions& options) {
    std::vector<fs::path> fit;
    for (const SelectedClip& clip : clips) {
        if (clip.refusal.empty()) {
            fit.push_back(clip.path);
        }
    }
    std::unordered_map<std::string, std::string> refusals;
    for (const SidecarConflict& conflict : SidecarConflicts(fit, options)) {
        const auto refuse = [&](const fs::path& clip, const fs::path& other) {
            refusals.emplace(clip.string(), fmt::format("would share the sidecar {} with {}",
                                                        conflict.sidecar.filename().string(), other.string()));
        };
        refuse(conflict.first, conflict.second);
        refuse(conflict.second, conflict.first);
    }
    for (SelectedClip& clip : clips) {
        const auto refusal = refusals.find(clip.path.string());
        if (refusal != refusals.end()) {
            clip.refusal = refusal->second;
        }
    }
}

} // namespace zonstory
