#include "files/ReadFile.h"

#include <fcntl.h>
#include <unistd.h>

#include "files/FileError.h"
#include "files/SystemError.h"

namespace zonstory {

namespace {

std::size_t ReadPiece(const FileDescriptor& file, char* bytes, std::size_t size) {
    ssize_t got = -1;
    do {
        got = ::read(file.Get(), bytes, size);
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
        throw FileError(SystemErrorText());
    }
    return static_cast<std::size_t>(got);
}

} // namespace

FileDescriptor OpenToRead(const std::string& path) {
    FileDescriptor file(path == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                    : ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!file.IsOpen()) {
        throw FileError(SystemErrorText());
    }
    return file;
}

std::string ReadAll(const FileDescriptor& file) {
    constexpr std::size_t kPiece = std::size_t{64} * 1024;
    std::string bytes;
    for (std::size_t got = 1; got > 0;) {
        const std::size_t size = bytes.size();
        bytes.resize(size + std::max(kPiece, size)); // twice as much each time: linear in the file
        got = ReadPiece(file, bytes.data() + size, bytes.size() - size);
        bytes.resize(size + got);
    }
    return bytes;
}

std::string ReadFile(const std::string& path) {
    return ReadAll(OpenToRead(path));
}

} // namespace zonstory
