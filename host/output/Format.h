#pragma once

namespace zonstory {

/// What results are printed as.
enum class Format { Text, Json, Csv };

} // namespace zonstory
