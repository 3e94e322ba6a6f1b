#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "match/Decision.h"

namespace zonstory {

/// A folder of clips, and what its name and those of the folders above say of them.
struct NameFolder {
    std::string_view path;
    std::vector<Statement> statements; ///< The nearest first.
    std::optional<std::size_t> scene;  ///< That a word names.
    bool below = false;                ///< Is a shot's or a take's.
};

/// The folders of all clips of a run, each read once.
class NameFolders {
public:
    /// @param story  Must outlive this.
    NameFolders(const SceneNumbers& story, SlateStyle style) : mStory(story), mStyle(style) {}

    /// The place of a folder, which is read where it is new.
    /// @param path  Must outlive this.
    std::size_t Find(std::string_view path);

    /// Reads the folders found so far that are called by numbers alone, 012, 014, 17A; 1, 2, 3 are cards and days.
    void ReadNumbered();

    const NameFolder& operator[](std::size_t place) const { return mFolders[place]; }
    std::size_t size() const { return mFolders.size(); }

private:
    NameFolder Read(std::string_view path) const;

    const SceneNumbers& mStory;
    SlateStyle mStyle;
    std::vector<NameFolder> mFolders;
    std::unordered_map<std::string_view, std::size_t> mPlaces;
};

/// Cuts the last name off a path; empty when there is none left.
std::string_view TakeLastName(std::string_view& path);

/// Those that count where slates are numbered so.
std::vector<SlateReading> OfStyle(std::vector<SlateReading> readings, SlateStyle style);

} // namespace zonstory
