#pragma once

#include <memory>
#include <new>
#include <string>

#include <exempi/xmp.h>

namespace zonstoryparser {

/// A string that the toolkit fills.
class ToolkitString {
public:
    ToolkitString() : mString(xmp_string_new(), &xmp_string_free) {
        if (!mString) {
            throw std::bad_alloc();
        }
    }

    XmpStringPtr Get() const { return mString.get(); }

    void AssignTo(std::string& text) const { text.assign(xmp_string_cstr(Get()), xmp_string_len(Get())); }

private:
    std::unique_ptr<_XmpString, void (*)(XmpStringPtr)> mString;
};

} // namespace zonstoryparser
