#include "commands/SceneMap.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "output/CsvReader.h"
#include "text/AsciiText.h"
#include "text/ForeignText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

std::size_t FindColumn(const CsvRow& header, std::string_view name, const std::string& file) {
    std::size_t found = header.fields.size();
    for (std::size_t column = 0; column < header.fields.size(); ++column) {
        if (!EqualIgnoringCase(WithoutBlanks(header.fields[column]), name)) {
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

bool Exists(const fs::path& clip) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(clip, ignored));
}

// A map that is no UTF-8 was read as Windows-1252, but the name of a file may be made of those very bytes.
std::string ResolveClip(const std::string& clip, const fs::path& folder) {
    const std::string asBytes = ToWindows1252(clip);
    for (const fs::path& path : {folder / clip, fs::path(clip), folder / asBytes, fs::path(asBytes)}) {
        if (Exists(path)) { // `path` is what the map says where that is absolute
            return path.string();
        }
    }
    return clip;
}

constexpr std::pair<std::string_view, MapAction> kActions[] = {{"skip", MapAction::Skip}, {"clear", MapAction::Clear}};

bool IsScene(const std::string& name, const SceneSelection& scenes) {
    try {
        scenes.Find(name);
        return true;
    } catch (const SceneSelectionError&) {
        return false;
    }
}

/// @throws SceneSelectionError
MappedClip ReadRow(std::size_t line, std::string clip, const std::string& scene, const SceneSelection& scenes) {
    for (const auto& [word, action] : kActions) {
        if (EqualIgnoringCase(scene, word)) {
            if (IsScene(scene, scenes)) {
                throw SceneSelectionError(
                    fmt::format("'{}' is a scene of the story as well; name that by its position, as #7", scene));
            }
            return {line, std::move(clip), {}, action};
        }
    }
    return {line, std::move(clip), scenes.Find(scene)};
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
        const std::string scene(WithoutBlanks(Field(row, sceneColumn)));
        if (scene.empty()) {
            ++map.rowsWithoutScene;
            continue;
        }
        if (clip.empty()) {
            throw CsvError(name, row.line, "a scene without a clip");
        }
        try {
            map.clips.push_back(ReadRow(row.line, ResolveClip(clip, folder), scene, scenes));
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
