#include "commands/SceneMap.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include <fmt/format.h>

#include "output/CsvReader.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

std::string WithoutBlanks(const std::string& text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

bool IsNamed(const std::string& field, std::string_view name) {
    const std::string title = WithoutBlanks(field);
    return std::equal(title.begin(), title.end(), name.begin(), name.end(), [](char left, char right) {
        return (left >= 'A' && left <= 'Z' ? static_cast<char>(left - 'A' + 'a') : left) == right;
    });
}

std::size_t FindColumn(const CsvRow& header, std::string_view name, const std::string& file) {
    std::size_t found = header.fields.size();
    for (std::size_t column = 0; column < header.fields.size(); ++column) {
        if (!IsNamed(header.fields[column], name)) {
            continue;
        }
        if (found != header.fields.size()) {
            throw CsvError(file, header.line, fmt::format("two columns are named '{}'", name));
        }
        found = column;
    }
    if (found == header.fields.size()) {
        throw CsvError(file, header.line, fmt::format("no column is named '{}'", name));
    }
    return found;
}

std::string Field(const CsvRow& row, std::size_t column) {
    return column < row.fields.size() ? row.fields[column] : "";
}

std::string ResolveClip(const std::string& clip, const fs::path& folder) {
    const fs::path besideMap = folder / clip; // `clip` itself where that is absolute
    std::error_code ignored;
    return fs::exists(fs::symlink_status(besideMap, ignored)) ? besideMap.string() : clip;
}

} // namespace

SceneMap ReadSceneMap(const std::string& path, const SceneSelection& scenes) {
    const CsvContents contents = ReadCsv(path);
    const std::string name = path == "-" ? "standard input" : path;
    const std::size_t clipColumn = FindColumn(contents.header, "clip", name);
    const std::size_t sceneColumn = FindColumn(contents.header, "scene", name);
    const fs::path folder = path == "-" ? fs::path() : fs::path(path).parent_path();
    SceneMap map;
    std::string problems;
    for (const CsvRow& row : contents.rows) {
        const std::string clip = Field(row, clipColumn);
        const std::string scene = WithoutBlanks(Field(row, sceneColumn));
        if (scene.empty()) {
            ++map.rowsWithoutScene;
            continue;
        }
        if (clip.empty()) {
            throw CsvError(name, row.line, "a scene without a clip");
        }
        try {
            map.clips.push_back({row.line, ResolveClip(clip, folder), scenes.Find(scene)});
        } catch (const SceneSelectionError& error) {
            problems += fmt::format("{}{}:{}: {}", problems.empty() ? "" : "\n", name, row.line, error.what());
        }
    }
    if (!problems.empty()) {
        throw SceneSelectionError(problems);
    }
    return map;
}

} // namespace zonstory
