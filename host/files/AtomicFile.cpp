#include "files/AtomicFile.h"

#include <cstdlib>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/FileDescriptor.h"
#include "files/FileError.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace fs = std::filesystem;

namespace {

constexpr const char* kAttempt = "cannot be written";

// What the file's permissions are, or what a new file's would be.
mode_t Permissions(const fs::path& path) {
    struct stat info = {};
    if (::stat(path.c_str(), &info) == 0) {
        return info.st_mode & 07777;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

void Fill(FileDescriptor& file, mode_t permissions, std::string_view bytes) {
    WriteAll(file, bytes);
    if (::fchmod(file.Get(), permissions) != 0 || ::fsync(file.Get()) != 0 || !file.Close()) {
        ThrowSystemError(kAttempt);
    }
}

void ReplaceFile(const fs::path& path, std::string_view bytes) {
    std::string temporary = (path.parent_path() / ".zonstory-output-XXXXXX").string();
    FileDescriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.IsOpen()) {
        ThrowSystemError(kAttempt);
    }
    try {
        Fill(file, Permissions(path), bytes);
        if (::rename(temporary.c_str(), path.c_str()) != 0) {
            ThrowSystemError(kAttempt);
        }
    } catch (const FileError&) {
        ::unlink(temporary.c_str());
        throw;
    }
}

void WriteInPlace(const fs::path& path, std::string_view bytes) {
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (!file.IsOpen()) {
        ThrowSystemError(kAttempt);
    }
    WriteAll(file, bytes);
    if (!file.Close()) {
        ThrowSystemError(kAttempt);
    }
}

} // namespace

void WriteFileAtomically(const fs::path& path, std::string_view bytes) try {
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        return WriteInPlace(path, bytes); // of a folder, this fails and says so
    }
    const fs::path resolved = fs::weakly_canonical(path, ignored);
    ReplaceFile(ignored ? path : resolved, bytes);
} catch (const FileError& error) {
    throw OutputError(path.string() + ": " + error.what());
}

} // namespace zonstory
