#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "match/Slate.h"

namespace zonstory {

/// A pattern of names that the user gives: "{scene}{setup}-{take}", "{day}_{scene}_{shot}_T{take}", "*_{scene}-{take}".
///
/// {scene}, {setup}, {take} and {shot} say what they hold; {camera}, {roll}, {episode}, {day} and {counter} are letters and
/// digits of no meaning here, and * is anything. All else stands for itself, in any case.
class GivenPattern {
public:
    /// @throws std::invalid_argument in words when there is no {scene}, or a field that nobody knows.
    explicit GivenPattern(std::string_view text);

    /// Of a file's name without extension; nothing when it does not fit.
    std::optional<SlateReading> Read(std::string_view name) const;

private:
    enum class Field { Sign, Scene, SetUp, Take, Other, Anything };

    struct Element {
        Field field;
        char sign;
    };

    class Matcher;
    std::vector<Element> mElements;
};

} // namespace zonstory
