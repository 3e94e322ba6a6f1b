#pragma once

#include <zonstoryparser/Export.h>
#include <zonstoryparser/XMPToolkit.h>

/// How a file is opened.
constexpr XMP_OptionBits kXMPFiles_OpenForRead = 0x1;
constexpr XMP_OptionBits kXMPFiles_OpenForUpdate = 0x2;
constexpr XMP_OptionBits kXMPFiles_OpenOnlyXMP = 0x4;          ///< The packet as it is, not reconciled with others.
constexpr XMP_OptionBits kXMPFiles_OpenUseSmartHandler = 0x20; ///< Only files of a known format; nothing is scanned.
constexpr XMP_OptionBits kXMPFiles_OptimizeFileLayout = 0x200; ///< Keep or move an MP4's or MOV's index to the front.

/// What a format's handler does, as GetFileInfo() tells it.
constexpr XMP_OptionBits kXMPFiles_CanInjectXMP = 0x1;         ///< Writes into the file, whether or not it has XMP.
constexpr XMP_OptionBits kXMPFiles_UsesSidecarXMP = 0x800;     ///< Writes beside the file, under a name of its own.
constexpr XMP_OptionBits kXMPFiles_FolderBasedFormat = 0x1000; ///< Writes elsewhere in a camera card's folders.

/// Formats, named by four characters.
using XMP_FileFormat = std::uint32_t;
constexpr XMP_FileFormat kXMP_MOVFile = 0x4D4F5620;
constexpr XMP_FileFormat kXMP_MPEG4File = 0x4D503420;
constexpr XMP_FileFormat kXMP_AVIFile = 0x41564920;
constexpr XMP_FileFormat kXMP_WAVFile = 0x57415620;
constexpr XMP_FileFormat kXMP_MP3File = 0x4D503320;
constexpr XMP_FileFormat kXMP_AIFFFile = 0x41494646;
constexpr XMP_FileFormat kXMP_WMAVFile = 0x574D4156;
constexpr XMP_FileFormat kXMP_FLVFile = 0x464C5620;
constexpr XMP_FileFormat kXMP_UnknownFile = 0x20202020;

constexpr std::int32_t kXMPErr_NoFileHandler = 109; ///< No handler knows the file's format.

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
    /// @param options  kXMPFiles_Open bits, at least one of the two purposes.
    /// @throws XMP_Error, with kXMPErr_NoFileHandler where kXMPFiles_OpenUseSmartHandler finds no handler.
    void OpenFile(const char* path, XMP_OptionBits options);

    /// Tells about the file that is open.
    /// @param format        Receives its format, kXMP_UnknownFile where no handler knows it; may be null.
    /// @param handlerFlags  Receives what the format's handler does; may be null.
    /// @return false, and nothing is assigned, when no file is open.
    bool GetFileInfo(XMP_FileFormat* format, XMP_OptionBits* handlerFlags);

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
