#include "match/GivenPattern.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "match/NameRuns.h"
#include "match/SceneNumbers.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

template <typename Wanted>
std::size_t Skip(Wanted wanted, std::string_view text, std::size_t at, std::size_t most) {
    const std::size_t end = at + std::min(most, text.size() - at);
    while (at < end && wanted(text[at])) {
        ++at;
    }
    return at;
}

bool AreLetters(std::string_view text, std::size_t most) {
    return Skip(IsLetter, text, 0, most) == text.size();
}

// 12, 12A, A12, 2.28.
bool IsScene(std::string_view text) {
    const std::size_t begin = Skip(IsDigit, text, Skip(IsLetter, text, 0, 2), text.size());
    const bool hasPart = text.substr(begin, 1) == ".";
    const std::size_t end = hasPart ? Skip(IsDigit, text, begin + 1, text.size()) : begin;
    return begin > 0 && IsDigit(text[begin - 1]) && AreLetters(text.substr(end), 2);
}

} // namespace

/// Tries each length of each field, the longest first, and no place of the name twice with one element.
class GivenPattern::Matcher {
public:
    Matcher(const std::vector<Element>& elements, std::string_view name)
        : mElements(elements), mName(name), mFailed((elements.size() + 1) * (name.size() + 1)) {}

    bool Match(std::size_t element, std::size_t at) {
        if (element == mElements.size()) {
            return at == mName.size();
        }
        const std::size_t place = element * (mName.size() + 1) + at;
        if (mFailed[place]) {
            return false;
        }
        for (std::size_t length = mName.size() - at + 1; length-- > 0;) {
            const std::string_view text = mName.substr(at, length);
            if (Holds(mElements[element], text) && Match(element + 1, at + length)) {
                mTexts[static_cast<std::size_t>(mElements[element].field)] = text;
                return true;
            }
        }
        mFailed[place] = true;
        return false;
    }

    std::string_view Text(Field field) const { return mTexts[static_cast<std::size_t>(field)]; }

private:
    static bool Holds(const Element& element, std::string_view text) {
        switch (element.field) {
        case Field::Sign:
            return text.size() == 1 && text.front() == element.sign;
        case Field::Scene:
            return IsScene(text);
        case Field::SetUp:
            return AreLetters(text, 2) || AreDigits(text);
        case Field::Take:
            return AreDigits(text);
        case Field::Other:
            return !text.empty() &&
                   std::all_of(text.begin(), text.end(), [](char c) { return IsLetter(c) || IsDigit(c); });
        case Field::Anything:
            return true;
        }
        return false;
    }

    const std::vector<Element>& mElements;
    std::string_view mName;
    std::vector<bool> mFailed;
    std::array<std::string_view, 6> mTexts;
};

GivenPattern::GivenPattern(std::string_view text) {
    constexpr std::pair<std::string_view, Field> kFields[] = {
        {"{scene}", Field::Scene},   {"{setup}", Field::SetUp}, {"{take}", Field::Take},     {"{shot}", Field::Other},
        {"{camera}", Field::Other},  {"{roll}", Field::Other},  {"{episode}", Field::Other}, {"{day}", Field::Other},
        {"{counter}", Field::Other}, {"*", Field::Anything}};
    while (!text.empty()) {
        const auto* const field = std::find_if(std::begin(kFields), std::end(kFields),
                                               [text](const auto& one) { return text.starts_with(one.first); });
        const bool isField = field != std::end(kFields);
        if (!isField && text.front() == '{') {
            throw std::invalid_argument(std::string(text.substr(0, text.find('}'))) + "} is no field of names");
        }
        mElements.push_back(isField ? Element{field->second, '\0'} : Element{Field::Sign, LowerCase(text.front())});
        text.remove_prefix(isField ? field->first.size() : 1);
    }
    const auto scenes = std::count_if(mElements.begin(), mElements.end(),
                                      [](const Element& element) { return element.field == Field::Scene; });
    if (scenes != 1) {
        throw std::invalid_argument("a pattern of names has {scene} in it, once");
    }
}

std::optional<SlateReading> GivenPattern::Read(std::string_view name) const {
    const std::string folded = LowerCase(std::string(name.substr(0, 1000)));
    Matcher matcher(mElements, folded);
    if (!matcher.Match(0, 0)) {
        return std::nullopt;
    }
    SlateReading reading;
    reading.scene = CanonicalSceneNumber(matcher.Text(Field::Scene));
    const std::string setUp = CanonicalSceneNumber(matcher.Text(Field::SetUp));
    reading.scene += AreDigits(setUp) ? "" : setUp;
    reading.take = CanonicalSceneNumber(matcher.Text(Field::Take));
    reading.rule = SlateRule::GivenPattern;
    reading.confidence = Confidence::High;
    return reading;
}

} // namespace zonstory
