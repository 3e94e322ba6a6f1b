#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "output/Json.h"

namespace zonstory {

/// A cell of a table on the page. Any text.
struct FactCell {
    std::string text;
    std::string link = {}; ///< "#scene-7", or empty.
};

struct FactRow {
    std::vector<FactCell> cells;          ///< One for each column; the first names the row.
    double amount = 0;                    ///< What a picture of the table draws of the row.
    std::vector<std::size_t> scenes = {}; ///< Positions, ascending, for a picture along the story.
    std::string look = {};                ///< A class of the style sheet.
};

/// A table that stands on the page, and that a picture is drawn from.
struct FactTable {
    struct Heading {
        std::string text;
        bool isNumber = false;
    };
    std::string id; ///< Within the page.
    std::string title;
    std::vector<Heading> columns;
    std::vector<FactRow> rows;
};

/// Scenes one after the other: the positions of the first and the last.
using SceneRun = std::pair<std::size_t, std::size_t>;
std::vector<SceneRun> RunsOf(const std::vector<std::size_t>& positions);

/// For the template: its headings and rows.
Json TableJson(const FactTable& table);

/// A length in eighths of a page, as schedules write it: "2 3/8".
std::string EighthsText(std::size_t eighths);

} // namespace zonstory
