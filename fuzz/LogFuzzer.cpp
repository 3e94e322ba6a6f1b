// Arbitrary bytes as a log of clips: its encoding, its rows, and what they say of a few clips.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Target.h"
#include "TextInvariants.h"
#include "match/ClipLog.h"
#include "match/LogIndex.h"
#include "output/CsvReader.h"
#include "text/ForeignText.h"

namespace {

using namespace zonstory;

constexpr char kName[] = "day:3.csv";

const std::vector<std::string> kClips = {"/rushes/A001/C0001.MP4", "/rushes/A002/C0001.MP4",
                                         "/rushes/A007C006_160424_R28L.mov", "/rushes/12A-3.mov", "/sound/12A-3.WAV"};

void CheckRows(const ClipLog& log, std::size_t lines) {
    fuzz::RequireRowsInFile(log.rows, 1, lines); // below a header, at least
    REQUIRE(log.known.AreEnough());
    for (const ClipLog::Row& row : log.rows) {
        REQUIRE(log.Where(row) == kName + (":" + std::to_string(row.line)));
        for (std::size_t column = 0; column < row.fields.size() + 1; ++column) {
            REQUIRE(fuzz::IsTrimmed(log.Field(row, column)));
        }
    }
}

void CheckIndex(const std::vector<ClipLog>& logs, SlateStyle style, std::size_t lines) {
    static const SceneNumbers story({"1", "2", "12", "12A", "14", "14", ""});
    const ClipLog& log = logs.front();
    const LogIndex index(logs, kClips, style);
    REQUIRE(index.RowsWithoutClip() <= log.rows.size());
    for (const std::string& problem : index.Problems()) {
        fuzz::RequireErrorInFile(problem, kName, lines);
    }
    for (std::size_t clip = 0; clip < kClips.size(); ++clip) {
        const std::vector<LogIndex::RowOfLog> rows = index.Rows(clip);
        const std::vector<Statement> statements = index.Statements(clip);
        REQUIRE(rows.size() == statements.size());
        for (std::size_t at = 0; at < rows.size(); ++at) {
            REQUIRE(rows[at].log == &log && statements[at].where == log.Where(*rows[at].row));
            REQUIRE(!statements[at].text.empty() && statements[at].text == log.Field(*rows[at].row, log.known.scene));
        }
        const Decision decision = Decide(statements, story, Confidence::None);
        REQUIRE(!decision.scene || (*decision.scene < story.size() && !statements.empty()));
    }
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    const std::string text = ForeignToUTF8(bytes);
    REQUIRE(IsUTF8(text));
    const std::size_t lines = CountLines(text);
    try {
        const std::vector<ClipLog> logs = {ReadClipLog(bytes, kName)};
        CheckRows(logs.front(), lines);
        CheckIndex(logs, SlateStyle::Scene, lines);
        CheckIndex(logs, SlateStyle::Continuous, lines);
    } catch (const CsvError& error) {
        RequireErrorInFile(error.what(), kName, lines);
    }
}
