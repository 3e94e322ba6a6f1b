#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "journal/JournalEntry.h"
#include "journal/JournalPlace.h"

namespace zonstory {

/// What became of a change.
enum class ChangeState {
    Made,
    NotMade,
    Unknown, ///< The run was killed in this very moment, or its disk failed; the file has to be asked.
    Undone
};

/// A change as a journal tells of it.
struct RecordedChange {
    ChangeFacts facts; ///< Without properties, and without the bytes of the way back, which Journal::Whole() has.
    ChangeState state = ChangeState::Unknown;
    bool hasFailed = false; ///< As the run says, so that it took effect only where the file looks so.
    std::size_t file = 0;   ///< Of the journal's files, the one that holds its line.
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::size_t line = 0;
};

struct RecordedRun {
    RunFacts facts;
    std::vector<RecordedChange> changes; ///< In the order of their lines.
};

/// All that the files of a journal tell. They may come from anybody's disk: what is no record is passed over and named, and
/// nothing is kept in memory but what tells the changes apart.
class Journal {
public:
    /// @throws JournalError when a file cannot be read, or there is none where one was named.
    explicit Journal(const JournalPlace& place);

    /// Runs that have announced a change, in the order in which they began.
    const std::vector<RecordedRun>& Runs() const { return mRuns; }
    /// "day1.jsonl:17: is no whole record of a run", a line each.
    const std::vector<std::string>& Problems() const { return mProblems; }

    /// All that the journal has of a change.
    /// @throws JournalError when it is not there any more.
    ChangeFacts Whole(const RecordedChange& change) const;
    /// From which on names in a change are told that are not whole; empty for the working folder.
    std::filesystem::path FolderOf(const RecordedChange& change) const;
    /// "day1.jsonl:17"
    std::string PlaceOf(const RecordedChange& change) const;

    /// What became of a change as far as the file's looks tell where the journal does not.
    /// @throws JournalError, FileError
    ChangeState StateOf(const RecordedChange& change) const;

private:
    void ReadLines(std::size_t file);
    void Add(const JournalEntry& entry, const RecordedChange& place);
    RecordedRun& RunOf(const RunFacts& facts);
    RecordedChange* Find(const ChangeKey& key);
    void MarkUndone();

    std::vector<std::filesystem::path> mFiles;
    std::vector<RecordedRun> mRuns;
    std::unordered_map<std::string, std::size_t> mRunOf;                    ///< By the run's id.
    std::map<std::pair<std::string, std::uint64_t>, std::size_t> mChangeOf; ///< In its run, by id and number.
    std::vector<ChangeKey> mFoundAsBefore;
    std::vector<std::string> mProblems;
};

} // namespace zonstory
