#pragma once

#include <string_view>

#include "Require.h"

namespace fuzz {

/// What a target does with the fuzzer's bytes. Each defines it; the toolkit is started.
void TryInput(std::string_view bytes);

} // namespace fuzz
