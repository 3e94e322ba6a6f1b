#include "match/Confidence.h"

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
    int number = -1;
    const char* const end = text.data() + text.size();
    const bool isNumber = std::from_chars(text.data(), end, number).ptr == end && number >= 0;
    for (const Level& level : kLevels) {
        if (EqualIgnoringCase(text, level.name) || (isNumber && static_cast<int>(level.confidence) >= number)) {
            return level.confidence;
        }
    }
    return std::nullopt;
}

} // namespace zonstory
