#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Made-up shoots: paths as crews, cameras and editors name files, with the scene and the take that each one shows.
namespace zonstory::bench {

/// Which tables a shoot is made from. What reads names is worked on with the first, and only measured on the second.
enum class Part { Tuning, HeldOut, Second, Third };

struct MadeClip {
    std::string path;
    std::optional<std::size_t> scene; ///< Its place in the story; nothing where the name is of no scene.
    std::string take;                 ///< Empty where nothing gives it.
    std::size_t day = 0;              ///< The place of what was shot, among all that was.
    std::string ixmlScene, ixmlTake;  ///< Of a recorder; empty without one.
};

struct Shoot {
    std::string kind;    ///< "name", "folder", "log", "iXML", "taught", "other", "lone".
    std::string pattern; ///< The row of the table that its names come from.
    std::vector<std::string> story;
    std::vector<MadeClip> clips;
    std::string log; ///< Its text; empty without one.
};

/// All shoots of one part, the same ones on every machine.
std::vector<Shoot> MakeShoots(Part part);

} // namespace zonstory::bench
