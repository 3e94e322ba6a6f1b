#pragma once

#include <string_view>

#include <zonstoryparser/StoryModel.h>

namespace zonscreenplay {

/// What becomes of a paragraph.
enum class FdxFate {
    Known,   ///< The model has a kind for it.
    Assumed, ///< Nobody knows the kind: it is action, so that no text is lost.
    LeftOut, ///< It is about the script and none of its text.
};

struct FdxKind {
    FdxFate fate = FdxFate::Known;
    zonstoryparser::ElementType element = zonstoryparser::kAction;
};

/// What becomes of a paragraph whose "Type" is this; empty when it has none.
FdxKind KindOfParagraph(std::u16string_view type);

} // namespace zonscreenplay
