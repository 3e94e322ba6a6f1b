#include "clip/ByteReader.h"

#include <unistd.h>

#include "clip/Clip.h"
#include "clip/SystemError.h"

namespace zonstory {

namespace {

template <typename Number, bool kBigEnd>
Number ReadNumber(const ByteReader& reader, std::uint64_t offset) {
    unsigned char bytes[sizeof(Number)];
    reader.Read(offset, bytes, sizeof bytes);
    Number number = 0;
    for (std::size_t index = 0; index < sizeof bytes; ++index) {
        number = static_cast<Number>(number << 8 | bytes[kBigEnd ? index : sizeof bytes - 1 - index]);
    }
    return number;
}

} // namespace

void ByteReader::Read(std::uint64_t offset, void* bytes, std::size_t count) const {
    auto* to = static_cast<std::byte*>(bytes);
    while (count > 0) {
        const ssize_t got = ::pread(mFile.Get(), to, count, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            ThrowSystemError("cannot be read");
        }
        if (got == 0) {
            throw ClipError("is damaged: it ends too early");
        }
        to += got;
        offset += static_cast<std::uint64_t>(got);
        count -= static_cast<std::size_t>(got);
    }
}

std::uint32_t ByteReader::Big32(std::uint64_t offset) const {
    return ReadNumber<std::uint32_t, true>(*this, offset);
}

std::uint64_t ByteReader::Big64(std::uint64_t offset) const {
    return ReadNumber<std::uint64_t, true>(*this, offset);
}

std::uint32_t ByteReader::Little32(std::uint64_t offset) const {
    return ReadNumber<std::uint32_t, false>(*this, offset);
}

std::uint64_t ByteReader::Little64(std::uint64_t offset) const {
    return ReadNumber<std::uint64_t, false>(*this, offset);
}

} // namespace zonstory
