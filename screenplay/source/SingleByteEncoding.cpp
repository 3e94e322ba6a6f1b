#include "source/SingleByteEncoding.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>

#include <iconv.h>

namespace zonscreenplay {

namespace {

struct CloseConverter {
    void operator()(void* converter) const { iconv_close(converter); }
};
using Converter = std::unique_ptr<void, CloseConverter>;

// A name may not select anything but an encoding: a slash would add options of the converter's own.
bool IsEncodingName(const std::string& name) {
    return !name.empty() && name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                                   "0123456789._-") == std::string::npos;
}

Converter OpenConverter(const std::string& name) {
    void* const converter = iconv_open("UCS-4LE", name.c_str());
    const bool isOpen = reinterpret_cast<std::intptr_t>(converter) != -1; // iconv_open's own mark
    return Converter(isOpen ? converter : nullptr);
}

// Assigns the code point of one byte; returns false when the byte only begins a character.
bool Decode(const Converter& converter, unsigned char byte, int& codePoint) {
    iconv(converter.get(), nullptr, nullptr, nullptr, nullptr);
    char input = static_cast<char>(byte);
    char* in = &input;
    std::size_t inLeft = 1;
    unsigned char output[8] = {};
    char* out = reinterpret_cast<char*>(output);
    std::size_t outLeft = sizeof output;
    const std::size_t result = iconv(converter.get(), &in, &inLeft, &out, &outLeft);
    if (result == static_cast<std::size_t>(-1)) {
        codePoint = -1;
        return errno == EILSEQ;
    }
    codePoint = outLeft == 4 ? output[0] | output[1] << 8 | output[2] << 16 : -1;
    return outLeft == 4;
}

} // namespace

std::optional<SingleByteTable> FindSingleByteEncoding(const std::string& name) {
    if (!IsEncodingName(name)) {
        return std::nullopt;
    }
    const Converter converter = OpenConverter(name);
    if (!converter) {
        return std::nullopt;
    }
    SingleByteTable table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        if (!Decode(converter, static_cast<unsigned char>(byte), table[byte])) {
            return std::nullopt;
        }
    }
    return table;
}

} // namespace zonscreenplay
