#include "match/LogColumns.h"

#include "match/NameRuns.h"

namespace zonstory {

namespace {

using Column = std::optional<std::size_t> LogColumns::*;

struct Title {
    std::string_view name; ///< As Plain() makes it.
    Column column;
};

// The order decides where a log has several columns of one kind.
constexpr Title kTitles[] = {
    {"SOURCEFILE", &LogColumns::file},
    {"SOURCEFILEPATH", &LogColumns::file},
    {"SOURCEFILENAME", &LogColumns::file},
    {"SOURCEPATH", &LogColumns::file},
    {"FILEPATH", &LogColumns::file},
    {"FILENAME", &LogColumns::file},
    {"FILE", &LogColumns::file},
    {"PATH", &LogColumns::file},
    {"CAMERAFILE", &LogColumns::file},
    {"CAMERAFILENAME", &LogColumns::file},
    {"VIDEOFILE", &LogColumns::file},
    {"MEDIAFILE", &LogColumns::file},
    {"ORIGINALFILENAME", &LogColumns::file},
    {"DATEINAME", &LogColumns::file},
    {"CLIP", &LogColumns::clip},
    {"CLIPNAME", &LogColumns::clip},
    {"NAME", &LogColumns::clip},
    {"CLIPID", &LogColumns::clip},
    {"MASTERCLIP", &LogColumns::clip},
    {"CAMERACLIP", &LogColumns::clip},
    {"MEDIANAME", &LogColumns::clip},
    {"VIDEO", &LogColumns::clip},
    {"SOUNDFILE", &LogColumns::sound},
    {"SOUNDFILENAME", &LogColumns::sound},
    {"AUDIOFILE", &LogColumns::sound},
    {"AUDIOFILENAME", &LogColumns::sound},
    {"AUDIO", &LogColumns::sound},
    {"WAV", &LogColumns::sound},
    {"TAPE", &LogColumns::reel},
    {"TAPENAME", &LogColumns::reel},
    {"REEL", &LogColumns::reel},
    {"REELNAME", &LogColumns::reel},
    {"CAMERAROLL", &LogColumns::reel},
    {"CAMROLL", &LogColumns::reel},
    {"ROLL", &LogColumns::reel},
    {"CLIPNUMBER", &LogColumns::number},
    {"CLIPNO", &LogColumns::number},
    {"CLIPNUM", &LogColumns::number},
    {"SCENE", &LogColumns::scene},
    {"SCENENUMBER", &LogColumns::scene},
    {"SCENENO", &LogColumns::scene},
    {"SCENENUM", &LogColumns::scene},
    {"SCENENAME", &LogColumns::scene},
    {"SC", &LogColumns::scene},
    {"SCN", &LogColumns::scene},
    {"SZENE", &LogColumns::scene},
    {"ESCENA", &LogColumns::scene},
    {"SCENA", &LogColumns::scene},
    {"TAKE", &LogColumns::take},
    {"TAKENUMBER", &LogColumns::take},
    {"TAKENO", &LogColumns::take},
    {"TAKENUM", &LogColumns::take},
    {"TK", &LogColumns::take},
    {"SLATE", &LogColumns::slate},
    {"SLATENUMBER", &LogColumns::slate},
    {"SLATENO", &LogColumns::slate},
};

// Letters and digits in capitals without accents: "Scène n°" is SCENEN.
std::string Plain(std::string_view title) {
    const NameRuns runs(title);
    std::string plain;
    for (std::size_t run = 0; run < runs.size(); ++run) {
        plain += runs.Text(run);
    }
    return plain;
}

} // namespace

LogColumns FindLogColumns(const std::vector<std::string>& names) {
    std::vector<std::string> plain;
    plain.reserve(names.size());
    for (const std::string& name : names) {
        plain.push_back(Plain(name));
    }
    LogColumns columns;
    for (const Title& title : kTitles) {
        std::optional<std::size_t>& column = columns.*title.column;
        for (std::size_t index = 0; index < plain.size() && !column; ++index) {
            if (plain[index] == title.name) {
                column = index;
            }
        }
    }
    return columns;
}

} // namespace zonstory
