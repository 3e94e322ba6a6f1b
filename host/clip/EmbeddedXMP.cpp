#include "clip/EmbeddedXMP.h"

#include <string>

#include <zonstoryparser/XMPFiles.h>

namespace zonstory {

namespace {

// 'Only XMP', since MP4 and MOV otherwise put their container's duration and dates in the place of the packet's.
constexpr XMP_OptionBits kReading = kXMPFiles_OpenForRead | kXMPFiles_OpenOnlyXMP | kXMPFiles_OpenUseSmartHandler;

EmbeddedXMP Read(const std::string& path, XMP_OptionBits& flags) {
    constexpr XMP_OptionBits kElsewhere = kXMPFiles_UsesSidecarXMP | kXMPFiles_FolderBasedFormat;
    EmbeddedXMP found;
    SXMPFiles files;
    files.OpenFile(path.c_str(), kReading);
    files.GetFileInfo(nullptr, &flags);
    found.isRead = (flags & kElsewhere) == 0;
    found.hasXMP = found.isRead && files.GetXMP(&found.xmp);
    return found;
}

} // namespace

EmbeddedXMP ReadEmbeddedXMP(const std::filesystem::path& path, const FileDescriptor& file) try {
    XMP_OptionBits flags = 0;
    EmbeddedXMP found = Read(path.native(), flags);
    if ((flags & kXMPFiles_FolderBasedFormat) != 0) { // under a name that shows no card around it, it is what it is
        found = Read("/proc/self/fd/" + std::to_string(file.Get()), flags);
    }
    return found;
} catch (const XMP_Error&) {
    return {};
}

} // namespace zonstory
