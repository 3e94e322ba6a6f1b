#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

namespace zonstory {

/// JSON whose members keep the order in which they were added.
using Json = nlohmann::ordered_json;

/// A document that says what it is: {"schema": "zonstory.<name>", "version": <version>}. The version is raised when a
/// member goes or changes its meaning; new members do not raise it.
Json JsonDocument(const char* name, int version);

/// A string for JSON of bytes that need not be UTF-8: a byte that is none becomes "\xe9".
Json JsonString(std::string_view bytes);

/// The document as text, indented, in UTF-8, with a line feed at the end.
std::string JsonText(const Json& document);

} // namespace zonstory
