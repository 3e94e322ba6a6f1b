#pragma once

#include <string>
#include <vector>

namespace zonstory {

/// How a stretch of a result looks: green and red where colours are used, else between {+ and +}, [- and -].
enum class Look { Plain, Added, Struck };

struct StyledStretch {
    Look look = Look::Plain;
    std::string text;
};
using StyledText = std::vector<StyledStretch>;

} // namespace zonstory
