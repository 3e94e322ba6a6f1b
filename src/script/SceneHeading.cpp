#include <algorithm>
#include <optional>
#include <string_view>

#include <zoncore/CaseInsensitive.h>
#include <zoncore/Tokenizer.h>
#include <zonstoryparser/Story.h>

namespace zonstoryparser {

namespace {

using View = std::u16string_view;

// On purpose: the order, and that a word need only be a prefix, make "INT/EXT" and the like unreachable behind "INT".
// Clips already written depend on it. Held by the tests SceneHeading, the rows of PrefixOrder.
constexpr View kSceneSettings[] = {
    u"INT", u"EXT", u"I/E",      u"E/I",      u"INT/EXT",    u"EXT/INT", u"P.O.V.", u"INN",     u"AUSS",
    u"I/A", u"A/I", u"INN/AUSS", u"AUSS/INN", u"SUBJEKTIVE", u"P.D.V.",  u"EST",    u"INT/EST",
};

// On purpose: "Night" comes before "Late Night", which is therefore never the result. Held by the tests SceneHeading.
constexpr View kTimesOfDay[] = {u"Day", u"Night", u"Evening", u"Morning", u"Late Night"};

constexpr View kBlanks = u" \t";
constexpr char16_t kSettingTerminator = u'.';
constexpr char16_t kTimeSeparator = u'-';

bool EqualIgnoringCase(View left, View right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), zoncore::CaseInsensitive::EqualChar);
}

bool StartsWith(View text, View word) {
    return text.size() >= word.size() && EqualIgnoringCase(text.substr(0, word.size()), word);
}

bool EndsWith(View text, View word) {
    return text.size() >= word.size() && EqualIgnoringCase(text.substr(text.size() - word.size()), word);
}

template <typename Words>
std::optional<View> FirstWord(const Words& words, View text, bool (*matches)(View, View)) {
    for (const View word : words) {
        if (matches(text, word)) {
            return word;
        }
    }
    return std::nullopt;
}

View WithoutLeadingBlanks(View text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

View WithoutTrailingBlanks(View text) {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1); // npos + 1 is 0: nothing but blanks leaves nothing
}

void ParseRightHalfUnlessEmpty(View rightHalf, UString& location, UString& timeOfDay) {
    if (!rightHalf.empty()) {
        ParseRightHalf(UString(rightHalf), location, timeOfDay);
    }
}

// A heading without a known setting: what stands in front of the first dot is the setting.
void ParseAtDot(const UString& heading, UString& setting, UString& location, UString& timeOfDay) {
    zoncore::Tokenizer parts(heading, UString(1, kSettingTerminator), 0, true);
    if (heading.find(kSettingTerminator) != UString::npos) {
        setting = WithoutLeadingBlanks(parts.NextToken());
    }
    const UString remaining = parts.GetRemaining();
    ParseRightHalfUnlessEmpty(WithoutLeadingBlanks(remaining), location, timeOfDay);
}

} // namespace

void ParseSceneHeading(const UString& heading, UString& setting, UString& location, UString& timeOfDay) {
    const std::optional<View> knownSetting = FirstWord(kSceneSettings, heading, StartsWith);
    if (!knownSetting) {
        return ParseAtDot(heading, setting, location, timeOfDay);
    }
    View remainder = View(heading).substr(knownSetting->size());
    if (!remainder.empty() && remainder.front() == kSettingTerminator) {
        remainder.remove_prefix(1);
    }
    ParseRightHalfUnlessEmpty(WithoutLeadingBlanks(remainder), location, timeOfDay);
    setting = *knownSetting;
}

std::size_t SceneSettingLength(const UString& heading) {
    std::size_t length = 0;
    for (const View word : kSceneSettings) {
        length = StartsWith(heading, word) ? std::max(length, word.size()) : length;
    }
    return length;
}

// On purpose: the leftmost dash parts the text, so "SMITH-JONES HOUSE - DAY" is the location "SMITH"; and a word that
// gives the time of day stays in the location. Held by the tests SceneHeading.
void ParseRightHalf(const UString& rightHalf, UString& location, UString& timeOfDay) {
    const View text = rightHalf;
    const std::size_t dash = text.find(kTimeSeparator, 1); // a dash in front of everything parts nothing
    if (dash != View::npos) {
        timeOfDay = WithoutLeadingBlanks(text.substr(dash + 1));
        location = WithoutTrailingBlanks(text.substr(0, dash));
    }
    if (timeOfDay.empty()) {
        timeOfDay = FirstWord(kTimesOfDay, text, EndsWith).value_or(timeOfDay);
    }
    if (location.empty()) {
        location = rightHalf;
    }
}

} // namespace zonstoryparser
