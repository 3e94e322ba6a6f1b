#include "journal/JournalFile.h"

#include <algorithm>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/FileError.h"
#include "files/FileSize.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

constexpr mode_t kPrivate = 0600;
constexpr mode_t kOrdinary = 0666; // less what the user's mask takes away

/// Keeps other programs from adding at the same time, where the file system can; elsewhere each line is one write.
class AddingLock {
public:
    explicit AddingLock(const FileDescriptor& file) : mFile(file) {
        while (::flock(mFile.Get(), LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    AddingLock(const AddingLock&) = delete;
    AddingLock& operator=(const AddingLock&) = delete;
    ~AddingLock() { ::flock(mFile.Get(), LOCK_UN); }

private:
    const FileDescriptor& mFile;
};

bool EndsInsideLine(const FileDescriptor& file, std::uint64_t size) {
    char last = '\n';
    return size > 0 && ::pread(file.Get(), &last, 1, static_cast<off_t>(size - 1)) == 1 && last != '\n';
}

// Some file systems cannot, and answer that the file is none to be flushed; a name there is as safe as it gets.
void FlushFolder(const std::filesystem::path& folder) {
    const FileDescriptor descriptor(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.IsOpen() && ::fsync(descriptor.Get()) != 0 && (errno == EIO || errno == ENOSPC)) {
        ThrowSystemError("cannot be written to the disk");
    }
}

} // namespace

JournalFile::JournalFile(const std::filesystem::path& path, bool isPrivate)
    : mFile(::open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                   isPrivate ? kPrivate : kOrdinary)) {
    if (!mFile.IsOpen()) {
        ThrowSystemError("cannot be written");
    }
    struct stat status {};
    if (::fstat(mFile.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        throw FileError("is not a regular file");
    }
    FlushFolder(path.parent_path());
    try {
        mFlusher = std::jthread([this](const std::stop_token& stop) { FlushInBackground(stop); });
    } catch (const std::system_error&) { // those who wait will do it
    }
}

JournalFile::~JournalFile() = default; // the thread ends first, being the last member

std::uint64_t JournalFile::Append(std::string_view line) {
    const std::lock_guard adding(mAppending);
    AppendLocked(line);
    const std::lock_guard lock(mMutex);
    return ++mAdded;
}

void JournalFile::AppendLocked(std::string_view line) {
    const AddingLock others(mFile);
    const std::uint64_t size = FileSize(mFile);
    std::string whole;
    if (size != mEnd && EndsInsideLine(mFile, size)) {
        whole = '\n';
        whole += line;
        line = whole;
    }
    try {
        WriteAll(mFile, line);
    } catch (const FileError&) {
        [[maybe_unused]] const int ignored = ::ftruncate(mFile.Get(), static_cast<off_t>(size));
        throw;
    }
    mEnd = size + line.size();
}

void JournalFile::BeginFlush(std::uint64_t line) {
    const std::lock_guard lock(mMutex);
    mWanted = std::max(mWanted, line);
    mChanged.notify_all();
}

void JournalFile::AwaitFlush(std::uint64_t line) {
    std::unique_lock lock(mMutex);
    while (mFlushed < line) {
        if (mError) {
            ThrowSystemError("cannot be written to the disk", *mError);
        }
        if (mIsFlushing) {
            mChanged.wait(lock);
        } else {
            Flush(lock);
        }
    }
}

void JournalFile::Flush(std::unique_lock<std::mutex>& lock) {
    const std::uint64_t added = mAdded;
    mIsFlushing = true;
    lock.unlock();
    const int error = ::fdatasync(mFile.Get()) == 0 ? 0 : errno;
    lock.lock();
    mIsFlushing = false;
    if (error == 0) {
        mFlushed = added;
    } else if (!mError) {
        mError = error;
    }
    mChanged.notify_all();
}

void JournalFile::FlushInBackground(const std::stop_token& stop) {
    std::unique_lock lock(mMutex);
    while (mChanged.wait(lock, stop, [&] { return mWanted > mFlushed && !mIsFlushing && !mError; })) {
        Flush(lock);
    }
}

} // namespace zonstory
