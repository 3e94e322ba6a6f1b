#pragma once

#include <filesystem>

#include <zonstoryparser/XMPToolkit.h>

#include "files/FileDescriptor.h"

namespace zonstory {

/// The metadata inside a clip as the toolkit's readers of containers see it, with what they take from the file's other
/// metadata.
struct EmbeddedXMP {
    bool isRead = false; ///< Whether they know where to look in this file, and could.
    bool hasXMP = false;
    SXMPMeta xmp;
};

/// @param path  Absolute.
/// @param file  The same file, open. It is read through this where a camera card's folders around it would lead the
///              toolkit to other files.
EmbeddedXMP ReadEmbeddedXMP(const std::filesystem::path& path, const FileDescriptor& file);

} // namespace zonstory
