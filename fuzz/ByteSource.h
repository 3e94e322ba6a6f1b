#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// Takes the fuzzer's bytes apart into choices, front to back; when none are left, every choice is the first.
class ByteSource {
public:
    ByteSource(const std::uint8_t* data, std::size_t size) : mData(data), mSize(size) {}

    bool IsEmpty() const { return mSize == 0; }

    /// A number below `bound`, which is at most 256.
    std::size_t Below(std::size_t bound) {
        if (mSize == 0) {
            return 0;
        }
        --mSize;
        return *mData++ % bound;
    }

    template <typename Item, std::size_t Count>
    const Item& OneOf(const Item (&items)[Count]) {
        return items[Below(Count)];
    }

    /// Up to `limit` UTF-16 code units, of any value.
    std::u16string Units(std::size_t limit) {
        std::u16string units(std::min(Below(limit + 1), mSize / 2), u'\0');
        for (char16_t& unit : units) {
            const std::size_t high = Below(256);
            unit = static_cast<char16_t>(high << 8 | Below(256));
        }
        return units;
    }

private:
    const std::uint8_t* mData;
    std::size_t mSize;
};

} // namespace fuzz
