#pragma once

#include <cstddef>
#include <string_view>

namespace bench {

struct EventCounts {
    std::size_t elements = 0;
    std::size_t attributes = 0;
    std::size_t units = 0; ///< Of character data.
};

/// The floor under reading a story: the XML parser's UTF-16 build with handlers that only count.
EventCounts CountEvents(std::string_view story);

} // namespace bench
