// Preloaded into a program under test. Counts its calls on files, names them in a log, and lets one of them fail
// or be the program's last moment.
//
//     FAULT_LOG=file    one line for each call, in order: its name and what it was given
//     FAULT_AT=n        the call, counted from 1, that does not happen
//     FAULT_ERROR=n     what errno says of it; 0 kills the program before it, -1 stops it until it is told to go on
//     FAULT_NO_LOCKS=1  locks are given to everybody
//
// Works wherever programs can be preloaded, also where tracing other processes is forbidden.
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

long Setting(const char* name, long otherwise) {
    const char* const text = ::getenv(name);
    return text != nullptr ? std::atol(text) : otherwise;
}

// Written by bare system calls, so that the log does not count itself.
void Log(const char* call, const char* subject) {
    static const char* const path = ::getenv("FAULT_LOG");
    if (path == nullptr) {
        return;
    }
    static const long log = ::syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    char line[512];
    const int length = std::snprintf(line, sizeof line, "%s %s\n", call, subject);
    ::syscall(SYS_write, log, line, static_cast<size_t>(length));
}

void NameOfDescriptor(int descriptor, char (&name)[256]) {
    char link[64];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = ::readlink(link, name, sizeof name - 1);
    name[length > 0 ? length : 0] = '\0';
}

// Whether the call is to fail.
bool Counts(const char* call, const char* subject) {
    static long count = 0;
    static const long at = Setting("FAULT_AT", 0);
    static const long error = Setting("FAULT_ERROR", 0);
    Log(call, subject);
    if (++count != at) {
        return false;
    }
    if (error <= 0) {
        ::kill(::getpid(), error == 0 ? SIGKILL : SIGSTOP);
    }
    if (error < 0) {
        return false;
    }
    errno = static_cast<int>(error);
    return true;
}

// A call on a terminal, a pipe or the log of a test is no change of a file.
bool Counts(const char* call, int descriptor) {
    const int before = errno;
    struct stat status {};
    char name[256];
    if (::fstat(descriptor, &status) != 0 || (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))) {
        errno = before;
        return false;
    }
    NameOfDescriptor(descriptor, name);
    errno = before;
    return Counts(call, name);
}

template <typename Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool MakesFiles(int flags) {
    return (flags & O_CREAT) != 0 || (flags & O_TRUNC) != 0;
}

} // namespace

#define FORWARD(name, ...)                                                                                             \
    static auto* const next = Next<decltype(::name)>(#name);                                                           \
    return next(__VA_ARGS__)

#define FAILABLE(type, name, subject, parameters, ...)                                                                 \
    extern "C" type name parameters {                                                                                  \
        if (Counts(#name, subject)) {                                                                                  \
            return -1;                                                                                                 \
        }                                                                                                              \
        FORWARD(name, __VA_ARGS__);                                                                                    \
    }

#define FAILABLE_OPENING(name, parameters, ...)                                                                        \
    extern "C" int name parameters {                                                                                   \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;                                         \
        va_end(rest);                                                                                                  \
        if (MakesFiles(flags) && Counts(#name, path)) {                                                                \
            return -1;                                                                                                 \
        }                                                                                                              \
        FORWARD(name, __VA_ARGS__, flags, mode);                                                                       \
    }

// NOLINTBEGIN: the system's own declarations
// clang-format off
FAILABLE_OPENING(open, (const char* path, int flags, ...), path)
FAILABLE_OPENING(open64, (const char* path, int flags, ...), path)
FAILABLE_OPENING(openat, (int folder, const char* path, int flags, ...), folder, path)
FAILABLE_OPENING(openat64, (int folder, const char* path, int flags, ...), folder, path)
FAILABLE(int, creat, path, (const char* path, mode_t mode), path, mode)
FAILABLE(int, mkdir, path, (const char* path, mode_t mode) noexcept, path, mode)
FAILABLE(int, mkdirat, path, (int folder, const char* path, mode_t mode) noexcept, folder, path, mode)
FAILABLE(int, rmdir, path, (const char* path) noexcept, path)
FAILABLE(int, unlink, path, (const char* path) noexcept, path)
FAILABLE(int, unlinkat, path, (int folder, const char* path, int flags) noexcept, folder, path, flags)
FAILABLE(int, rename, to, (const char* from, const char* to) noexcept, from, to)
FAILABLE(int, renameat, to, (int a, const char* from, int b, const char* to) noexcept, a, from, b, to)
FAILABLE(int, renameat2, to, (int a, const char* from, int b, const char* to, unsigned flags) noexcept, a, from, b, to, flags)
FAILABLE(int, link, to, (const char* from, const char* to) noexcept, from, to)
FAILABLE(int, symlink, to, (const char* from, const char* to) noexcept, from, to)
FAILABLE(int, truncate, path, (const char* path, off_t size) noexcept, path, size)
FAILABLE(int, chmod, path, (const char* path, mode_t mode) noexcept, path, mode)
FAILABLE(int, fchmodat, path, (int folder, const char* path, mode_t mode, int flags) noexcept, folder, path, mode, flags)
FAILABLE(ssize_t, write, file, (int file, const void* bytes, size_t count), file, bytes, count)
FAILABLE(ssize_t, pwrite, file, (int file, const void* bytes, size_t count, off_t at), file, bytes, count, at)
FAILABLE(ssize_t, pwrite64, file, (int file, const void* bytes, size_t count, off64_t at), file, bytes, count, at)
FAILABLE(ssize_t, copy_file_range, to, (int from, off64_t* fromAt, int to, off64_t* toAt, size_t count, unsigned flags), from, fromAt, to, toAt, count, flags)
FAILABLE(int, ftruncate, file, (int file, off_t size) noexcept, file, size)
FAILABLE(int, ftruncate64, file, (int file, off64_t size) noexcept, file, size)
FAILABLE(ssize_t, pread, file, (int file, void* bytes, size_t count, off_t at), file, bytes, count, at)
FAILABLE(ssize_t, pread64, file, (int file, void* bytes, size_t count, off64_t at), file, bytes, count, at)
FAILABLE(off_t, lseek, file, (int file, off_t at, int whence) noexcept, file, at, whence)
FAILABLE(off64_t, lseek64, file, (int file, off64_t at, int whence) noexcept, file, at, whence)
FAILABLE(ssize_t, fgetxattr, file, (int file, const char* name, void* value, size_t size) noexcept, file, name, value, size)
FAILABLE(ssize_t, flistxattr, file, (int file, char* names, size_t size) noexcept, file, names, size)
FAILABLE(int, fremovexattr, file, (int file, const char* name) noexcept, file, name)
FAILABLE(int, fsync, file, (int file), file)
FAILABLE(int, fdatasync, file, (int file), file)
FAILABLE(int, sync_file_range, file, (int file, off64_t at, off64_t count, unsigned flags), file, at, count, flags)
FAILABLE(int, fchmod, file, (int file, mode_t mode) noexcept, file, mode)
FAILABLE(int, fchown, file, (int file, uid_t user, gid_t group) noexcept, file, user, group)
FAILABLE(int, fsetxattr, file, (int file, const char* name, const void* value, size_t size, int flags) noexcept, file, name, value, size, flags)
FAILABLE(int, futimens, file, (int file, const struct timespec times[2]) noexcept, file, times)
// clang-format on

extern "C" int flock(int file, int operation) noexcept {
    if (Counts("flock", file)) {
        return -1;
    }
    static const long without = Setting("FAULT_NO_LOCKS", 0);
    if (without != 0) {
        return 0;
    }
    FORWARD(flock, file, operation);
}

// The file is closed all the same, as the system does it.
extern "C" int close(int file) {
    const bool fails = Counts("close", file);
    const int error = errno;
    static auto* const next = Next<decltype(::close)>("close");
    const int result = next(file);
    if (fails) {
        errno = error;
    }
    return fails ? -1 : result;
}

extern "C" int ioctl(int file, unsigned long request, ...) noexcept {
    va_list rest;
    va_start(rest, request);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    if (Counts("ioctl", file)) {
        return -1;
    }
    FORWARD(ioctl, file, request, argument);
}
// NOLINTEND
