#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace zonscreenplay {

/// The bytes of a file or of memory, read once from front to back, with a look at the first of them.
class ByteSource {
public:
    /// Fills a buffer and returns how many bytes came, 0 at the end; may throw.
    using Read = std::function<std::size_t(char* buffer, std::size_t size)>;

    explicit ByteSource(Read read);

    /// The first bytes, 256 unless there are fewer; Next() gives them again.
    std::string_view Head() const { return mHead; }
    /// @return How many bytes came, 0 at the end.
    std::size_t Next(char* buffer, std::size_t size);

private:
    Read mRead;
    std::string mHead;
    std::size_t mTaken = 0; // of the head
};

/// Reads an open file, which stays open.
/// @param name  Of the file, for the error.
/// The reading throws ReadError when the system refuses.
ByteSource::Read ReadDescriptor(int descriptor, std::string name);

/// Reads memory, which must outlive the reading.
ByteSource::Read ReadMemory(std::string_view bytes);

} // namespace zonscreenplay
