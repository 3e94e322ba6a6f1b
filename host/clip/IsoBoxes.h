#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "files/ByteReader.h"

namespace zonstory {

/// A box of an MP4 or MOV file.
struct IsoBox {
    std::uint32_t type = 0;
    std::uint64_t offset = 0; ///< Where its content starts, behind size and type.
    std::uint64_t size = 0;   ///< Of the content.
};

/// The boxes that lie side by side between two places of a file.
/// @throws ClipError when one reaches beyond `end`: the file is truncated or no such file.
std::vector<IsoBox> ReadIsoBoxes(const ByteReader& file, std::uint64_t begin, std::uint64_t end);

/// The first box of a type within another, if there is one. A box that stands for the file holds it all.
std::optional<IsoBox> FindIsoBox(const ByteReader& file, const IsoBox& parent, std::uint32_t type);

/// What matters about the layout of an MP4 or MOV.
struct IsoLayout {
    std::vector<IsoBox> boxes; ///< At the top level.
    bool indexInFront = false; ///< Plays while it is still being loaded.
    bool isFragmented = false; ///< Media positions are scattered all over it, so nothing may move.
};

/// @throws ClipError when the file is truncated or has no index, without which nothing plays it.
IsoLayout ReadIsoLayout(const ByteReader& file);

/// Compares where two versions of a file say that the pieces of their media are. Where the media has moved as a whole,
/// the second version must say so; a file whose media is whole but sought in the wrong place does not play.
/// @throws ClipError when they do not fit.
void RequireSameMediaPositions(const ByteReader& before, const IsoLayout& layoutBefore, const ByteReader& after,
                               const IsoLayout& layoutAfter);

} // namespace zonstory
