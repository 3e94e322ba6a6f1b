#include "source/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

#include <zonscreenplay/ReadError.h>

namespace zonscreenplay {

namespace {

constexpr std::size_t kHead = 256;

} // namespace

ByteSource::ByteSource(Read read) : mRead(std::move(read)), mHead(kHead, '\0') {
    std::size_t filled = 0;
    for (std::size_t count = 1; count > 0 && filled < kHead; filled += count) {
        count = mRead(mHead.data() + filled, kHead - filled);
    }
    mHead.resize(filled);
}

std::size_t ByteSource::Next(char* buffer, std::size_t size) {
    if (mTaken == mHead.size()) {
        return mRead(buffer, size);
    }
    const std::size_t count = mHead.copy(buffer, size, mTaken);
    mTaken += count;
    return count;
}

ByteSource::Read ReadDescriptor(int descriptor, std::string name) {
    return [descriptor, name = std::move(name)](char* buffer, std::size_t size) {
        ssize_t count = 0;
        do {
            count = read(descriptor, buffer, size);
        } while (count < 0 && errno == EINTR);
        if (count < 0) {
            throw ReadError(name, {}, std::generic_category().message(errno));
        }
        return static_cast<std::size_t>(count);
    };
}

ByteSource::Read ReadMemory(std::string_view bytes) {
    return [bytes](char* buffer, std::size_t size) mutable {
        const std::size_t count = bytes.copy(buffer, size);
        bytes.remove_prefix(count);
        return count;
    };
}

} // namespace zonscreenplay
