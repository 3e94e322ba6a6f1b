#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "files/FileDescriptor.h"

namespace zonstory {

/// A file that lines are added to, by many threads and by other programs at the same time. Its lines reach the disk
/// together: those that are added while a flush is under way share the next one, and a thread of its own begins it at once,
/// so that whoever waits for a line waits for little.
class JournalFile {
public:
    /// Opens a file, or makes it.
    /// @param isPrivate  Made so that only its owner can read it.
    /// @throws FileError
    JournalFile(const std::filesystem::path& path, bool isPrivate);
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;
    ~JournalFile();

    /// Adds a line, whole or not at all; begins a new one where a run that was killed left half of one.
    /// @param line  With its end.
    /// @return Its number, for AwaitFlush().
    /// @throws FileError
    std::uint64_t Append(std::string_view line);
    /// Has it flushed soon, together with others.
    void BeginFlush(std::uint64_t line);
    /// Until the line is on the disk, and those before it.
    /// @throws FileError, from the first flush that failed on: what the system then has in memory, it no longer knows.
    void AwaitFlush(std::uint64_t line);

private:
    void AppendLocked(std::string_view line);
    void Flush(std::unique_lock<std::mutex>& lock);
    void FlushInBackground(const std::stop_token& stop);

    FileDescriptor mFile;
    std::mutex mAppending;
    std::uint64_t mEnd = 0; ///< Where the last line ended that was added by this.
    std::mutex mMutex;      ///< Of all below.
    std::condition_variable_any mChanged;
    std::uint64_t mAdded = 0; ///< How many lines, as the next.
    std::uint64_t mWanted = 0;
    std::uint64_t mFlushed = 0;
    bool mIsFlushing = false;
    std::optional<int> mError;
    std::jthread mFlusher; ///< None where the system gives no thread; then those who wait flush.
};

} // namespace zonstory
