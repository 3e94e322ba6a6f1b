#pragma once

#include <utility>

#include <unistd.h>

namespace zonstory {

/// An open file or folder, closed at the end.
class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes over an open descriptor; -1 stands for none.
    explicit FileDescriptor(int descriptor) : mDescriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : mDescriptor(std::exchange(other.mDescriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(mDescriptor, other.mDescriptor);
        return *this;
    }
    ~FileDescriptor() { Close(); }

    /// Closes it now; without one, does nothing.
    /// @return false, with errno set, when what was written may be lost: a network file system says so here first.
    bool Close() {
        const int descriptor = std::exchange(mDescriptor, -1);
        return descriptor < 0 || ::close(descriptor) == 0;
    }

    bool IsOpen() const { return mDescriptor >= 0; }
    int Get() const { return mDescriptor; }

private:
    int mDescriptor = -1;
};

} // namespace zonstory
