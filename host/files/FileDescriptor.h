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
    ~FileDescriptor() {
        if (IsOpen()) {
            ::close(mDescriptor);
        }
    }

    bool IsOpen() const { return mDescriptor >= 0; }
    int Get() const { return mDescriptor; }

private:
    int mDescriptor = -1;
};

} // namespace zonstory
