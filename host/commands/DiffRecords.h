#pragma once

#include <string>

#include "commands/DiffFindings.h"
#include "output/Json.h"

/// What programs read of two drafts compared.
namespace zonstory {

std::string DiffAsJson(const DiffFindings& diff);
/// The scenes, or the clips where they were asked for; a table of clips is what `write --map` reads.
std::string DiffAsCsv(const DiffFindings& diff, bool ofClips);

/// The JSON Schema of the document.
Json DiffSchema();

} // namespace zonstory
