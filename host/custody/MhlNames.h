#pragma once

#include <string_view>

#include "custody/HashListNames.h"

namespace zonstory {

/// The files of an MHL: <file> in a <hash>, or <path> as the ASC has it; what it says of folders and of other lists is
/// none. No entity and no document type is expanded.
/// @throws HashListError
void ReadMhlNames(std::string_view bytes, const NameReceiver& receive);

} // namespace zonstory
