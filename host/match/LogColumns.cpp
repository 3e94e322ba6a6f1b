#include "match/LogColumns.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "match/NameRuns.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

using Column = std::optional<std::size_t> LogColumns::*;

struct Titles {
    std::string_view kind; ///< As users call it.
    Column column;
    const char* names; ///< As Plain() makes them, parted by blanks.
};

// English, German, French, Spanish and Italian. The order decides where a log has several columns of one kind.
constexpr Titles kTitles[] = {
    {"file", &LogColumns::file,
     "SOURCEFILE SOURCEFILEPATH SOURCEFILENAME SOURCEPATH FILEPATH FILENAME FILE PATH CAMERAFILE CAMERAFILENAME "
     "VIDEOFILE MEDIAFILE ORIGINALFILENAME DATEINAME DATEI QUELLDATEI DATEIPFAD PFAD VIDEODATEI FICHIER NOMDEFICHIER "
     "NOMFICHIER NOMDUFICHIER FICHIERSOURCE CHEMIN ARCHIVO NOMBREDEARCHIVO NOMBREARCHIVO NOMBREDELARCHIVO FICHERO "
     "RUTA NOMEFILE NOMEDELFILE FILESORGENTE PERCORSO"},
    {"folder", &LogColumns::folder,
     "CLIPDIRECTORY DIRECTORY FOLDER SOURCEFOLDER VERZEICHNIS ORDNER DOSSIER CARPETA CARTELLA"},
    {"clip", &LogColumns::clip,
     "CLIP CLIPNAME NAME CLIPID MASTERCLIP CAMERACLIP MEDIANAME VIDEO CLIPS NOMDUCLIP NOMDECLIP NOMCLIP NOM PLANCLIP "
     "NOMBREDELCLIP NOMBREDECLIP NOMBRECLIP NOMBRE NOMECLIP NOMEDELCLIP NOME CLIPBEZEICHNUNG REELCLIP"},
    {"sound", &LogColumns::sound,
     "SOUNDFILE SOUNDFILENAME AUDIOFILE AUDIOFILENAME AUDIO WAV TONDATEI AUDIODATEI FICHIERSON FICHIERAUDIO SON "
     "ARCHIVODESONIDO ARCHIVODEAUDIO SONIDO FILEAUDIO SUONO"},
    {"reel", &LogColumns::reel,
     "TAPE TAPENAME REEL REELNAME CAMERAROLL CAMROLL ROLL ROLLE KAMERAROLLE BAND BOBINE CARTE ROLLO BOBINA TARJETA "
     "RULLO SCHEDA"},
    {"number", &LogColumns::number, "CLIPNUMBER CLIPNO CLIPNUM CLIPNR CLIPNUMMER NUMERODECLIP NUMEROCLIP"},
    {"scene", &LogColumns::scene,
     "SCENE SCENENUMBER SCENENO SCENENUM SCENENAME SC SCN SCENEN SCENESHOT SZENE SZENENNUMMER SZENENNR SZENENR SZ BILD "
     "BILDNR BILDNUMMER NUMERODESCENE SEQUENCE SEQUENCEN SEQ NSEQUENCE ESCENA NUMERODEESCENA ESC SECUENCIA SEC SCENA "
     "NUMEROSCENA"},
    {"take", &LogColumns::take,
     "TAKE TAKENUMBER TAKENO TAKENUM TAKENR TK TAKES PRISE NPRISE PRISEN NUMERODEPRISE TOMA NUMERODETOMA CIAK TAKEN"},
    {"slate", &LogColumns::slate,
     "SLATE SLATENUMBER SLATENO SLATENUM SLATENR KLAPPE KLAPPENNUMMER CLAP CLAQUETTE CLAQUETA CLAP"}};

Column ColumnOf(std::string_view kind) {
    const auto* const found = std::find_if(std::begin(kTitles), std::end(kTitles),
                                           [kind](const Titles& titles) { return titles.kind == kind; });
    return found == std::end(kTitles) ? nullptr : found->column;
}

std::vector<std::string> PlainNames(const std::vector<std::string>& columns) {
    std::vector<std::string> plain;
    plain.reserve(columns.size());
    std::transform(columns.begin(), columns.end(), std::back_inserter(plain),
                   [](const std::string& column) { return PlainColumnName(column); });
    return plain;
}

std::optional<std::size_t> FindPlain(std::string_view names, const std::vector<std::string>& plain) {
    for (const std::string_view name : WordsOf(names)) {
        const auto found = std::find(plain.begin(), plain.end(), name);
        if (found != plain.end()) {
            return static_cast<std::size_t>(found - plain.begin());
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::size_t> FindColumn(std::string_view names, const std::vector<std::string>& columns) {
    return FindPlain(names, PlainNames(columns));
}

// Letters and digits in capitals without accents: "Scène n°" is SCENEN.
std::string PlainColumnName(std::string_view name) {
    const NameRuns runs(name);
    std::string plain;
    for (std::size_t run = 0; run < runs.size(); ++run) {
        plain += runs.Text(run);
    }
    return plain;
}

LogColumns FindLogColumns(const std::vector<std::string>& names, const GivenColumns& given) {
    const std::vector<std::string> plain = PlainNames(names);
    LogColumns columns;
    for (const Titles& titles : kTitles) {
        columns.*titles.column = FindPlain(titles.names, plain);
    }
    for (const auto& [kind, name] : given) {
        if (const auto column = FindPlain(PlainColumnName(name), plain)) {
            columns.*ColumnOf(kind) = column;
        }
    }
    if (!columns.file && !columns.clip && !columns.sound && !columns.number) {
        columns.clip = columns.reel; // where a clip is all of its tape
    }
    columns.slatesAreScenes = !columns.scene && columns.slate;
    columns.scene = columns.scene ? columns.scene : columns.slate;
    return columns;
}

GivenColumns ParseGivenColumns(std::string_view text) {
    GivenColumns given;
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find(','));
        const std::size_t sign = one.find('=');
        const std::string kind(one.substr(0, sign));
        if (sign == std::string_view::npos || ColumnOf(kind) == nullptr || PlainColumnName(one.substr(sign)).empty()) {
            throw std::invalid_argument("\"" + std::string(one) + "\" is no column: clip=Datei,scene=Szene");
        }
        given.emplace_back(kind, one.substr(sign + 1));
        text.remove_prefix(std::min(one.size() + 1, text.size()));
    }
    return given;
}

} // namespace zonstory
