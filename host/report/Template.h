#pragma once

#include <stdexcept>
#include <string>

#include "output/Json.h"

namespace zonstory {

/// A template that cannot be read as one: what is wrong, and where in it.
class TemplateError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The template that the program brings: report.html of this folder.
const char* BuiltInTemplate();

/// Fills in a Mustache template. Every string of the data is a text: it is escaped where the template names it, and what
/// no page can hold (bytes that are no UTF-8, control characters) is written out, as "\x1b".
/// @throws TemplateError
std::string FillTemplate(const std::string& text, const Json& data);

} // namespace zonstory
