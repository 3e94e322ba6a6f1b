#pragma once

#include <cstddef>

#include <zoncore/UString.h>

namespace zonstory {

/// How many words a text has, as a person would count them.
///
/// A word is a run of letters and digits; an apostrophe, a hyphen, a dot or the like between two of them belongs to it,
/// so "don't", "Smith-Jones" and "3.50" are one word each, and a dash alone is none. Chinese and Japanese put no blanks
/// between words: each of their characters (Han, Hiragana, Katakana) counts as one, as word processors count them.
/// Korean is counted by its blanks. So are Thai, Lao, Khmer and Burmese, where a stretch between blanks is a phrase.
std::size_t CountWords(const zoncore::UString& text);

} // namespace zonstory
