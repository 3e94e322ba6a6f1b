#include "output/AtomicFile.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zonstory {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Fail(const fs::path& path) {
    throw OutputError(path.string() + ": " + std::generic_category().message(errno));
}

class Descriptor {
public:
    explicit Descriptor(int number) : mNumber(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    int Number() const { return mNumber; }
    bool Close() {
        const int number = mNumber;
        mNumber = -1;
        return number < 0 || close(number) == 0;
    }

private:
    int mNumber;
};

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

// What the file's permissions are, or what a new file's would be.
mode_t Permissions(const fs::path& path) {
    struct stat info = {};
    if (stat(path.c_str(), &info) == 0) {
        return info.st_mode & 07777;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

bool FillAndRename(Descriptor& file, const std::string& temporary, const fs::path& path, std::string_view bytes) {
    return fchmod(file.Number(), Permissions(path)) == 0 && WriteAll(file.Number(), bytes) &&
           fsync(file.Number()) == 0 && file.Close() && rename(temporary.c_str(), path.c_str()) == 0;
}

void ReplaceFile(const fs::path& path, std::string_view bytes) {
    std::string temporary = (path.parent_path() / ".zonstory-output-XXXXXX").string();
    Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (file.Number() < 0) {
        Fail(path);
    }
    if (!FillAndRename(file, temporary, path, bytes)) {
        const int reason = errno;
        unlink(temporary.c_str());
        errno = reason;
        Fail(path);
    }
}

void WriteInPlace(const fs::path& path, std::string_view bytes) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (file.Number() < 0 || !WriteAll(file.Number(), bytes) || !file.Close()) {
        Fail(path);
    }
}

} // namespace

void WriteFileAtomically(const fs::path& path, std::string_view bytes) {
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        return WriteInPlace(path, bytes); // of a folder, this fails and says so
    }
    const fs::path resolved = fs::weakly_canonical(path, ignored);
    ReplaceFile(ignored ? path : resolved, bytes);
}

} // namespace zonstory
