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
    if (!isOpen) { // no such file, in all cases seen: refused without an error of its own
        zonstoryparser::ThrowToolkitError(kXMPErr_ExternalFailure, kOperation, subject());
    }
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
