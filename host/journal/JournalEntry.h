#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "clip/Clip.h"

/// The lines of a journal. Each is a JSON document of its own, so that whatever becomes of one, the others can be read; a
/// run's facts stand in every line about a change. Lines are only ever added.
namespace zonstory {

/// What a run was.
struct RunFacts {
    std::string id;      ///< Its own, whatever other machines do: 16 hexadecimal digits.
    std::string time;    ///< When it began: "2026-11-21T19:20:03.123Z". So are all times.
    std::string program; ///< "zonstory 1.0.0"
    std::string host;
    std::string verb;
    std::string story;  ///< The script's name, without its folder; empty for a verb without one, as the next.
    std::string digest; ///< Of its text.
    std::string undoes; ///< The run that this one takes back; empty for others.
};

/// A change of a run.
struct ChangeKey {
    std::string run;
    std::uint64_t number = 0;

    bool operator==(const ChangeKey&) const = default;
};

/// A change of one file, as it was announced before it was made.
struct ChangeFacts {
    std::uint64_t number = 0; ///< In its run.
    std::string time;
    std::string scene; ///< That was to be written; empty where none was.
    Target target = Target::Inside;
    std::string clip;   ///< Any bytes, as the next. Absolute, or from the folder of the journal on.
    std::string file;   ///< What was changed: the clip or its sidecar.
    RecordedEdits back; ///< The way back, without its inverse: the bytes put in are proven by checksum.
    std::vector<PropertyChange> properties;
    std::optional<ChangeKey> undoes; ///< The change that this one takes back.
};

struct JournalEntry {
    enum class Kind {
        Begin,    ///< A run begins.
        Change,   ///< A change is about to be made.
        Done,     ///< It was.
        NotDone,  ///< It failed; whether it took effect all the same, the file tells.
        AsBefore, ///< What was to be taken back had its earlier bytes already.
        End,      ///< The run is over.
        Unknown   ///< Of a later version.
    };
    Kind kind = Kind::Unknown;
    RunFacts run;       ///< In Begin and Change all of it, else the id.
    ChangeFacts change; ///< In Change all of it; in Done and NotDone the number; in AsBefore what it undoes.
    std::string time;
};

/// A line that is no entry; the message stands behind the line's place: "has no checksumAfter".
class EntryError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The entry as a line, with its end.
std::string LineOf(const JournalEntry& entry);

/// @param text  A line of any origin, without its end.
/// @throws EntryError
JournalEntry EntryIn(std::string_view text);

} // namespace zonstory
