#include "clip/EmbeddedXMP.h"

#include <string>

#include "clip/Clip.h"

namespace zonstory {

namespace {

// 'Only XMP', since MP4 and MOV otherwise put their container's duration and dates in the place of the packet's.
constexpr XMP_OptionBits kReading = kXMPFiles_OpenForRead | kXMPFiles_OpenOnlyXMP | kXMPFiles_OpenUseSmartHandler;
// Not 'only XMP', which takes the title and copyright out of a MOV.
constexpr XMP_OptionBits kWriting = kXMPFiles_OpenForUpdate | kXMPFiles_OpenUseSmartHandler;

XMP_OptionBits OpenForReading(SXMPFiles& files, const std::string& path, XMP_FileFormat& format) {
    XMP_OptionBits flags = 0;
    try {
        files.OpenFile(path.c_str(), kReading);
        files.GetFileInfo(&format, &flags);
    } catch (const XMP_Error& error) {
        if (error.GetID() != kXMPErr_NoFileHandler) {
            throw;
        }
    }
    return flags;
}

bool IsWrittenInside(XMP_OptionBits flags) {
    constexpr XMP_OptionBits kElsewhere = kXMPFiles_UsesSidecarXMP | kXMPFiles_FolderBasedFormat;
    return (flags & kXMPFiles_CanInjectXMP) != 0 && (flags & kElsewhere) == 0;
}

EmbeddedXMP Read(const std::string& path, XMP_OptionBits& flags) {
    EmbeddedXMP found;
    SXMPFiles files;
    flags = OpenForReading(files, path, found.format);
    found.isWritable = IsWrittenInside(flags);
    if (found.isWritable) {
        found.hasXMP = files.GetXMP(&found.xmp);
    }
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
    throw ClipError("its metadata cannot be read, the file may be damaged");
}

void WriteEmbeddedXMP(const std::filesystem::path& path, const SXMPMeta& xmp, Layout layout) try {
    SXMPFiles files;
    files.OpenFile(path.c_str(), layout == Layout::IndexInFront ? kWriting | kXMPFiles_OptimizeFileLayout : kWriting);
    if (!files.CanPutXMP(xmp)) {
        throw ClipError("the metadata does not fit into the file");
    }
    files.PutXMP(xmp);
    files.CloseFile();
} catch (const XMP_Error&) {
    throw ClipError("the metadata could not be written into its copy, the file may be damaged");
}

} // namespace zonstory
