#pragma once

#include <zonstoryparser/StoryModel.h>

namespace zonscreenplay {

/// The kind of a paragraph as the "element" attribute of a story file says it; empty for an unknown one.
const char16_t* ElementWord(zonstoryparser::ElementType element);

} // namespace zonscreenplay
