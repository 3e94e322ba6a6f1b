#pragma once

#include <optional>
#include <string_view>

namespace zonstory {

/// How sure a statement about a clip's scene is. A program that writes clips stops below Medium unless told otherwise.
///
/// | level   | number | rests on                                                                             |
/// |---------|-------:|--------------------------------------------------------------------------------------|
/// | Certain |    100 | a log that names the file and the story's own number                                 |
/// | High    |     90 | a log, iXML or XMP otherwise; a name with a scene word, or a set-up letter and a take |
/// | Medium  |     70 | a name of two numbers, or one that is a number and nothing else                       |
/// | Low     |     40 | a number among other words                                                           |
/// | None    |      0 | nothing                                                                              |
///
/// The numbers are written to reports and accepted as a bar: they do not change.
enum class Confidence { None = 0, Low = 40, Medium = 70, High = 90, Certain = 100 };

/// "none", "low", "medium", "high", "certain".
std::string_view Name(Confidence confidence);

/// The least level that reaches `text`: a level's name in any case, or a number from 0 to 100. Nothing for other text.
std::optional<Confidence> ParseConfidence(std::string_view text);

} // namespace zonstory
