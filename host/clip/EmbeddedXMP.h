#pragma once

#include <filesystem>

#include <zonstoryparser/XMPFiles.h>

#include "files/FileDescriptor.h"

namespace zonstory {

/// The metadata inside a clip, as far as the toolkit can write there.
struct EmbeddedXMP {
    bool isWritable = false; ///< Else it belongs into a sidecar, and nothing was read.
    XMP_FileFormat format = kXMP_UnknownFile;
    bool hasXMP = false;
    SXMPMeta xmp;
};

/// Reads a clip's metadata.
/// @param path  Absolute.
/// @param file  The same file, open. It is read through this where a camera card's folders around it would lead the
///              toolkit to other files.
/// @throws ClipError when the toolkit knows the format but cannot read the file.
EmbeddedXMP ReadEmbeddedXMP(const std::filesystem::path& path, const FileDescriptor& file);

enum class Layout { AsItFalls, IndexInFront };

/// Writes metadata into a file, in place; the file may be damaged when this throws, and is to be a copy.
/// @param path  Absolute.
/// @throws ClipError
void WriteEmbeddedXMP(const std::filesystem::path& path, const SXMPMeta& xmp, Layout layout);

} // namespace zonstory
