#pragma once

#include <optional>
#include <string>

#include <zonstoryparser/StoryModel.h>

namespace zonstory {

/// Why the library makes no packet of a scene, in one short clause; nothing when it makes one.
std::optional<std::string> ReasonForNoPacket(const zonstoryparser::Scene& scene);

} // namespace zonstory
