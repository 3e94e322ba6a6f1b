#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace fuzz {

/// Takes the fuzzer's bytes apart into choices, front to back; when none are left, every choice is the first.
class ByteSource {
public:
    explicit ByteSource(std::string_view bytes) : mBytes(bytes) {}

    bool IsEmpty() const { return mBytes.empty(); }

    /// A number below `bound`, which is at most 256.
    std::size_t Below(std::size_t bound) {
        if (IsEmpty()) {
            return 0;
        }
        const auto byte = static_cast<unsigned char>(mBytes.front());
        mBytes.remove_prefix(1);
        return byte % bound;
    }

    template <typename Item, std::size_t Count>
    const Item& OneOf(const Item (&items)[Count]) {
        return items[Below(Count)];
    }

    /// Up to `limit` UTF-16 code units, of any value.
    std::u16string Units(std::size_t limit) {
        std::u16string units(std::min(Below(limit + 1), mBytes.size() / 2), u'\0');
        for (char16_t& unit : units) {
            const std::size_t high = Below(256);
            unit = static_cast<char16_t>(high << 8 | Below(256));
        }
        return units;
    }

private:
    std::string_view mBytes;
};

} // namespace fuzz
