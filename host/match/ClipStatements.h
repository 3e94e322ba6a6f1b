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

/// What a clip's path says: its file's name, its folder's, and those folders above that name a scene in words.
/// @param path  Absolute, or as far as it is to count.
std::vector<Statement> StatePath(std::string_view path, SlateStyle style);

} // namespace zonstory
