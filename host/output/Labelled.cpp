#include "output/Labelled.h"

#include <fmt/format.h>

#include "output/SafeText.h"

namespace zonstory {

std::string Labelled(const char* label, const std::string& value, std::size_t indent) {
    return value.empty() ? "" : fmt::format("{}{:<13}{}\n", std::string(indent, ' '), label, SafeLine(value));
}

} // namespace zonstory
