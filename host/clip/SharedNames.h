#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace zonstory {

/// Which clips have a name that, without its ending, is another clip's of the same folder as well: A001.mov beside
/// A001.mxf. A sidecar A001.xmp may then be either's. Upper and lower case count as one. Each folder is looked into once;
/// may be asked on any thread.
class SharedNames {
public:
    /// @param clip  Absolute and free of links.
    bool IsShared(const std::filesystem::path& clip);

private:
    std::mutex mMutex;
    std::unordered_map<std::string, std::unordered_set<std::string>> mShared; ///< By folder; names without endings.
};

} // namespace zonstory
