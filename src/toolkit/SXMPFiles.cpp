#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include <exempi/xmp.h>

#include <zonstoryparser/XMPFiles.h>

#include "toolkit/ToolkitCall.h"

using zonstoryparser::CallToolkit;

namespace {

XmpFilePtr Handle(void* object) {
    return static_cast<XmpFilePtr>(object);
}

XmpFilePtr NewFiles() {
    const XmpFilePtr handle = CallToolkit("cannot open files", [] { return xmp_files_new(); });
    if (handle == nullptr) {
        throw std::bad_alloc();
    }
    return handle;
}

// The toolkit stores what it likes in its enumerations, combined flags and formats that they do not list among it; so the
// bits are copied as they are: to read such a value as an enumeration is undefined.
template <typename Enumeration>
std::uint32_t NumberOf(const Enumeration& value) {
    static_assert(sizeof value == sizeof(std::uint32_t));
    std::uint32_t number = 0;
    std::memcpy(&number, &value, sizeof number);
    return number;
}

} // namespace

SXMPFiles::SXMPFiles() : mObject(NewFiles()) {}

SXMPFiles::~SXMPFiles() {
    const zonstoryparser::ToolkitSilence silence;
    xmp_files_free(Handle(mObject));
}

void SXMPFiles::OpenFile(const char* path, XMP_OptionBits options) {
    constexpr const char* kOperation = "cannot open";
    const std::string name = path != nullptr ? path : "";
    if (name.empty() || name.front() != '/') {
        zonstoryparser::ThrowToolkitError(kXMPErr_BadParam, kOperation, '\'' + name + '\'');
    }
    const auto subject = [&] { return '\'' + name + '\''; };
    const bool isOpen = CallToolkit(
        kOperation,
        [&] { return xmp_files_open(Handle(mObject), name.c_str(), static_cast<XmpOpenFileOptions>(options)); },
        subject);
    if (!isOpen) { // refused without an error of its own: no such file, or no handler where one is required
        const bool needsHandler = (options & kXMPFiles_OpenUseSmartHandler) != 0;
        zonstoryparser::ThrowToolkitError(needsHandler ? kXMPErr_NoFileHandler : kXMPErr_ExternalFailure, kOperation,
                                          subject());
    }
}

bool SXMPFiles::GetFileInfo(XMP_FileFormat* format, XMP_OptionBits* handlerFlags) {
    XmpFileType foundFormat = XMP_FT_UNKNOWN;
    XmpFileFormatOptions foundFlags{};
    const bool isOpen = CallToolkit("cannot ask for the file's format", [&] {
        return xmp_files_get_file_info(Handle(mObject), nullptr, nullptr, &foundFormat, &foundFlags);
    });
    if (isOpen && format != nullptr) {
        *format = NumberOf(foundFormat);
    }
    if (isOpen && handlerFlags != nullptr) {
        *handlerFlags = NumberOf(foundFlags);
    }
    return isOpen;
}

bool SXMPFiles::GetXMP(SXMPMeta* xmp) {
    SXMPMeta found;
    const bool hasXMP = CallToolkit("cannot read the file's metadata", [&] {
        return xmp_files_get_xmp(Handle(mObject), static_cast<XmpPtr>(found.mObject));
    });
    if (hasXMP && xmp != nullptr) {
        *xmp = std::move(found);
    }
    return hasXMP;
}

bool SXMPFiles::CanPutXMP(const SXMPMeta& xmp) {
    return CallToolkit("cannot ask for the file's abilities",
                       [&] { return xmp_files_can_put_xmp(Handle(mObject), static_cast<XmpPtr>(xmp.mObject)); });
}

void SXMPFiles::PutXMP(const SXMPMeta& xmp) {
    CallToolkit("cannot put the metadata into the file",
                [&] { return xmp_files_put_xmp(Handle(mObject), static_cast<XmpPtr>(xmp.mObject)); });
}

void SXMPFiles::CloseFile() {
    CallToolkit("cannot write the file", [&] { return xmp_files_close(Handle(mObject), XMP_CLOSE_NOOPTION); });
}
