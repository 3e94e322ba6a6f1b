#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <zonstoryparser/StoryModel.h>

namespace zonstory {

/// A scene of the body and where it stands there.
struct SelectedScene {
    boost::intrusive_ptr<zonstoryparser::Scene> scene;
    std::size_t position = 0; ///< From 1.
};

/// The scene number that is written for it: its own, or its position with three digits, "007".
zoncore::UString NumberToWrite(const SelectedScene& selected);

/// A name that no scene answers to, or more than one; what() says so, with the scenes in question.
class SceneSelectionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Finds scenes of a story's body by name: the number as the story writes it ("12A"), or "#" and the position from 1
/// ("#7"). Blanks around a name do not count.
class SceneSelection {
public:
    explicit SceneSelection(const zonstoryparser::Talewright& story);

    /// @param name  UTF-8.
    /// @throws SceneSelectionError
    SelectedScene Find(std::string_view name) const;

    /// Every scene, in order.
    std::vector<SelectedScene> All() const;

private:
    SelectedScene At(std::size_t index) const { return {mScenes[index], index + 1}; }
    [[noreturn]] void FailToFind(const std::string& name) const;
    std::string Describe(std::size_t index) const;

    std::vector<boost::intrusive_ptr<zonstoryparser::Scene>> mScenes;
    std::unordered_map<std::string, std::vector<std::size_t>> mByName;
};

} // namespace zonstory
