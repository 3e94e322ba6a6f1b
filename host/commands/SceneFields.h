#pragma once

#include "output/Record.h"
#include "story/SceneFacts.h"

namespace zonstory {

/// The scenes of a story, one a row, as the commands show them.
template <>
const Fields<SceneFacts>& FieldsOf<SceneFacts>();

} // namespace zonstory
