#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "clip/Clip.h"
#include "clip/TargetFile.h"
#include "clip/layout/ContainerLayout.h"
#include "clip/packet/MetadataContent.h"
#include "files/ByteReader.h"

namespace zonstory {

/// A clip's metadata as it was read, with the file that holds it still open, so that a later step can tell whether it
/// is still the same. Stays where it is: the reader looks at the file, and the layout at the reader.
struct ClipState {
    ClipState() = default;
    ClipState(const ClipState&) = delete;
    ClipState& operator=(const ClipState&) = delete;

    Target target = Target::Inside;
    TargetFile file;                         ///< The clip itself or its sidecar, which may not exist yet.
    std::optional<ByteReader> reader;        ///< Of the file, where it exists.
    std::unique_ptr<ContainerLayout> layout; ///< Of a clip whose metadata is inside.
    std::string packet;                      ///< The bytes of the metadata, without zeros behind it; empty for none.
    bool hasXMP = false;
    SXMPMeta xmp;
    std::vector<std::string> notes;

    MetadataContent before; ///< What `xmp` said before it was changed.
    MetadataContent wanted; ///< What it says now.
    EditList edits;         ///< What makes the file say it.
    std::string written;    ///< The packet that the edits put inside a clip, without padding.

    /// Of the file's name, without the dot.
    std::string Extension() const;
};

using StatePointer = std::unique_ptr<ClipState>;

/// What a clip carries.
/// @throws ClipError
StatePointer LoadClip(const std::filesystem::path& clip, const ClipOptions& options);

/// What a clip carries, changed in memory, and the edits by which its file comes to say it: of the clip itself, or of its
/// sidecar where there is no exact way inside. No edits where the change makes no difference.
/// @throws ClipError, DamagedFile, and whatever `change` throws.
StatePointer LoadChanged(const std::filesystem::path& clip, const ClipOptions& options,
                         const std::function<void(SXMPMeta&)>& change);

/// Whether a clip's metadata goes inside it, unless its packet turns out to be odd.
/// @throws FileError when it cannot be read or is damaged.
bool IsWrittenInside(const TargetFile& clip);

} // namespace zonstory
