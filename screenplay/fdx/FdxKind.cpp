#include "fdx/FdxKind.h"

#include <algorithm>

#include <zoncore/CaseInsensitive.h>

namespace zonscreenplay {

namespace {

struct Row {
    std::u16string_view type;
    FdxKind kind;
};

constexpr FdxKind Carried(zonstoryparser::ElementType element) {
    return {FdxFate::Known, element};
}

constexpr FdxKind kLeftOut = {FdxFate::LeftOut, zonstoryparser::kAction};

constexpr Row kRows[] = {
    {u"Action", Carried(zonstoryparser::kAction)},
    {u"Dialogue", Carried(zonstoryparser::kDialog)},
    {u"Character", Carried(zonstoryparser::kCharacter)},
    {u"Scene Heading", Carried(zonstoryparser::kSceneHeading)},
    {u"Parenthetical", Carried(zonstoryparser::kParenthetical)},
    {u"Transition", Carried(zonstoryparser::kTransition)},
    {u"Shot", Carried(zonstoryparser::kShot)},
    {u"General", Carried(zonstoryparser::kAction)},
    {u"", Carried(zonstoryparser::kAction)},
    {u"Lyrics", Carried(zonstoryparser::kDialog)},
    {u"Singing", Carried(zonstoryparser::kDialog)},
    {u"Cast List", kLeftOut},
    {u"New Act", kLeftOut},
    {u"End of Act", kLeftOut},
    {u"Act Break", kLeftOut},
    {u"Summary", kLeftOut},
    {u"Note", kLeftOut},
};

constexpr std::u16string_view kOutline = u"Outline"; // and its levels: "Outline 1", "Outline Body"

bool IsSame(std::u16string_view left, std::u16string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), &zoncore::CaseInsensitive::EqualChar);
}

} // namespace

FdxKind KindOfParagraph(std::u16string_view type) {
    for (const Row& row : kRows) {
        if (IsSame(row.type, type)) {
            return row.kind;
        }
    }
    return IsSame(type.substr(0, kOutline.size()), kOutline) ? kLeftOut
                                                             : FdxKind{FdxFate::Assumed, zonstoryparser::kAction};
}

} // namespace zonscreenplay
