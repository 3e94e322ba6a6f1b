#include "match/Slate.h"

#include <algorithm>
#include <iterator>

#include "match/NamePieces.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr std::string_view kMediaExtensions[] = {
    "3gp",  "aac", "aif",  "aiff", "ari",  "arx", "avi",  "braw", "bwf", "cine", "crm",  "dng",
    "dv",   "dvr", "flac", "flv",  "insv", "lrv", "m2t",  "m2ts", "m2v", "m4a",  "m4v",  "mkv",
    "mod",  "mov", "mp3",  "mp4",  "mpeg", "mpg", "mts",  "mxf",  "ogg", "ogv",  "opus", "r3d",
    "rf64", "tod", "ts",   "vob",  "w64",  "wav", "webm", "wma",  "wmv", "xmp"};

// "12-14", "12/13", "12, 13": the last of several scenes; "12-3" is a take.
bool IsPartner(const NamedNumber& number, const NamedNumber& first) {
    const bool range = number.value > first.value && number.value <= first.value + 3 && number.value >= 10;
    const bool pair = number.value == first.value + 1 && number.separator == '/';
    return number.joined || (number.word == SlateWord::Unknown && number.letters.empty() && (range || pair));
}

} // namespace

std::vector<SlateReading> ReadSceneField(std::string_view field) {
    std::vector<SlateReading> readings;
    SlateReading whole;
    whole.scene = CanonicalSceneNumber(field);
    whole.rule = SlateRule::WholeField;
    whole.confidence = Confidence::Certain;
    whole.standing = Standing::Rival;
    whole.exactOnly = true;
    if (!whole.scene.empty()) {
        readings.push_back(std::move(whole));
    }
    const NamePieces pieces = CutName(field, nullptr, true);
    if (pieces.numbers.empty() || pieces.numbers.front().counter || pieces.unknownWords) {
        return readings;
    }
    const NamedNumber& first = pieces.numbers.front();
    for (const NamedNumber& number : pieces.numbers) {
        if (&number != &first && !IsPartner(number, first)) {
            continue;
        }
        SlateReading reading;
        reading.scene = number.Scene();
        reading.take =
            pieces.numbers.size() > 1 && !IsPartner(pieces.numbers[1], first) ? pieces.numbers[1].digits : "";
        reading.rule = SlateRule::NumberAlone;
        reading.confidence = Confidence::High;
        reading.place = number.place;
        readings.push_back(std::move(reading));
    }
    return readings;
}

SlateNumber ReadSlateNumber(std::string_view fileName) {
    const NamePieces pieces = CutName(WithoutMediaExtension(fileName), nullptr);
    const NamedNumber* slate = nullptr;
    const NamedNumber* take = nullptr;
    for (const NamedNumber& number : pieces.numbers) {
        const bool free = number.word == SlateWord::Unknown || number.word == SlateWord::Slate;
        if (number.word == SlateWord::Take || (free && slate != nullptr && take == nullptr && number.IsTake())) {
            take = &number;
        } else if (free && slate != nullptr) { // two slates
            return {};
        } else if (free && !number.counter) {
            slate = &number;
        }
    }
    return slate == nullptr ? SlateNumber() : SlateNumber{slate->Scene(), take == nullptr ? "" : take->digits};
}

std::string_view WithoutMediaExtension(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    if (dot == std::string_view::npos || dot == 0) {
        return fileName;
    }
    const bool known =
        std::any_of(std::begin(kMediaExtensions), std::end(kMediaExtensions),
                    [last = fileName.substr(dot + 1)](std::string_view one) { return EqualIgnoringCase(one, last); });
    return known ? fileName.substr(0, dot) : fileName;
}

std::string_view Describe(SlateRule rule) {
    constexpr std::string_view kRules[] = {"a scene word",
                                           "the letter S",
                                           "a slate word",
                                           "a take word",
                                           "a lettered number and a take",
                                           "a number and a take",
                                           "a number alone",
                                           "a number among words",
                                           "the given pattern",
                                           "the number that is the scene wherever it is known",
                                           "the whole field"};
    return kRules[static_cast<std::size_t>(rule)];
}

} // namespace zonstory
