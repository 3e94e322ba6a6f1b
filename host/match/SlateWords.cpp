#include "match/SlateWords.h"

#include <algorithm>
#include <unordered_map>

#include "text/AsciiText.h"

namespace zonstory {

namespace {

struct Row {
    SlateWord meaning;
    std::string_view words;
};

// English, German, French, Spanish and Italian, parted by blanks.
constexpr Row kRows[] = {
    {SlateWord::Scene, "SC SCN SCENE SCEN SCS SZ SZN SZENE BILD ESC ESCENA SCENA CENA"},
    {SlateWord::Scenes, "SCENES SZENEN BILDER ESCENAS"},
    {SlateWord::Sequence, "S SEQ SEQUENCE SQ SEQUENZ SECUENCIA SEQUENZA SEQUENCIA"},
    {SlateWord::Slate, "SLATE SL SLT KLAPPE KL CLAP CLAQUETA CLAQUETTE"},
    {SlateWord::Shot, "SHOT SH SETUP SU EINSTELLUNG EINST EST PLAN PL PLANO PLA INQUADRATURA INQ CUT"},
    {SlateWord::Take, "T TK TKE TAKE TAKES PRISE PR TOMA TOM CIAK CK TAGNING AUFNAHME"},
    {SlateWord::Counter,
     "CAM CAMERA KAM KAMERA CAMARA MACCHINA ROLL CARD REEL MAG TAPE ROLLE KARTE BAND BOBINE BOB CARTE ROLLO TARJETA "
     "RULLO SCHEDA EP EPS EPISODE FOLGE CAPITULO CAP EPISODIO PUNTATA AFL SEASON STAFFEL SAISON TEMPORADA STAGIONE "
     "DAY TAG DREHTAG DT JOUR DIA GIORNO SD WEEK ACT BLOCK BLK CH CHAN CHANNEL CHAPTER DISC DISK FRAME ISO LENS LUT "
     "PAGE PART PT TEIL TC TRACK TRK UNIT V VER VERSION REV VOL CLIP COPY KOPIE COPIA COPIE DJI DSC DSCF DSCN FOLDER "
     "GOPR IMG MAH MOV MVI PXL SAM STE TASCAM VID VIDEO ZOOM FILE DATEI PRORES DNXHD DNXHR UHD HD HEVC AVC XAVC "
     "XDCAM MPEG HQ XQ BT FINAL"},
    {SlateWord::Remark,
     "ACAM BCAM CCAM DCAM CAMA CAMB CAMC AFS AFTERNOON ALT CIRCLED CLEAN CLOSE CU ECU INS INSERT LS MASTER MCU MOS "
     "MS MUTE MWS NG OTS PICKUP PLATE POV PROXY PU RETAKE SER SERIES SOUND SYNC TAIL TS VFX WIDE WILD WILDTRACK WS "
     "WT"},
    {SlateWord::Unit,
     "AM BIT BITS BPM CM DB FPS FRAMES GB HR HZ KBPS KG KHZ KM MB MBIT MBPS MIN MM ND PM PX RD SEC TB TH"},
    {SlateWord::Joiner, "AND ET TO UND BIS THRU"},
    {SlateWord::NumberSign, "NO NR NUM NUMBER NUMMER NUMERO"},
    {SlateWord::Against,
     "TRAILER TEASER CUTDOWN PROMO SPOT DRONE IPHONE PIXEL GALAXY QUESTION LINE TEST SONG ANGLE CUE AMBIENCE ATMO "
     "FOLEY SFX FX ADR VO VOICEOVER PODCAST CASTING AUDITION REHEARSAL PROBE INTERVIEW BTS BEHIND MAKING BROLL STOCK "
     "TIMELAPSE LOGO POSTER COMP UNTITLED MIX STEM MUSIC MUSIK TITLE CREDITS VLOG DEMO SESSION SLIDE CHART SCREEN "
     "RECORDING MOVIE EXPORT FRAGE ZEILE LIED PREGUNTA CANCION DOMANDA CANZONE PROVA PRUEBA ESSAI CHANSON ANSWER "
     "SKETCH STUNT EXERCISE RECIPE STEP LEVEL LESSON MODULE VARIANT OPTION DRAFT"}};

std::unordered_map<std::string_view, SlateWord> MakeWords() {
    std::unordered_map<std::string_view, SlateWord> words;
    for (const Row& row : kRows) {
        for (const std::string_view word : WordsOf(row.words)) {
            words.emplace(word, row.meaning);
        }
    }
    return words;
}

} // namespace

SlateWord MeaningOf(std::string_view word) {
    static const std::unordered_map<std::string_view, SlateWord> words = MakeWords();
    const auto found = words.find(word);
    return found == words.end() ? SlateWord::Unknown : found->second;
}

bool IsSetUp(std::string_view letters) {
    return !letters.empty() && letters.size() <= 2 && std::all_of(letters.begin(), letters.end(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' && letter != 'I' && letter != 'O';
    });
}

} // namespace zonstory
