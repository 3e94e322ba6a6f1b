#include "match/ClipStatements.h"

#include <algorithm>
#include <utility>

#include "match/SceneText.h"

namespace zonstory {

namespace {

constexpr int kFoldersAbove = 3; ///< Beyond the clip's own; further up are the production's and the machine's.

Statement StateName(Source source, std::string_view name, std::vector<SlateReading> readings) {
    Statement statement;
    statement.source = source;
    statement.text = name;
    statement.readings = std::move(readings);
    return statement;
}

// Cuts the last name off a path; empty when there is none left.
std::string_view TakeLastName(std::string_view& path) {
    const std::size_t end = path.find_last_not_of('/');
    path = path.substr(0, end == std::string_view::npos ? 0 : end + 1);
    const std::size_t slash = path.rfind('/');
    const std::string_view name = path.substr(slash + 1);
    path = path.substr(0, slash == std::string_view::npos ? 0 : slash);
    return name;
}

// A scene that leads to its clips over folders for cameras and cards: "Scene 12/A cam/A007/".
std::vector<SlateReading> ReadFolderAbove(std::string_view name, SlateStyle style) {
    std::vector<SlateReading> readings = ReadFolderName(name, style);
    std::erase_if(readings, [](const SlateReading& reading) {
        return reading.rule != SlateRule::SceneWord || reading.confidence < Confidence::High;
    });
    return readings;
}

} // namespace

Statement StateField(Source source, std::string_view scene, std::string_view take) {
    Statement statement = StateName(source, scene, ReadSceneField(scene));
    statement.take = CanonicalSceneNumber(take);
    statement.ceiling = Confidence::High;
    return statement;
}

std::vector<Statement> StatePath(std::string_view path, SlateStyle style) {
    std::vector<Statement> statements;
    const std::string_view file = TakeLastName(path);
    statements.push_back(StateName(Source::FileName, file, ReadFileName(file, style)));
    for (int above = 0; above <= kFoldersAbove && !path.empty(); ++above) {
        const std::string_view folder = TakeLastName(path);
        std::vector<SlateReading> readings =
            above == 0 ? ReadFolderName(folder, style) : ReadFolderAbove(folder, style);
        if (!readings.empty()) {
            statements.push_back(StateName(Source::FolderName, folder, std::move(readings)));
        }
    }
    return statements;
}

} // namespace zonstory
