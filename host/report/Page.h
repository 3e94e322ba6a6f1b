#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "output/Json.h"
#include "story/StoryReader.h"

/// A story and the clips that show it, as the data of one page. Pure: no clip is read here and nothing is decided.
namespace zonstory {

/// A clip as the page shows it. All texts may be of any bytes.
struct PageClip {
    std::string name;
    std::string link; ///< A relative reference, percent-encoded; empty where the clip is not linked.
    std::string setUp;
    std::string take;
    std::string camera;
    std::string draft; ///< "current", "outdated" ...; empty where it is not known.

    bool IsOld() const { return draft == "outdated" || draft == "other"; }
};

/// Clips by what they show. Numbers name clips by their place in the list.
struct PageClips {
    std::vector<PageClip> clips;
    std::vector<std::vector<std::size_t>> ofScene; ///< One list for each scene of the story.
    std::vector<std::size_t> withoutScene;
    std::vector<std::size_t> unknown;   ///< With a number that the story does not have.
    std::vector<std::size_t> ambiguous; ///< With a number that several scenes have.
};

struct PageInput {
    const Story& story;
    std::string name;               ///< Of the story's file: the title where the story gives none.
    std::string language;           ///< Of the story, as BCP 47 has it; may be empty.
    std::optional<PageClips> clips; ///< Nothing where no clip was asked for: then nothing is missing, either.
};

/// What the template is filled with.
Json PageData(const PageInput& input);

} // namespace zonstory
