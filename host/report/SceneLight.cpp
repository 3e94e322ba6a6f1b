#include "report/SceneLight.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <utf8proc.h>

namespace zonstory {

namespace {

struct PlaceWord {
    std::string_view word;
    Place place;
};
constexpr PlaceWord kPlaceWords[] = {
    {"int", Place::Interior},     {"interior", Place::Interior},  {"inn", Place::Interior},
    {"innen", Place::Interior},   {"interno", Place::Interior},   {"intérieur", Place::Interior},
    {"ext", Place::Exterior},     {"exterior", Place::Exterior},  {"auss", Place::Exterior},
    {"aussen", Place::Exterior},  {"est", Place::Exterior},       {"establishing", Place::Exterior},
    {"esterno", Place::Exterior}, {"extérieur", Place::Exterior},
};
// These mean a place only where a slash joins them: "I/E", "A/I".
constexpr PlaceWord kPlaceLetters[] = {{"i", Place::Interior}, {"e", Place::Exterior}, {"a", Place::Exterior}};

struct LightWord {
    std::string_view word;
    Daylight light;
};
constexpr LightWord kLightWords[] = {
    {"day", Daylight::Day},
    {"morning", Daylight::Day},
    {"noon", Daylight::Day},
    {"midday", Daylight::Day},
    {"afternoon", Daylight::Day},
    {"tag", Daylight::Day},
    {"morgen", Daylight::Day},
    {"vormittag", Daylight::Day},
    {"mittag", Daylight::Day},
    {"nachmittag", Daylight::Day},
    {"jour", Daylight::Day},
    {"matin", Daylight::Day},
    {"giorno", Daylight::Day},
    {"mattina", Daylight::Day},
    {"pomeriggio", Daylight::Day},
    {"día", Daylight::Day},
    {"mañana", Daylight::Day},
    {"tarde", Daylight::Day},
    {"night", Daylight::Night},
    {"evening", Daylight::Night},
    {"midnight", Daylight::Night},
    {"nacht", Daylight::Night},
    {"abend", Daylight::Night},
    {"nuit", Daylight::Night},
    {"soir", Daylight::Night},
    {"notte", Daylight::Night},
    {"sera", Daylight::Night},
    {"noche", Daylight::Night},
    {"dawn", Daylight::Twilight},
    {"dusk", Daylight::Twilight},
    {"sunrise", Daylight::Twilight},
    {"sunset", Daylight::Twilight},
    {"twilight", Daylight::Twilight},
    {"dämmerung", Daylight::Twilight},
    {"morgengrauen", Daylight::Twilight},
    {"aube", Daylight::Twilight},
    {"crépuscule", Daylight::Twilight},
    {"alba", Daylight::Twilight},
    {"tramonto", Daylight::Twilight},
    {"amanecer", Daylight::Twilight},
    {"atardecer", Daylight::Twilight},
};

std::string Folded(std::string_view text) {
    utf8proc_uint8_t* folded = nullptr;
    const auto options = static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD);
    const utf8proc_ssize_t length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                 static_cast<utf8proc_ssize_t>(text.size()), &folded, options);
    std::string result;
    if (length >= 0) {
        result.assign(reinterpret_cast<const char*>(folded), static_cast<std::size_t>(length));
    }
    std::free(folded); // as the library hands it out
    return result;
}

bool IsLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || static_cast<unsigned char>(byte) >= 0x80;
}

struct Word {
    std::string_view text;
    bool isAtSlash; ///< One stands before or behind it.
};

// The words of a folded text, dots and dashes left out.
std::vector<Word> WordsOf(std::string_view text) {
    std::vector<Word> words;
    for (std::size_t at = 0; at < text.size();) {
        if (!IsLetter(text[at])) {
            ++at;
            continue;
        }
        const std::size_t first = at;
        while (at < text.size() && IsLetter(text[at])) {
            ++at;
        }
        const bool isAtSlash = (first > 0 && text[first - 1] == '/') || (at < text.size() && text[at] == '/');
        words.push_back({text.substr(first, at - first), isAtSlash});
    }
    return words;
}

template <typename Table>
auto Find(const Table& table, std::string_view word) {
    return std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.word == word; });
}

Place PlaceOf(const Word& word) {
    if (const auto* row = Find(kPlaceWords, word.text); row != std::end(kPlaceWords)) {
        return row->place;
    }
    const auto* letter = word.isAtSlash ? Find(kPlaceLetters, word.text) : std::end(kPlaceLetters);
    return letter == std::end(kPlaceLetters) ? Place::Untold : letter->place;
}

// By the words in front, as far as they are settings.
Place PlaceOf(const std::vector<Word>& words) {
    Place place = Place::Untold;
    for (const Word& word : words) {
        const Place told = PlaceOf(word);
        if (told == Place::Untold) {
            break;
        }
        place = place == Place::Untold || place == told ? told : Place::Both;
    }
    return place;
}

// By the last word that tells: "NIGHT CLUB - DAY" is by day.
Daylight LightOf(const std::vector<Word>& words) {
    Daylight light = Daylight::Untold;
    for (const Word& word : words) {
        const auto* const row = Find(kLightWords, word.text);
        light = row == std::end(kLightWords) ? light : row->light;
    }
    return light;
}

} // namespace

SceneLight LightOf(std::string_view heading) {
    const std::string folded = Folded(heading);
    const std::vector<Word> words = WordsOf(folded);
    return {PlaceOf(words), LightOf(words)};
}

const char* Name(Place place) {
    switch (place) {
    case Place::Interior:
        return "Interior";
    case Place::Exterior:
        return "Exterior";
    case Place::Both:
        return "Interior and exterior";
    case Place::Untold:
        break;
    }
    return "Not told";
}

const char* Name(Daylight light) {
    switch (light) {
    case Daylight::Day:
        return "Day";
    case Daylight::Night:
        return "Night";
    case Daylight::Twilight:
        return "Dawn or dusk";
    case Daylight::Untold:
        break;
    }
    return "Not told";
}

} // namespace zonstory
