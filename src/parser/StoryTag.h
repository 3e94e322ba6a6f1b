#pragma once

#include <cstdint>
#include <string_view>

namespace zonstoryparser {

/// The elements of a story file.
enum StoryTag : std::int32_t {
    kTagRoot = 100,
    kTagDocument = 101,
    kTagStream = 102,
    kTagSection = 103,
    kTagScene = 104,
    kTagParagraph = 105,
    kTagTextRun = 106,
    kTagCommentStream = 107,
    kTagMetaData = 108,
    kTagTag = 109,
    kTagUnknown = 110,
};

/// The element of this name; kTagUnknown for any other.
StoryTag TagCode(std::u16string_view name);

} // namespace zonstoryparser
