#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace zonstory {

/// Why there is no journal to write to or to read, in one line with its name: "/mnt/day1/journal.jsonl: Read-only file
/// system".
class JournalError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where runs are recorded: a file that they append to, or a folder in which each has a file of its own. Several machines
/// may share either.
struct JournalPlace {
    std::filesystem::path path;
    bool isFolder = false;
    bool isOwn = false; ///< In the user's own folder of journals, where nobody else writes.
};

/// $XDG_STATE_HOME/zonstory, or ~/.local/state/zonstory. It need not exist.
/// @throws JournalError when the environment names no home.
JournalPlace OwnJournal();

/// @param name  A file, which need not exist, or a folder that does; empty for the user's own.
/// @throws JournalError
JournalPlace JournalNamed(const std::string& name);

/// Whether a file lies in a folder or beneath it, links followed as far as the two exist.
bool IsBeneath(const std::filesystem::path& file, const std::filesystem::path& folder);

} // namespace zonstory
