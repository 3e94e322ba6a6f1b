#pragma once

#include <filesystem>

namespace zonstory {

/// The name that all frames of one sequence have in common: "A001.dpx" for A001.0001.dpx, A001.0002.dpx and so on, in their
/// folder; for every other file its own. Frames are told by what a file's name says: a format that holds pictures of a film,
/// one a file, and a number of four digits or more that is parted from the rest.
std::filesystem::path SequenceName(const std::filesystem::path& file);

} // namespace zonstory
