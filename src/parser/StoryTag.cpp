#include "parser/StoryTag.h"

#include <algorithm>

namespace zonstoryparser {

namespace {

struct TagName {
    std::u16string_view name;
    StoryTag code;
};

// The elements that a story has most of come first: this is asked twice for each of them.
constexpr TagName kTagCodes[] = {
    {u"paragraph", kTagParagraph},
    {u"textRun", kTagTextRun},
    {u"scene", kTagScene},
    {u"Tag", kTagTag},
    {u"section", kTagSection},
    {u"stream", kTagStream},
    {u"document", kTagDocument},
    {u"Talewright", kTagRoot},
    {u"commentStream", kTagCommentStream},
    {u"metaData", kTagMetaData},
};

} // namespace

StoryTag TagCode(std::u16string_view name) {
    for (const TagName& known : kTagCodes) {
        if (name.size() == known.name.size() && std::equal(name.begin(), name.end(), known.name.begin())) {
            return known.code;
        }
    }
    return kTagUnknown;
}

} // namespace zonstoryparser
