// Arbitrary bytes as a journal: its lines, its runs, and what each change says.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "MemoryFile.h"
#include "TextInvariants.h"
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile file;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    file.Fill(bytes);
    CheckEntry(bytes.substr(0, bytes.find('\n')));
    const Journal journal({file.Path(), false, false});
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    for (const std::string& problem : journal.Problems()) {
        fuzz::RequireErrorInFile(problem, file.Path(), lines);
    }
    for (const RecordedRun& run : journal.Runs()) {
        REQUIRE(!run.changes.empty());
        for (const RecordedChange& change : run.changes) {
            const ChangeFacts whole = journal.Whole(change);
            REQUIRE(whole.number == change.facts.number && !whole.file.empty());
            REQUIRE(KindOfChecksum(whole.back.checksumBefore) == KindOfChecksum(whole.back.checksumAfter));
        }
    }
    return 0;
}
