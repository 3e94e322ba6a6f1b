#include "match/GivenPattern.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "match/SceneText.h"

namespace zonstory {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Capital(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsLetter(char c) {
    return Capital(c) >= 'A' && Capital(c) <= 'Z';
}

std::size_t SkipLetters(std::string_view text, std::size_t at, std::size_t most) {
    const std::size_t end = std::min(text.size(), at + most);
    while (at < end && IsLetter(text[at])) {
        ++at;
    }
    return at;
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) {
        ++at;
    }
    return at;
}

// 12, 12A, A12, 2.28.
bool IsScene(std::string_view text) {
    std::size_t at = SkipLetters(text, 0, 2);
    const std::size_t digits = SkipDigits(text, at);
    if (digits == at) {
        return false;
    }
    at = digits < text.size() && text[digits] == '.' ? SkipDigits(text, digits + 1) : digits;
    return SkipLetters(text, at, 2) == text.size();
}

bool AreLetters(std::string_view text, std::size_t most) {
    return SkipLetters(text, 0, most) == text.size();
}

bool AreDigits(std::string_view text) {
    return !text.empty() && SkipDigits(text, 0) == text.size();
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
            return text.size() == 1 && Capital(text.front()) == element.sign;
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
    struct Name {
        std::string_view name;
        Field field;
    };
    constexpr Name kNames[] = {{"scene", Field::Scene},   {"setup", Field::SetUp},  {"take", Field::Take},
                               {"shot", Field::Other},    {"camera", Field::Other}, {"roll", Field::Other},
                               {"episode", Field::Other}, {"day", Field::Other},    {"counter", Field::Other}};
    while (!text.empty()) {
        const std::size_t end = text.front() == '{' ? std::min(text.find('}'), text.size()) : 0;
        const std::string_view name = text.substr(0, end);
        const auto field = std::find_if(std::begin(kNames), std::end(kNames), [name](const Name& one) {
            return name.size() > 1 && one.name == name.substr(1);
        });
        if (end > 0 && (field == std::end(kNames) || end == text.size())) {
            throw std::invalid_argument("{" + std::string(name.substr(1)) + "} is no field of names");
        }
        mElements.push_back(end > 0               ? Element{field->field, '\0'}
                            : text.front() == '*' ? Element{Field::Anything, '\0'}
                                                  : Element{Field::Sign, Capital(text.front())});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const auto scenes = std::count_if(mElements.begin(), mElements.end(),
                                      [](const Element& element) { return element.field == Field::Scene; });
    if (scenes != 1) {
        throw std::invalid_argument("a pattern of names has {scene} in it, once");
    }
}

std::optional<SlateReading> GivenPattern::Read(std::string_view name) const {
    Matcher matcher(mElements, name.substr(0, 1000));
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
