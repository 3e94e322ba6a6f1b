#include "journal/Base64.h"

#include <cstdint>

#include <nettle/base64.h>

namespace zonstory {

std::string ToBase64(std::string_view bytes) {
    std::string text(BASE64_ENCODE_RAW_LENGTH(bytes.size()), '\0');
    base64_encode_raw(text.data(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    return text;
}

std::optional<std::string> FromBase64(std::string_view text) {
    std::string bytes(BASE64_DECODE_LENGTH(text.size()), '\0');
    std::size_t size = bytes.size();
    base64_decode_ctx context{};
    base64_decode_init(&context);
    if (base64_decode_update(&context, &size, reinterpret_cast<std::uint8_t*>(bytes.data()), text.size(),
                             text.data()) == 0 ||
        base64_decode_final(&context) == 0) {
        return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

} // namespace zonstory
