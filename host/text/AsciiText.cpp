#include "text/AsciiText.h"

#include <algorithm>

namespace zonstory {

std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) { return LowerCase(letter); });
    return text;
}

std::vector<std::string_view> WordsOf(std::string_view list) {
    std::vector<std::string_view> words;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(' ', begin), list.size());
        words.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return LowerCase(one) == LowerCase(other); });
}

} // namespace zonstory
