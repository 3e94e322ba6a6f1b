#include "match/SlateWords.h"

#include <algorithm>
#include <iterator>

namespace zonstory {

namespace {

struct Entry {
    std::string_view word;
    SlateWord meaning;
};

constexpr bool Before(const Entry& left, const Entry& right) {
    return left.word < right.word;
}

using enum SlateWord;

// Sorted: looked up by halves.
constexpr Entry kWords[] = {
    {"ACAM", Remark},      {"ACT", Counter},       {"AFS", Remark},        {"AFTERNOON", Remark}, {"ALT", Remark},
    {"AM", Unit},          {"AND", Joiner},        {"APR", Month},         {"APRIL", Month},      {"AUG", Month},
    {"AUGUST", Month},     {"AVC", Format},        {"BCAM", Remark},       {"BILD", Scene},       {"BIS", Joiner},
    {"BIT", Unit},         {"BITS", Unit},         {"BLOCK", Counter},     {"BT", Format},        {"CAM", Camera},
    {"CAMERA", Camera},    {"CARD", Counter},      {"CCAM", Remark},       {"CENA", Scene},       {"CH", Counter},
    {"CHAN", Counter},     {"CHANNEL", Counter},   {"CHAPTER", Counter},   {"CIAK", Take},        {"CIRCLED", Remark},
    {"CLEAN", Remark},     {"CLIP", File},         {"CLOSE", Remark},      {"CM", Unit},          {"COPY", File},
    {"CU", Remark},        {"DAY", Counter},       {"DCAM", Remark},       {"DEC", Month},        {"DECEMBER", Month},
    {"DISC", Counter},     {"DISK", Counter},      {"DJI", File},          {"DNXHD", Format},     {"DNXHR", Format},
    {"DSC", File},         {"DSCF", File},         {"DSCN", File},         {"ECU", Remark},       {"EINSTELLUNG", Shot},
    {"EP", Counter},       {"EPISODE", Counter},   {"EPS", Counter},       {"ESC", Scene},        {"ESCENA", Scene},
    {"ET", Joiner},        {"FEB", Month},         {"FEBRUARY", Month},    {"FOLDER", File},      {"FPS", Unit},
    {"FRAME", Counter},    {"FRAMES", Unit},       {"GB", Unit},           {"GOPR", File},        {"HD", Format},
    {"HEVC", Format},      {"HQ", Format},         {"HR", Unit},           {"HZ", Unit},          {"IMG", File},
    {"INS", Remark},       {"INSERT", Remark},     {"INTERVIEW", Counter}, {"ISO", Counter},      {"JAN", Month},
    {"JANUARY", Month},    {"JUL", Month},         {"JULY", Month},        {"JUN", Month},        {"JUNE", Month},
    {"KBPS", Unit},        {"KHZ", Unit},          {"KM", Unit},           {"LENS", Counter},     {"LS", Remark},
    {"LUT", Counter},      {"MAG", Counter},       {"MAH", File},          {"MAR", Month},        {"MARCH", Month},
    {"MASTER", Remark},    {"MAY", Month},         {"MB", Unit},           {"MBIT", Unit},        {"MBPS", Unit},
    {"MCU", Remark},       {"MIN", Unit},          {"MM", Unit},           {"MOS", Remark},       {"MOV", File},
    {"MPEG", Format},      {"MS", Remark},         {"MVI", File},          {"MWS", Remark},       {"ND", Unit},
    {"NG", Remark},        {"NO", NumberSign},     {"NOV", Month},         {"NOVEMBER", Month},   {"NR", NumberSign},
    {"NUM", NumberSign},   {"NUMBER", NumberSign}, {"OCT", Month},         {"OCTOBER", Month},    {"OTS", Remark},
    {"PAGE", Counter},     {"PART", Counter},      {"PICKUP", Remark},     {"PLAN", Shot},        {"PLATE", Remark},
    {"PM", Unit},          {"POV", Remark},        {"PRISE", Take},        {"PRORES", Format},    {"PT", Counter},
    {"PU", Remark},        {"PXL", File},          {"RD", Unit},           {"REC", Format},       {"REEL", Counter},
    {"RETAKE", Remark},    {"REV", Remark},        {"ROLL", Counter},      {"SAM", File},         {"SC", Scene},
    {"SCEN", Scene},       {"SCENA", Scene},       {"SCENE", Scene},       {"SCENES", Scene},     {"SCN", Scene},
    {"SCS", Scene},        {"SEASON", Counter},    {"SEC", Unit},          {"SEP", Month},        {"SEPT", Month},
    {"SEPTEMBER", Month},  {"SEQ", Counter},       {"SEQUENCE", Counter},  {"SER", Remark},       {"SERIES", Remark},
    {"SETUP", Shot},       {"SH", Shot},           {"SHOT", Shot},         {"SL", Slate},         {"SLATE", Slate},
    {"SLT", Slate},        {"SOUND", Remark},      {"ST", Unit},           {"STE", File},         {"SU", Shot},
    {"SYNC", Remark},      {"SZ", Scene},          {"SZENE", Scene},       {"TAGNING", Take},     {"TAIL", Remark},
    {"TAKE", Take},        {"TAPE", Counter},      {"TASCAM", File},       {"TB", Unit},          {"TC", Counter},
    {"TH", Unit},          {"THRU", Joiner},       {"TK", Take},           {"TO", Joiner},        {"TOMA", Take},
    {"TRACK", Counter},    {"TRK", Counter},       {"TS", Remark},         {"UHD", Format},       {"UND", Joiner},
    {"UNIT", Counter},     {"V", Counter},         {"VER", Counter},       {"VERSION", Counter},  {"VFX", Remark},
    {"VID", File},         {"VOL", Counter},       {"WEEK", Counter},      {"WIDE", Remark},      {"WILD", Remark},
    {"WILDTRACK", Remark}, {"WS", Remark},         {"WT", Remark},         {"XAVC", Format},      {"XDCAM", Format},
    {"XQ", Format},        {"ZOOM", File},
};
static_assert(std::is_sorted(std::begin(kWords), std::end(kWords), Before));

SlateWord MeaningOfLetter(char letter) {
    return letter == 'S' ? SceneLetter : letter == 'T' ? Take : letter == 'V' ? Counter : Unknown;
}

} // namespace

SlateWord MeaningOf(std::string_view word) {
    if (word.size() == 1) {
        return MeaningOfLetter(word.front());
    }
    const auto* const found = std::lower_bound(std::begin(kWords), std::end(kWords), Entry{word, Unknown}, Before);
    return found != std::end(kWords) && found->word == word ? found->meaning : Unknown;
}

bool IsSetUp(std::string_view letters) {
    return !letters.empty() && letters.size() <= 2 && std::all_of(letters.begin(), letters.end(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' && letter != 'I' && letter != 'O';
    });
}

} // namespace zonstory
