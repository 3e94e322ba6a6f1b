#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "match/GivenPattern.h"
#include "match/NameFolders.h"
#include "match/NamePattern.h"

namespace zonstory {

/// How names are to be read.
struct NameStyle {
    SlateStyle slates = SlateStyle::Scene;
    std::optional<GivenPattern> given; ///< Names that do not fit it say nothing.
};

/// What the paths of all clips of a run say, read together.
///
/// Names of one shape are one pattern. Which of its numbers is the scene and which the take is chosen once, so that all its
/// names are best explained; clips whose scene is known otherwise, by logs, metadata or the words of a folder, teach the
/// pattern of the others. A name that differs from the good pattern of nearly all others around it is the odd one, and of
/// Low confidence.
class NamePatterns {
public:
    /// @param paths   Of all clips: absolute, or as far as they are to count. Any bytes.
    /// @param story   Must outlive this.
    /// @param known   What logs and metadata say of each, one for one; or empty.
    NamePatterns(std::span<const std::string> paths, std::span<const std::vector<Statement>> known,
                 const SceneNumbers& story, const NameStyle& style);

    /// What a clip's file and its folders say, for Decide().
    std::vector<Statement> Statements(std::size_t at) const;

    /// A line for each pattern that scenes were read by: "41 names like 12A-3: scene, set-up, take".
    std::vector<std::string> Lines() const;

    /// The clips whose names are unlike all others around them.
    std::vector<std::size_t> OddOnes() const;

private:
    struct Clip {
        std::string name;
        NamePieces pieces;
        std::optional<std::size_t> known; ///< The scene that metadata, a log or a folder gives without doubt.
        std::size_t folder = 0;
        std::size_t pattern = 0;
        bool odd = false;
    };

    struct Group {
        NamePattern pattern;
        std::size_t first = 0; ///< A clip of it, for an example.
        bool lettered = false;
    };

    using Clips = std::vector<std::size_t>;

    void FormPatterns();
    NamePattern Read(const Clips& clips) const;
    void AddPattern(const NamePattern& pattern, const Clips& clips);
    void FindOddOnes();
    std::vector<SlateReading> Readings(const Clip& clip) const;
    bool IsOwnScene(const Clip& clip, const std::vector<SlateReading>& readings) const;

    const SceneNumbers& mStory;
    NameStyle mStyle;
    std::vector<Clip> mClips;
    NameFolders mFolders;
    std::vector<Group> mPatterns;
};

} // namespace zonstory
