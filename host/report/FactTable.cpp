#include "report/FactTable.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zonstory {

namespace {

constexpr std::size_t kEighths = 8;

Json CellJson(const FactCell& cell, const FactTable::Heading& column, bool isFirst) {
    return {{"cell", cell.text},
            {"link", cell.link},
            {"isLinked", !cell.link.empty()},
            {"isNumber", column.isNumber},
            {"isRowHeading", isFirst}};
}

} // namespace

std::vector<SceneRun> RunsOf(const std::vector<std::size_t>& positions) {
    std::vector<SceneRun> runs;
    for (const std::size_t scene : positions) {
        if (!runs.empty() && runs.back().second + 1 == scene) {
            runs.back().second = scene;
        } else {
            runs.emplace_back(scene, scene);
        }
    }
    return runs;
}

Json TableJson(const FactTable& table) {
    Json columns = Json::array();
    for (const FactTable::Heading& column : table.columns) {
        columns.push_back({{"name", column.text}, {"isNumber", column.isNumber}});
    }
    Json rows = Json::array();
    for (const FactRow& row : table.rows) {
        Json cells = Json::array();
        for (std::size_t at = 0; at < table.columns.size(); ++at) {
            cells.push_back(CellJson(row.cells[at], table.columns[at], at == 0));
        }
        rows.push_back({{"look", row.look}, {"cells", std::move(cells)}});
    }
    return {{"columns", std::move(columns)}, {"rows", std::move(rows)}};
}

std::string EighthsText(std::size_t eighths) {
    const std::size_t pages = eighths / kEighths;
    const std::size_t rest = eighths % kEighths;
    if (rest == 0) {
        return std::to_string(pages);
    }
    return pages == 0 ? fmt::format("{}/8", rest) : fmt::format("{} {}/8", pages, rest);
}

} // namespace zonstory
