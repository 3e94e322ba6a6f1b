#include <utility>

#include <zonstoryparser/XMPToolkit.h>

XMP_Error::XMP_Error(std::int32_t id, std::string message)
    : mID(id), mMessage(std::make_shared<const std::string>(std::move(message))) {}

XMP_Error::XMP_Error(const XMP_Error&) noexcept = default;
XMP_Error& XMP_Error::operator=(const XMP_Error&) noexcept = default;
XMP_Error::~XMP_Error() = default;

std::int32_t XMP_Error::GetID() const noexcept {
    return mID;
}

const char* XMP_Error::GetErrMsg() const noexcept {
    return mMessage->c_str();
}

const char* XMP_Error::what() const noexcept {
    return mMessage->c_str();
}
