#include "clip/SidecarConflicts.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

#include <sys/stat.h>

#include "clip/ClipState.h"
#include "clip/FindClips.h"
#include "clip/FrameSequence.h"
#include "clip/Sidecar.h"
#include "clip/TargetFile.h"
#include "files/FileIdentity.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

struct Member {
    fs::path clip; // as it was given
    bool isAskedAbout;
};

std::string OtherCase(std::string name) {
    const std::string lower = LowerCase(name);
    std::transform(lower.begin(), lower.end(), name.begin(), name.begin(), [](char low, char letter) {
        return low != letter ? low : low >= 'a' && low <= 'z' ? static_cast<char>(low - 'a' + 'A') : low;
    });
    return name;
}

bool IsOneFile(const fs::path& left, const fs::path& right) {
    struct stat leftStatus {};
    struct stat rightStatus {};
    return left != right && ::lstat(left.c_str(), &leftStatus) == 0 && ::lstat(right.c_str(), &rightStatus) == 0 &&
           KeyOf(leftStatus) == KeyOf(rightStatus);
}

// Clips by the sidecar that they would use if they used one.
class SidecarGroups {
public:
    explicit SidecarGroups(SidecarName name) : mName(name) {}

    void Add(const fs::path& clip, bool isAskedAbout) {
        const fs::path real = RealPath(clip);
        if (real.empty() || !mClips.insert(SequenceName(real).native()).second) {
            return;
        }
        const fs::path sidecar = ChooseSidecar(real, mName).path;
        const auto [position, isNew] = mPositions.emplace(KeyFor(sidecar, real), mGroups.size());
        if (isNew) {
            mGroups.push_back({sidecar, {}});
        }
        mGroups[position->second].members.push_back({clip, isAskedAbout});
        mFolders.insert(real.parent_path().native());
    }

    void AddNeighbours() {
        for (const std::string& folder : std::unordered_set<std::string>(mFolders)) {
            for (const fs::path& clip : FindClips({folder}, false).clips) {
                Add(clip, false);
            }
        }
    }

    struct Group {
        fs::path sidecar;
        std::vector<Member> members;
    };
    const std::vector<Group>& Groups() const { return mGroups; }

private:
    // What two names have in common that stand for one file: where upper and lower case are one, a clip is also found by
    // its name in the other.
    std::string KeyFor(const fs::path& sidecar, const fs::path& clip) {
        const auto [folder, isNew] = mIgnoresCase.try_emplace(clip.parent_path().native());
        if (isNew) {
            folder->second = IsOneFile(clip, clip.parent_path() / OtherCase(clip.filename().native()));
        }
        return folder->second ? clip.parent_path() / LowerCase(sidecar.filename().native()) : sidecar;
    }

    // Empty for a clip that is not there. A folder's own path is found once for all its files, since that is most of the
    // work.
    fs::path RealPath(const fs::path& clip) {
        struct stat status {};
        if (::lstat(clip.c_str(), &status) != 0) {
            return {};
        }
        std::error_code error;
        if (!S_ISREG(status.st_mode)) {
            return fs::canonical(clip, error);
        }
        const fs::path folder = clip.has_parent_path() ? clip.parent_path() : fs::path(".");
        const auto [known, isNew] = mRealFolders.try_emplace(folder.native());
        if (isNew) {
            known->second = fs::canonical(folder, error);
        }
        return known->second.empty() ? fs::path() : known->second / clip.filename();
    }

    SidecarName mName;
    std::unordered_map<std::string, fs::path> mRealFolders;
    std::unordered_map<std::string, bool> mIgnoresCase;
    std::vector<Group> mGroups;
    std::unordered_map<std::string, std::size_t> mPositions;
    std::unordered_set<std::string> mClips;
    std::unordered_set<std::string> mFolders;
};

// A neighbour that can be written inside may never have got a sidecar, whatever this run is told to do.
bool UsesSidecar(const Member& member, const ClipOptions& options) try {
    const TargetFile file = TargetFile::Open(member.clip);
    const bool isForced = options.placement == Placement::Sidecar && member.isAskedAbout;
    return isForced || (options.placement != Placement::Inside && !IsWrittenInside(file));
} catch (const FileError&) {
    return false;
}

void AddConflicts(const SidecarGroups::Group& group, const ClipOptions& options,
                  std::vector<SidecarConflict>& conflicts) {
    const Member& first = group.members.front();
    if (group.members.size() < 2 || !first.isAskedAbout) {
        return;
    }
    std::vector<Member> users;
    std::copy_if(group.members.begin(), group.members.end(), std::back_inserter(users),
                 [&](const Member& member) { return UsesSidecar(member, options); });
    for (std::size_t index = 1; index < users.size() && users.front().isAskedAbout; ++index) {
        conflicts.push_back({users.front().clip, users[index].clip, group.sidecar});
    }
}

} // namespace

std::vector<SidecarConflict> SidecarConflicts(const std::vector<fs::path>& clips, const ClipOptions& options) {
    SidecarGroups groups(options.sidecarName);
    for (const fs::path& clip : clips) {
        groups.Add(clip, true);
    }
    groups.AddNeighbours();
    std::vector<SidecarConflict> conflicts;
    for (const SidecarGroups::Group& group : groups.Groups()) {
        AddConflicts(group, options, conflicts);
    }
    return conflicts;
}

} // namespace zonstory
