#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <zonstoryparser/StoryModel.h>

#include "story/StoryReader.h"

namespace zonstory {

/// One scene in a table. All text is UTF-8.
struct SceneFacts {
    std::size_t position = 0; ///< From 1.
    std::string number;       ///< As the story writes it; empty when the scene has none.
    std::string setting;
    std::string location;
    std::string timeOfDay;
    std::string duration; ///< As the story writes it.
    std::vector<std::string>
        speakers; ///< Who has dialogue, in order of first speech, without what a cue adds in brackets.
    std::size_t dialogueWords = 0;
    std::size_t actionWords = 0;
    zonscreenplay::SceneProperties properties; ///< What the story's format tells beside.
    /// The page that it ends on, where the format tells pages by plain numbers, and lengths. It follows from them: scenes
    /// stand one below the other, and lengths are rounded to eighths.
    std::optional<std::size_t> lastPage;
};

std::vector<SceneFacts> DescribeScenes(const Story& story);

/// One speaker in a table.
struct CharacterFacts {
    std::string name;                      ///< UTF-8, without what a cue adds in brackets.
    std::vector<std::size_t> scenes;       ///< Positions of the scenes with dialogue, ascending.
    std::vector<std::size_t> linesInScene; ///< One for each of them.
    std::size_t lines = 0;                 ///< Speeches: how often the speaker's cue is followed by dialogue.
    std::size_t words = 0;
};

/// The speakers of the body in order of first speech.
std::vector<CharacterFacts> DescribeCharacters(const zonstoryparser::Talewright& story);

} // namespace zonstory
