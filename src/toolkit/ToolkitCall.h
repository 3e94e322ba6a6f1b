#pragma once

#include <cstdint>
#include <string>

#include <exempi/xmp.h>

#include <zonstoryparser/XMPToolkit.h>

#include "toolkit/ToolkitRun.h"
#include "toolkit/ToolkitSilence.h"

namespace zonstoryparser {

/// The error that the toolkit's last call on this thread ended with, as its positive id; 0 for none.
std::int32_t LastToolkitError();

/// Throws the error `id` that `operation` ended with.
/// @param subject  What it was about, such as a property; may be empty.
[[noreturn]] void ThrowToolkitError(std::int32_t id, const char* operation, const std::string& subject);

/// "property 'scene' of 'http://…/'", for a message. Null is shown as an empty text.
std::string PropertySubject(const char* schemaNS, const char* name);

/// Runs a call of the toolkit's C interface in silence, and returns its result. The C interface answers false (or null)
/// both for "no" and for an error; the two are told apart here.
/// @param call     Returns bool or a pointer.
/// @param subject  Returns the subject of the message; called only when there is one to make.
/// @throws XMP_Error when the call ended with an error, or the toolkit does not run.
template <typename Call, typename Subject>
auto CallToolkit(const char* operation, Call call, Subject subject) {
    if (!IsToolkitRunning()) {
        ThrowToolkitError(kXMPErr_Unavailable, operation, subject());
    }
    auto result = [&call] {
        const ToolkitSilence silence;
        return call();
    }();
    if (!result) {
        if (const std::int32_t id = LastToolkitError(); id != 0) {
            ThrowToolkitError(id, operation, subject());
        }
    }
    return result;
}

template <typename Call>
auto CallToolkit(const char* operation, Call call) {
    return CallToolkit(operation, call, [] { return std::string(); });
}

} // namespace zonstoryparser
