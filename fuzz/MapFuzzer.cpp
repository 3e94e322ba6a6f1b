// Arbitrary bytes as a map of clips and scenes: the CSV reader first, then the map over a fixed story.
#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "Target.h"
#include "TextInvariants.h"
#include "commands/SceneMap.h"
#include "host/files/MemoryFile.h"
#include "output/Csv.h"
#include "output/CsvReader.h"
#include "story/StoryReader.h"

namespace {

using namespace zonstory;

// Numbers that repeat, read like a position, differ in case and zeros, or are missing.
const Story& TheStory() {
    static const Story story = zonscreenplay::ReadScreenplayFromMemory(
        R"(<Talewright version="1.0"><document><stream name="body"><section><scene sceneNumber="1"/>)"
        R"(<scene sceneNumber="12A"/><scene sceneNumber="12"/><scene/><scene sceneNumber="12"/>)"
        R"(<scene sceneNumber="#1"/><scene sceneNumber="007"/><scene sceneNumber="Prologue"/>)"
        "</section></stream></document></Talewright>",
        "story");
    return story;
}

bool HasText(const CsvRow& row) {
    return std::any_of(row.fields.begin(), row.fields.end(), [](const std::string& field) { return !field.empty(); });
}

void CheckCsv(const CsvContents& contents, std::size_t lines) {
    REQUIRE(contents.header.line >= 1);
    fuzz::RequireRowsInFile(contents.rows, contents.header.line, lines);
    std::string again = "sep=,\r\n" + CsvRecord(contents.header.fields);
    for (const CsvRow& row : contents.rows) {
        REQUIRE(HasText(row));
        again += CsvRecord(row.fields);
    }
    const CsvContents reread = ParseCsv(again, "again");
    REQUIRE(reread.header.fields == contents.header.fields);
    fuzz::RequireSameFields(reread.rows, contents.rows);
}

void CheckMap(const SceneMap& map, const CsvContents& contents, const SceneSelection& scenes) {
    REQUIRE(map.clips.size() + map.rowsWithoutScene == contents.rows.size());
    const std::vector<SelectedScene> all = scenes.All();
    auto row = contents.rows.begin();
    for (const MappedClip& clip : map.clips) {
        row = std::find_if(row, contents.rows.end(), [&](const CsvRow& one) { return one.line == clip.line; });
        REQUIRE(row != contents.rows.end());
        REQUIRE(!clip.clip.empty());
        if (clip.action != MapAction::Write) {
            REQUIRE(clip.scene.scene == nullptr);
            continue;
        }
        REQUIRE(clip.scene.position >= 1 && clip.scene.position <= all.size());
        REQUIRE(clip.scene.scene == all[clip.scene.position - 1].scene);
        // Some field of the row is the scene's name.
        REQUIRE(std::any_of(row->fields.begin(), row->fields.end(), [&](const std::string& field) {
            try {
                return scenes.Find(field).position == clip.scene.position;
            } catch (const SceneSelectionError&) {
                return false;
            }
        }));
    }
}

// Each line of the text that begins like one of the reader's own names a row.
void CheckProblems(const std::string& problems, const std::string& name, const CsvContents& contents) {
    REQUIRE(std::any_of(contents.rows.begin(), contents.rows.end(), [&](const CsvRow& row) {
        return problems.starts_with(name + ":" + std::to_string(row.line) + ": ");
    }));
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    static support::MemoryFile file;
    static const SceneSelection scenes(*TheStory().root);
    const std::size_t lines = CountLines(bytes);
    file.Fill(bytes);
    CsvContents contents;
    std::string refusal;
    try {
        contents = ParseCsv(bytes, file.Path());
        CheckCsv(contents, lines);
    } catch (const CsvError& error) {
        refusal = error.what();
    }
    try {
        CheckMap(ReadSceneMap(file.Path(), scenes), contents, scenes);
        REQUIRE(refusal.empty());
    } catch (const CsvError& error) {
        RequireErrorInFile(error.what(), file.Path(), lines);
        REQUIRE(refusal.empty() || refusal == error.what());
    } catch (const SceneSelectionError& error) {
        REQUIRE(refusal.empty());
        CheckProblems(error.what(), file.Path(), contents);
    }
}
