#pragma once

#include <string>

namespace zonstory {

/// What results are printed as.
enum class Format { Text, Json, Csv };

/// A result in the format that is wanted; it is made in no other. Each maker takes nothing and returns the whole text.
template <typename MakeText, typename MakeJson, typename MakeCsv>
std::string InFormat(Format format, MakeText text, MakeJson json, MakeCsv csv) {
    switch (format) {
    case Format::Json:
        return json();
    case Format::Csv:
        return csv();
    case Format::Text:
        break;
    }
    return text();
}

} // namespace zonstory
