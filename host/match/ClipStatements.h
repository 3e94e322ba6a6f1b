#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "match/Decision.h"

namespace zonstory {

/// What a field for a scene number says: of metadata, at most of High confidence.
/// @param source  IXml or Xmp.
/// @param take    The field beside it; may be empty.
Statement StateField(Source source, std::string_view scene, std::string_view take);

/// What a clip's path says by itself, where no other names stand beside it.
/// @param path  Absolute, or as far as it is to count.
std::vector<Statement> StatePath(const std::string& path, const SceneNumbers& story, SlateStyle style);

} // namespace zonstory
