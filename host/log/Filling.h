#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "log/ByteEdit.h"

namespace zonstory {

enum class CellState {
    Filled,     ///< It was empty.
    Replaced,   ///< It had another value.
    Kept,       ///< It has another value, which stays.
    Unwritable, ///< The file's encoding has no place for one of the characters, so it stays as it is.
};

/// A cell that does not say already what it was to say.
struct CellChange {
    std::size_t row = 0;    ///< Of the log.
    std::size_t column = 0; ///< Of those that were to be filled.
    CellState state = CellState::Filled;
    std::string old;
    std::string value;
};

/// What filling a log comes to. Nothing is changed by it; ApplyEdits() does that.
struct Filling {
    std::vector<ByteEdit> edits; ///< In the order of the file.
    std::vector<CellChange> cells;
    std::vector<std::string> notes; ///< Columns that could not be added, in words.
};

} // namespace zonstory
