// Arbitrary bytes as a journal: its lines, its runs, and what each change says.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "Target.h"
#include "TextInvariants.h"
#include "host/files/MemoryFile.h"
#include "journal/Journal.h"

namespace {

using namespace zonstory;

// Written again, an entry says the same.
void CheckEntry(std::string_view line) {
    std::string again;
    try {
        again = LineOf(EntryIn(line));
    } catch (const EntryError&) {
        return;
    }
    REQUIRE(std::count(again.begin(), again.end(), '\n') == 1 && again.back() == '\n');
    again.pop_back();
    REQUIRE(LineOf(EntryIn(again)) == again + '\n');
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    static support::MemoryFile file;
    file.Fill(bytes);
    CheckEntry(bytes.substr(0, bytes.find('\n')));
    const Journal journal({file.Path(), false, false});
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    for (const std::string& problem : journal.Problems()) {
        RequireErrorInFile(problem, file.Path(), lines);
    }
    for (const RecordedRun& run : journal.Runs()) {
        REQUIRE(!run.changes.empty());
        for (const RecordedChange& change : run.changes) {
            const ChangeFacts whole = journal.Whole(change);
            REQUIRE(whole.number == change.facts.number && !whole.file.empty());
            REQUIRE(KindOfChecksum(whole.back.checksumBefore) == KindOfChecksum(whole.back.checksumAfter));
        }
    }
}
