#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "clip/Clip.h"
#include "clip/Sidecar.h"
#include "clip/TargetFile.h"
#include "clip/layout/ContainerLayout.h"
#include "clip/packet/MetadataContent.h"
#include "files/ByteReader.h"

namespace zonstory {

/// What one of a clip's two places holds, the clip itself or its sidecar, with the file still open, so that a later step
/// can tell whether it is still the same. Stays where it is: the reader looks at the file, and the layout at the reader.
struct ClipState {
    ClipState() = default;
    ClipState(const ClipState&) = delete;
    ClipState& operator=(const ClipState&) = delete;

    Target target = Target::Inside;
    TargetFile file;                         ///< The clip itself or its sidecar, which may not exist yet.
    std::optional<ByteReader> reader;        ///< Of the file, where it exists.
    std::unique_ptr<ContainerLayout> layout; ///< Of a clip whose metadata is inside.
    std::string packet;                      ///< The bytes of the metadata, without zeros behind it; empty for none.
    std::string noExactWay;                  ///< Why a clip cannot be changed inside; its packet is then not looked at.
    bool hasXMP = false;
    SXMPMeta xmp;
    std::vector<std::string> notes;

    MetadataContent before; ///< What `xmp` said before it was changed.
    MetadataContent wanted; ///< What it says now.
    EditList edits;         ///< What makes the file say it.
    std::string written;    ///< The packet that the edits put inside a clip, without padding.

    std::unique_ptr<ClipState> other; ///< The other place, where that was looked at.
    std::string contradiction;        ///< Between the two, for the user.
    bool leavesOther = false;         ///< Whether the other has edits that are to be made, too.

    /// Of the file's name, without the dot.
    std::string Extension() const;
};

using StatePointer = std::unique_ptr<ClipState>;

/// Opens a clip; of its metadata nothing is read.
/// @throws ClipError when it is missing, unreadable, empty, or a sidecar.
StatePointer OpenClip(const std::filesystem::path& path);

/// Reads the packet inside a clip, or why that cannot be changed exactly.
/// @throws FileError when the clip cannot be read or is damaged.
void ReadInside(ClipState& clip);

/// Reads what the toolkit finds inside a clip that cannot be changed exactly.
void ReadEmbedded(ClipState& clip);

/// A clip's sidecar, which may not exist yet.
/// @throws ClipError when it cannot be read or is no XMP.
StatePointer LoadSidecar(const SidecarChoice& choice);

/// Takes down what the metadata says before it is changed.
/// @throws ClipError when it says what cannot be written.
void BeginChange(ClipState& state);

/// Finds the edits that make the file say what the metadata says now. None where that is the same.
/// @throws NoExactWay of a clip, ClipError of a sidecar.
void FinishChange(ClipState& state);

/// What metadata says.
/// @throws ClipError when it says what cannot be written.
MetadataContent ContentOf(const SXMPMeta& xmp);

/// Whether a clip's metadata goes inside it, unless its packet turns out to be odd.
/// @throws FileError when it cannot be read or is damaged.
bool IsWrittenInside(const TargetFile& clip);

} // namespace zonstory
