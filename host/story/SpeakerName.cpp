#include "story/SpeakerName.h"

#include <string_view>

namespace zonstory {

namespace {

using zoncore::UString;
using namespace std::string_view_literals;

constexpr std::u16string_view kBlanks = u" \t\r\n\u00a0\u3000";

std::u16string_view WithoutBlanks(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::u16string_view::npos ? u""sv : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

// Where the bracket that ends the text was opened; npos when none does, or when nothing stands before it.
std::size_t StartOfExtension(std::u16string_view text) {
    if (text.empty() || (text.back() != u')' && text.back() != u'）')) {
        return std::u16string_view::npos;
    }
    const std::size_t open = text.find_last_of(u"(（");
    return open == 0 ? std::u16string_view::npos : open;
}

} // namespace

UString SpeakerName(const UString& character) {
    std::u16string_view name = WithoutBlanks(character);
    for (std::size_t open = StartOfExtension(name); open != std::u16string_view::npos; open = StartOfExtension(name)) {
        name = WithoutBlanks(name.substr(0, open));
    }
    return UString(name);
}

} // namespace zonstory
