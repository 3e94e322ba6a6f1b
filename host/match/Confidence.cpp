#include "match/Confidence.h"

#include <algorithm>
#include <charconv>

#include "text/AsciiText.h"

namespace zonstory {

namespace {

struct Level {
    Confidence confidence;
    std::string_view name;
};

constexpr Level kLevels[] = {{Confidence::None, "none"},
                             {Confidence::Low, "low"},
                             {Confidence::Medium, "medium"},
                             {Confidence::High, "high"},
                             {Confidence::Certain, "certain"}};

std::optional<Confidence> LevelReaching(int number) {
    for (const Level& level : kLevels) {
        if (number >= 0 && static_cast<int>(level.confidence) >= number) {
            return level.confidence;
        }
    }
    return std::nullopt;
}

} // namespace

std::string_view Name(Confidence confidence) {
    for (const Level& level : kLevels) {
        if (level.confidence == confidence) {
            return level.name;
        }
    }
    return {};
}

std::optional<Confidence> ParseConfidence(std::string_view text) {
    for (const Level& level : kLevels) {
        if (EqualIgnoringCase(text, level.name)) {
            return level.confidence;
        }
    }
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end ? LevelReaching(number) : std::nullopt;
}

} // namespace zonstory
