#include "report/Picture.h"

#include <algorithm>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zonstory {

namespace {

constexpr int kRowHeight = 34;
constexpr int kLabelDepth = 13; ///< Of a label's base line below the top of its row.
constexpr int kBarDepth = 18;
constexpr int kBarHeight = 10;
constexpr int kColumnHeight = 120;
constexpr double kWhole = 100; ///< Percent.

struct Stretch {
    double from;
    double width;
};

std::string Percent(double share) {
    return fmt::format("{:.3f}%", share);
}

Json Rectangle(const Stretch& across, double top, double height, const std::string& look, const std::string& title) {
    return {{"x", Percent(across.from)},
            {"width", Percent(across.width)},
            {"y", fmt::format("{:.1f}", top)},
            {"height", fmt::format("{:.1f}", height)},
            {"shapeLook", look},
            {"tip", title}};
}

Json Label(const char* x, int baseLine, const char* anchor, const std::string& text) {
    return {{"x", x}, {"y", std::to_string(baseLine)}, {"anchor", anchor}, {"label", text}};
}

Json PictureOf(int height, Json shapes, Json labels) {
    return {{"height", std::to_string(height)}, {"shapes", std::move(shapes)}, {"labels", std::move(labels)}};
}

double Largest(const FactTable& table) {
    double largest = 0;
    for (const FactRow& row : table.rows) {
        largest = std::max(largest, row.amount);
    }
    return largest;
}

double ShareOf(double amount, double largest) {
    return largest > 0 ? kWhole * amount / largest : 0;
}

// "JO · Words: 110", as the table has it.
std::string Tip(const FactTable& table, const FactRow& row, std::size_t column) {
    return fmt::format("{} · {}: {}", row.cells.front().text, table.columns[column].text, row.cells[column].text);
}

std::string RunTip(const std::string& name, const SceneRun& run) {
    return run.first == run.second ? fmt::format("{}: scene {} of the story", name, run.first)
                                   : fmt::format("{}: scenes {} to {} of the story", name, run.first, run.second);
}

} // namespace

Json BarPicture(const FactTable& table, std::size_t column) {
    const double largest = Largest(table);
    Json shapes = Json::array();
    Json labels = Json::array();
    int top = 0;
    for (const FactRow& row : table.rows) {
        shapes.push_back(Rectangle({0, kWhole}, top + kBarDepth, kBarHeight, "track", Tip(table, row, column)));
        shapes.push_back(
            Rectangle({0, ShareOf(row.amount, largest)}, top + kBarDepth, kBarHeight, "bar", Tip(table, row, column)));
        labels.push_back(Label("0", top + kLabelDepth, "start", row.cells.front().text));
        labels.push_back(Label("100%", top + kLabelDepth, "end", row.cells[column].text));
        top += kRowHeight;
    }
    return PictureOf(top, std::move(shapes), std::move(labels));
}

Json PresencePicture(const FactTable& table, std::size_t sceneCount) {
    const double step = kWhole / static_cast<double>(std::max<std::size_t>(sceneCount, 1));
    Json shapes = Json::array();
    Json labels = Json::array();
    int top = 0;
    for (const FactRow& row : table.rows) {
        shapes.push_back(Rectangle({0, kWhole}, top + kBarDepth, kBarHeight, "track", row.cells.front().text));
        for (const auto& run : RunsOf(row.scenes)) {
            const double from = step * static_cast<double>(run.first - 1);
            const double width = step * static_cast<double>(run.second - run.first + 1);
            shapes.push_back(
                Rectangle({from, width}, top + kBarDepth, kBarHeight, "bar", RunTip(row.cells.front().text, run)));
        }
        labels.push_back(Label("0", top + kLabelDepth, "start", row.cells.front().text));
        top += kRowHeight;
    }
    return PictureOf(top, std::move(shapes), std::move(labels));
}

Json ColumnPicture(const FactTable& table, std::size_t column) {
    const double largest = Largest(table);
    const double step = kWhole / static_cast<double>(std::max<std::size_t>(table.rows.size(), 1));
    Json shapes = Json::array();
    double from = 0;
    for (const FactRow& row : table.rows) {
        const double height = ShareOf(row.amount, largest) / kWhole * kColumnHeight;
        shapes.push_back(
            Rectangle({from, step * 0.86}, kColumnHeight - height, height, "bar " + row.look, Tip(table, row, column)));
        from += step;
    }
    return PictureOf(kColumnHeight, std::move(shapes), Json::array());
}

} // namespace zonstory
