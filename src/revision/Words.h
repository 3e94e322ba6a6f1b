#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <zonstoryparser/StoryComparison.h>

namespace zonstoryparser {

/// A word as a number, the same for the same word of either draft, so that texts are compared and counted fast.
using Word = std::uint32_t;
using Words = std::vector<Word>;

/// Gives words their numbers. Keeps no text: what is split must outlive it.
class WordNumbers {
public:
    Words Split(std::u16string_view text);
    /// One number for a whole text.
    Word Of(std::u16string_view text);
    std::size_t Count() const { return mNumbers.size(); }

private:
    std::unordered_map<std::u16string_view, Word> mNumbers;
};

/// A stretch of words: kept, of both texts; else of one of them.
struct WordSpan {
    WordRun::Kind kind;
    std::size_t begin; ///< In the old text for what went, in the new one for all else.
    std::size_t end;
};

/// As CompareWords().
std::vector<WordSpan> CompareWordNumbers(const Words& oldWords, const Words& newWords);

WordCounts CountChanges(const Words& oldWords, const Words& newWords);

} // namespace zonstoryparser
