#pragma once

#include <set>
#include <string>

namespace zonstory {

/// Names files after scenes: safe on every file system, and never the same name twice.
class PacketNames {
public:
    /// "scene-12A.xmp" for the number "12A". What a file name had better not hold becomes a hyphen ("12A/B": "12A-B"),
    /// a long number is cut, and a name that is taken, in whatever case, gets a number of its own: "scene-12A-B_2.xmp".
    /// @param number  UTF-8.
    std::string NameFor(const std::string& number);

private:
    std::set<std::string> mTaken; // in lower case: some file systems know no other
};

} // namespace zonstory
