#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "journal/JournalEntry.h"
#include "journal/JournalFile.h"
#include "journal/JournalPlace.h"

namespace zonstory {

/// Records one run as it goes on. May be used by many threads at once.
class JournalWriter {
public:
    /// Records that the run begins, down to the disk: a journal that cannot be written or is full is known before anything
    /// is done.
    /// @param facts  The verb and its story; the rest is found out.
    /// @throws JournalError
    JournalWriter(const JournalPlace& place, RunFacts facts);
    JournalWriter(const JournalWriter&) = delete;
    JournalWriter& operator=(const JournalWriter&) = delete;
    ~JournalWriter();

    /// Records that the run ends, down to the disk. A file of its own goes where nothing was to be changed.
    /// @throws JournalError when that fails; all that was announced is recorded nevertheless.
    void Finish();

    const std::string& RunId() const { return mRun.id; }

    /// A change on its way, for whoever carries it out.
    struct Announced {
        std::uint64_t number = 0; ///< In the run.
        std::uint64_t line = 0;
    };

    /// Records a change that will be made. It is on the disk after Confirm().
    /// @param change  Its number and its time are set, and its names made what the journal has.
    /// @throws FileError "cannot be recorded in the journal: No space left on device", as the next.
    Announced Announce(ChangeFacts change);
    void Confirm(const Announced& change);
    /// What became of it. Never fails: where it is missing, the file itself tells.
    void Settle(const Announced& change, bool isDone) noexcept;
    /// Records that a change needs not to be taken back any more, since its file has its earlier bytes.
    void FoundAsBefore(const ChangeKey& change) noexcept;

private:
    std::uint64_t Append(JournalEntry entry);
    void AppendIfPossible(JournalEntry::Kind kind, std::uint64_t number, const ChangeKey* undoes) noexcept;
    std::string NameOf(const std::string& file) const;

    std::filesystem::path mPath;
    std::filesystem::path
        mFolder;               ///< From which on files are named that lie beneath it; empty where all names are whole.
    bool mIsOfThisRun = false; ///< The file.
    RunFacts mRun;
    std::unique_ptr<JournalFile> mFile;
    std::atomic<std::uint64_t> mChanges = 0;
    std::atomic<bool> mIsUsed = false;
};

} // namespace zonstory
