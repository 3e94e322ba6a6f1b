#pragma once

#include <zonstoryparser/Export.h>
#include <zonstoryparser/XMPToolkit.h>

/// How a file is opened.
constexpr XMP_OptionBits kXMPFiles_OpenForRead = 0x1;
constexpr XMP_OptionBits kXMPFiles_OpenForUpdate = 0x2;
constexpr XMP_OptionBits kXMPFiles_OpenOnlyXMP = 0x4;          ///< The packet as it is, not reconciled with others.
constexpr XMP_OptionBits kXMPFiles_OptimizeFileLayout = 0x200; ///< Keep or move an MP4's or MOV's index to the front.

/// The XMP inside media files, as the toolkit's file handlers read and write it.
///
/// The toolkit changes files in place: a write that is interrupted can leave a file that nothing opens again. A host
/// changes a copy and puts it in the original's place when it is whole.
///
/// Opened for update without kXMPFiles_OpenOnlyXMP, MP4 and MOV report their container's own duration as xmpDM
/// "duration"; with it, an update drops the title and copyright of a MOV. So: read with kXMPFiles_OpenForRead |
/// kXMPFiles_OpenOnlyXMP, and write what was read and changed through a second opening with kXMPFiles_OpenForUpdate.
///
/// Every failure is an XMP_Error; nothing is printed.
class ZONSTORYPARSER_API SXMPFiles {
public:
    SXMPFiles();
    SXMPFiles(const SXMPFiles&) = delete;
    SXMPFiles& operator=(const SXMPFiles&) = delete;
    /// Closes what is open; changes that CloseFile() has not written are lost.
    ~SXMPFiles();

    /// Opens a file.
    /// @param path     The file-system path, in the bytes the file system uses; absolute, since the toolkit reads out
    ///                 of bounds for some short relative ones. A relative path is refused with kXMPErr_BadParam.
    /// @param options  kXMPFiles_ bits, at least one of the two purposes.
    void OpenFile(const char* path, XMP_OptionBits options);

    /// Reads the file's metadata.
    /// @param xmp  Replaced when there is any, else left alone; may be null.
    /// @return Whether the file carries XMP.
    bool GetXMP(SXMPMeta* xmp);

    /// @return Whether the file, opened for update, can take this metadata inside.
    bool CanPutXMP(const SXMPMeta& xmp);

    /// Hands over the metadata to be written by CloseFile().
    void PutXMP(const SXMPMeta& xmp);

    /// Writes what was put, in place, and closes. The file may be damaged when this throws.
    void CloseFile();

private:
    void* mObject; // the toolkit's handle, owned
};
