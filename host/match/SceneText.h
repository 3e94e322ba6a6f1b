#pragma once

#include <string>
#include <string_view>

namespace zonstory {

/// A scene number as it is compared: capitals, no zeros in front, no words or signs around it, letters next to their
/// number ("Sc. 012-a" is "12A") and a dot between numbers ("12-1" is "12.1"). Empty for text without letters or digits.
std::string CanonicalSceneNumber(std::string_view text);

} // namespace zonstory
