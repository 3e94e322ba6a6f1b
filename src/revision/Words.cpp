#include "revision/Words.h"

#include <algorithm>

namespace zonstoryparser {

namespace {

constexpr std::u16string_view kBlanks = u" \t\r\n\f\v\u00a0\u2028\u2029\u3000";
constexpr std::size_t kMostEdits = 1000; // the paths tried grow with its square

std::vector<std::u16string_view> SplitWords(std::u16string_view text) {
    std::vector<std::u16string_view> words;
    std::size_t begin = text.find_first_not_of(kBlanks);
    while (begin != std::u16string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, begin), text.size());
        words.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(kBlanks, end);
    }
    return words;
}

// Between words that both texts have, first stands all that went and then all that came, which is how people read it.
void Append(std::vector<WordSpan>& spans, WordSpan span) {
    if (span.begin == span.end) {
        return;
    }
    const bool isBehindIn = span.kind == WordRun::Kind::Out && !spans.empty() && spans.back().kind == WordRun::Kind::In;
    const auto place = spans.end() - (isBehindIn ? 1 : 0);
    if (place != spans.begin() && std::prev(place)->kind == span.kind && std::prev(place)->end == span.begin) {
        std::prev(place)->end = span.end;
    } else {
        spans.insert(place, span);
    }
}

// The middle parts of two texts, which neither begin nor end alike.
class MiddleComparison {
public:
    MiddleComparison(const Words& oldWords, const Words& newWords, std::size_t begin, std::size_t oldEnd,
                     std::size_t newEnd)
        : mOld(oldWords), mNew(newWords), mBegin(begin), mOldCount(static_cast<long>(oldEnd - begin)),
          mNewCount(static_cast<long>(newEnd - begin)) {}

    void AppendTo(std::vector<WordSpan>& spans) {
        if (mOldCount == 0 || mNewCount == 0 || !FindPath()) {
            AppendOut(spans, 0, mOldCount);
            AppendIn(spans, 0, mNewCount);
            return;
        }
        for (const Step& step : WalkBack()) {
            AppendOut(spans, step.oldFrom, step.oldTo);
            AppendIn(spans, step.newFrom, step.newTo);
            AppendKept(spans, step.newTo, step.newKept);
        }
    }

private:
    // One edit, and the words behind it that both texts have.
    struct Step {
        long oldFrom, oldTo, newFrom, newTo, newKept;
    };

    bool IsAlike(long oldIndex, long newIndex) const {
        return mOld[mBegin + static_cast<std::size_t>(oldIndex)] == mNew[mBegin + static_cast<std::size_t>(newIndex)];
    }

    // mReached[edits][diagonal]: how far into the old text so many edits lead on a diagonal (old index less new index).
    long Reached(std::size_t edits, long diagonal) const {
        return mReached[edits][static_cast<std::size_t>(diagonal + static_cast<long>(edits))];
    }

    bool ComesFromAbove(std::size_t edits, long diagonal) const {
        const long limit = static_cast<long>(edits);
        return diagonal == -limit ||
               (diagonal != limit && Reached(edits - 1, diagonal - 1) < Reached(edits - 1, diagonal + 1));
    }

    long StartOf(std::size_t edits, long diagonal) const {
        if (edits == 0) {
            return 0;
        }
        return ComesFromAbove(edits, diagonal) ? Reached(edits - 1, diagonal + 1)
                                               : Reached(edits - 1, diagonal - 1) + 1;
    }

    bool FindPath() {
        for (std::size_t edits = 0; edits <= kMostEdits; ++edits) {
            const long limit = static_cast<long>(edits);
            mReached.emplace_back(2 * edits + 1, 0);
            for (long diagonal = -limit; diagonal <= limit; diagonal += 2) {
                long oldIndex = StartOf(edits, diagonal);
                long newIndex = oldIndex - diagonal;
                while (oldIndex < mOldCount && newIndex < mNewCount && newIndex >= 0 && IsAlike(oldIndex, newIndex)) {
                    ++oldIndex;
                    ++newIndex;
                }
                mReached[edits][static_cast<std::size_t>(diagonal + limit)] = oldIndex;
                if (oldIndex >= mOldCount && newIndex >= mNewCount) {
                    return true;
                }
            }
        }
        return false;
    }

    std::vector<Step> WalkBack() const {
        std::vector<Step> steps;
        long oldIndex = mOldCount;
        long newIndex = mNewCount;
        for (std::size_t edits = mReached.size() - 1; edits > 0; --edits) {
            const long diagonal = oldIndex - newIndex;
            const bool isInsertion = ComesFromAbove(edits, diagonal);
            const long oldTo = StartOf(edits, diagonal);
            const long newTo = oldTo - diagonal;
            const long oldFrom = isInsertion ? oldTo : oldTo - 1;
            const long newFrom = isInsertion ? newTo - 1 : newTo;
            steps.push_back({oldFrom, oldTo, newFrom, newTo, newIndex});
            oldIndex = oldFrom;
            newIndex = newFrom;
        }
        steps.push_back({0, 0, 0, 0, newIndex});
        std::reverse(steps.begin(), steps.end());
        return steps;
    }

    void AppendOut(std::vector<WordSpan>& spans, long from, long to) const {
        Append(spans, {WordRun::Kind::Out, At(from), At(to)});
    }
    void AppendIn(std::vector<WordSpan>& spans, long from, long to) const {
        Append(spans, {WordRun::Kind::In, At(from), At(to)});
    }
    void AppendKept(std::vector<WordSpan>& spans, long from, long to) const {
        Append(spans, {WordRun::Kind::Kept, At(from), At(to)});
    }
    std::size_t At(long index) const { return mBegin + static_cast<std::size_t>(index); }

    const Words& mOld;
    const Words& mNew;
    std::size_t mBegin;
    long mOldCount;
    long mNewCount;
    std::vector<std::vector<long>> mReached;
};

UString Joined(const std::vector<std::u16string_view>& words, const WordSpan& span) {
    UString text;
    for (std::size_t index = span.begin; index < span.end; ++index) {
        text.append(text.empty() ? u"" : u" ").append(words[index]);
    }
    return text;
}

} // namespace

Words WordNumbers::Split(std::u16string_view text) {
    Words numbers;
    for (const std::u16string_view word : SplitWords(text)) {
        numbers.push_back(Of(word));
    }
    return numbers;
}

Word WordNumbers::Of(std::u16string_view text) {
    return mNumbers.try_emplace(text, static_cast<Word>(mNumbers.size())).first->second;
}

std::vector<WordSpan> CompareWordNumbers(const Words& oldWords, const Words& newWords) {
    const auto [oldIt, newIt] = std::mismatch(oldWords.begin(), oldWords.end(), newWords.begin(), newWords.end());
    const auto begin = static_cast<std::size_t>(oldIt - oldWords.begin());
    std::size_t oldEnd = oldWords.size();
    std::size_t newEnd = newWords.size();
    while (oldEnd > begin && newEnd > begin && oldWords[oldEnd - 1] == newWords[newEnd - 1]) {
        --oldEnd;
        --newEnd;
    }
    std::vector<WordSpan> spans;
    Append(spans, {WordRun::Kind::Kept, 0, begin});
    MiddleComparison(oldWords, newWords, begin, oldEnd, newEnd).AppendTo(spans);
    Append(spans, {WordRun::Kind::Kept, newEnd, newWords.size()});
    return spans;
}

WordCounts CountChanges(const Words& oldWords, const Words& newWords) {
    WordCounts counts;
    for (const WordSpan& span : CompareWordNumbers(oldWords, newWords)) {
        counts.in += span.kind == WordRun::Kind::In ? span.end - span.begin : 0;
        counts.out += span.kind == WordRun::Kind::Out ? span.end - span.begin : 0;
    }
    return counts;
}

std::vector<WordRun> CompareWords(const UString& oldText, const UString& newText) {
    WordNumbers numbers;
    const std::vector<std::u16string_view> oldWords = SplitWords(oldText);
    const std::vector<std::u16string_view> newWords = SplitWords(newText);
    std::vector<WordRun> runs;
    for (const WordSpan& span : CompareWordNumbers(numbers.Split(oldText), numbers.Split(newText))) {
        runs.push_back({span.kind, Joined(span.kind == WordRun::Kind::Out ? oldWords : newWords, span)});
    }
    return runs;
}

} // namespace zonstoryparser
