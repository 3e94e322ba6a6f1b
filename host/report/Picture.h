#pragma once

#include <cstddef>

#include "report/FactTable.h"

/// Pictures of tables, as shapes for the template to write as SVG: rectangles with a title each, and labels. Lengths across
/// are percent of the picture's width, which the page decides; lengths down are pixels.
namespace zonstory {

/// A bar for each row, as long as its amount, with the row's name over it.
/// @param column  Where the table has the amount, for people.
Json BarPicture(const FactTable& table, std::size_t column);

/// A line for each row, and on it where its scenes stand in a story of so many.
Json PresencePicture(const FactTable& table, std::size_t sceneCount);

/// A column for each row, as high as its amount, one beside the other.
Json ColumnPicture(const FactTable& table, std::size_t column);

} // namespace zonstory
