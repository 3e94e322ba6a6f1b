#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zonscreenplay {

/// A scene's length as FDX writes it: on the page, or in time.
struct FdxLength {
    std::size_t eighths = 0; ///< Of a page; 0 when it says none, or is none.
    std::string duration;    ///< "h:m:s" as written; empty when it is none.
};

/// @param text  Such as "3/8", "1 2/8", "2" or "0:01:30".
FdxLength ReadLength(std::string_view text);

} // namespace zonscreenplay
