#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What is ASCII in a text of any encoding that contains it; other bytes are left alone and equal only themselves. What
/// the user's language settings say does not count.
namespace zonstory {

/// Without the spaces, tabs and line ends around it.
std::string_view WithoutBlanks(std::string_view text);

constexpr char LowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string LowerCase(std::string text);

/// The words of a list that is parted by single blanks.
std::vector<std::string_view> WordsOf(std::string_view list);

bool EqualIgnoringCase(std::string_view left, std::string_view right);

} // namespace zonstory
