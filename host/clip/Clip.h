#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <zonstoryparser/XMPToolkit.h>

/// A clip as the program sees it: a file that carries XMP inside, or beside it in a sidecar.
namespace zonstory {

enum class Target { Inside, Sidecar };

/// How a sidecar is named: clip.xmp, or clip.mov.xmp.
enum class SidecarName { Short, Full };

struct ClipOptions {
    bool forceSidecar = false;                    ///< Never write inside, also where the container can.
    SidecarName sidecarName = SidecarName::Short; ///< For a sidecar that does not exist yet.
    bool verifyEssence = true;                    ///< Hash the media before and after.
    bool preserveTime = false;                    ///< The file keeps its modification time.
    bool dryRun = false;                          ///< Go the whole way and stop before the file changes.
};

/// What one clip carries.
struct ClipContents {
    Target target = Target::Inside;
    std::filesystem::path file; ///< The file that holds the XMP, or would: the clip itself or its sidecar. Absolute.
    bool hasXMP = false;
    SXMPMeta xmp;
};

enum class Outcome { Written, Unchanged, WouldWrite };

struct UpdateResult {
    Outcome outcome = Outcome::Unchanged;
    Target target = Target::Inside;
    std::filesystem::path file;
    std::vector<std::string>
        notes; ///< What the user should know though all went well: other hard links, an owner that could not be kept.
};

/// Why one clip could not be read or changed, in one line without the clip's name. The clip is as it was.
class ClipError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads what a clip carries; changes nothing.
/// @throws ClipError
ClipContents ReadClip(const std::filesystem::path& clip, const ClipOptions& options);

/// Changes a clip's metadata. `change` gets what the clip carries now (an empty object if nothing). Where its result
/// says the same as before, no file is touched. Otherwise the clip under its name is at every moment the old one or the
/// new one, whole.
/// @throws ClipError, and whatever `change` throws; the clip is then as it was and nothing is left beside it.
UpdateResult UpdateClip(const std::filesystem::path& clip, const ClipOptions& options,
                        const std::function<void(SXMPMeta&)>& change);

} // namespace zonstory
