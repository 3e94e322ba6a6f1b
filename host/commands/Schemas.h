#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zonstory {

/// The JSON Schemas of all documents that the program writes: a file name, "scenes.schema.json", and its text.
std::vector<std::pair<std::string, std::string>> Schemas();

} // namespace zonstory
