#include "files/WriteAll.h"

#include <unistd.h>

#include "files/SystemError.h"

namespace zonstory {

namespace {

template <typename Write>
void Repeat(std::string_view bytes, Write write) {
    while (!bytes.empty()) {
        const ssize_t written = write(bytes);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            ThrowSystemError("cannot be written", written == 0 ? ENOSPC : errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

void WriteAll(const FileDescriptor& to, std::string_view bytes) {
    Repeat(bytes, [&](std::string_view rest) { return ::write(to.Get(), rest.data(), rest.size()); });
}

void WriteAllAt(const FileDescriptor& to, std::string_view bytes, std::uint64_t offset) {
    const std::size_t all = bytes.size();
    Repeat(bytes, [&](std::string_view rest) {
        return ::pwrite(to.Get(), rest.data(), rest.size(), static_cast<off_t>(offset + all - rest.size()));
    });
}

} // namespace zonstory
