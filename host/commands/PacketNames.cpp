#include "commands/PacketNames.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr std::size_t kMaxLength = 100; // in bytes, well under what any file system takes

bool IsSafe(char byte) {
    const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    const bool isDigit = byte >= '0' && byte <= '9';
    return isLetter || isDigit || byte == '-' || byte == '_' || byte == '.' || static_cast<unsigned char>(byte) >= 0x80;
}

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

std::string Safe(std::string number) {
    std::replace_if(
        number.begin(), number.end(), [](char byte) { return !IsSafe(byte); }, '-');
    if (number.size() > kMaxLength) {
        std::size_t end = kMaxLength;
        while (end > 0 && IsContinuation(number[end])) {
            --end;
        }
        number.resize(end);
    }
    return number;
}

} // namespace

std::string PacketNames::NameFor(const std::string& number) {
    const std::string stem = "scene-" + Safe(number);
    std::string name = stem + ".xmp";
    for (int copy = 2; !mTaken.insert(LowerCase(name)).second; ++copy) {
        name = fmt::format("{}_{}.xmp", stem, copy);
    }
    return name;
}

} // namespace zonstory
