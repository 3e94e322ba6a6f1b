#pragma once

#include <string>

namespace support {

/// What the exception says that leaves a call; empty where none of this type does.
template <typename Error, typename Call>
std::string MessageOf(Call call) {
    try {
        call();
    } catch (const Error& error) {
        return error.what();
    }
    return {};
}

} // namespace support
