#include "match/NamePieces.h"

#include <algorithm>
#include <utility>

#include "match/GluedLetters.h"
#include "match/NameNoise.h"
#include "match/NameRuns.h"

namespace zonstory {

namespace {

constexpr std::size_t kLongestNumber = 4; ///< Of digits that can be a scene or a take.

class Cutter {
public:
    Cutter(std::string_view name, const SceneNumbers* story, bool isField) : mRuns(name), mIsField(isField) {
        if (story != nullptr && story->HasParts()) {
            JoinParts(*story);
        }
        if (!isField) {
            MarkNoise(mRuns);
        }
    }

    NamePieces Cut() {
        for (std::size_t begin = 0; begin < mRuns.size();) {
            const std::size_t end = EndOfChunk(begin);
            CutChunk(begin, end);
            begin = end;
        }
        for (std::size_t at = 0; at < mPieces.numbers.size(); ++at) {
            Settle(at);
        }
        return std::move(mPieces);
    }

private:
    // "2.28", "101-12": one number where the story has it.
    void JoinParts(const SceneNumbers& story) {
        for (std::size_t run = 1; run < mRuns.size(); ++run) {
            const bool pair = mRuns[run - 1].digits && mRuns[run].digits && !mRuns[run - 1].joined &&
                              mRuns.Separator(run).size() == 1 && HasAny(mRuns.Separator(run), "-_./");
            mRuns[run].joined = pair && story.Has(Joined(run));
        }
    }

    std::string Joined(std::size_t run) const {
        std::string joined(WithoutLeadingZeros(mRuns.Text(run - 1)));
        joined += '.';
        joined += WithoutLeadingZeros(mRuns.Text(run));
        return joined;
    }

    std::size_t EndOfChunk(std::size_t run) const {
        std::size_t end = mRuns.ChunkEnd(run);
        while (end < mRuns.size() && mRuns[end].joined) {
            end = mRuns.ChunkEnd(end);
        }
        return end;
    }

    bool HasNoise(std::size_t begin, std::size_t end) const {
        for (std::size_t run = begin; run < end; ++run) {
            if (mRuns[run].noise) {
                return true;
            }
        }
        return false;
    }

    void CutChunk(std::size_t begin, std::size_t end) {
        if (HasNoise(begin, end)) {
            mPieces.noise = mPieces.noise || mPieces.numbers.empty();
            mPieces.shape += '#';
            mPieces.wordlessShape += '#';
            mWord = SlateWord::Unknown;
            mWordInFront = false;
        } else if (end == begin + 1 && !mRuns[begin].digits) {
            TakeWord(begin);
        } else {
            std::vector<NamedNumber> numbers;
            if (!CutNumbers(begin, end, numbers)) {
                numbers.clear();
                TakeUnknown(mRuns.Whole().substr(mRuns[begin].begin, mRuns[end - 1].end - mRuns[begin].begin));
            }
            for (NamedNumber& number : numbers) {
                Add(std::move(number));
                mLastRun = end - 1;
            }
            mWordInFront = false;
            mWord = SlateWord::Unknown;
            mApart.clear();
        }
    }

    void TakeUnknown(std::string_view word) {
        mPieces.unknownWords = true;
        if (mPieces.numbers.empty()) {
            mPieces.shape.append(word).append(1, ' ');
        }
        mWordInFront = true;
        mWord = SlateWord::Unknown;
    }

    void TakeWord(std::size_t run) {
        const std::string_view word = mRuns.Text(run);
        const SlateWord meaning = MeaningOf(word);
        if (meaning == SlateWord::NumberSign) {
            return;
        }
        if (word.size() == 1 && meaning == SlateWord::Unknown) {
            TakeLetter(run, word);
            return;
        }
        mWordInFront = meaning == SlateWord::Against || meaning == SlateWord::Remark;
        mPieces.against = mPieces.against || meaning == SlateWord::Against;
        mJoiner = meaning == SlateWord::Joiner;
        mPieces.remarks = mPieces.remarks || (meaning == SlateWord::Remark && !mPieces.numbers.empty());
        if (meaning == SlateWord::Unit && !mPieces.numbers.empty() && mPieces.numbers.back().letters.empty()) {
            mPieces.numbers.back().counter = true; // 24 fps
        }
        if (meaning == SlateWord::Unknown || meaning == SlateWord::Against) {
            TakeUnknown(word);
        }
        const bool counts = meaning == SlateWord::Counter && mApart.empty(); // "A cam 12-3" is a slate
        const bool says = (meaning >= SlateWord::Scene && meaning <= SlateWord::Take) || counts ||
                          (meaning == SlateWord::Remark && word.size() == 2);
        mWord = says ? meaning : SlateWord::Unknown;
        mApart.clear();
    }

    // "12 A 3" is set-up A; "A 12" may be A12, or 12 by camera A.
    void TakeLetter(std::size_t run, std::string_view letter) {
        const SlateWord below = mSceneInFront ? BelowScene(letter) : SlateWord::Unknown;
        const bool next = run + 1 < mRuns.size();
        if (below != SlateWord::Unknown && next && mRuns[run + 1].digits) {
            mWord = below;
        } else if (!mPieces.numbers.empty() && mLastRun + 1 == run && next && IsSetUp(letter) &&
                   mPieces.numbers.back().letters.empty() && IsTakeAt(run + 1)) {
            mPieces.numbers.back().letters = letter;
            mPieces.numbers.back().lettersApart = true;
        } else {
            mApart = letter;
        }
    }

    bool IsTakeAt(std::size_t run) const { return mRuns[run].digits || MeaningOf(mRuns.Text(run)) == SlateWord::Take; }

    // Letters, digits, letters, digits, …; false where a number is inside a word.
    bool CutNumbers(std::size_t begin, std::size_t end, std::vector<NamedNumber>& numbers) {
        NamedNumber first;
        first.word = mWord;
        first.counted = mWordInFront;
        first.apart = mApart;
        if (mWord == SlateWord::Scene) { // Scene A 12
            first.prefix = std::exchange(first.apart, {});
        }
        std::size_t run = begin;
        if (!mRuns[run].digits && !ReadFront(mRuns.Text(run++), mSceneInFront, first)) {
            return false;
        }
        first.separator = Sign(begin);
        numbers.push_back(std::move(first));
        while ((run = ReadDigits(run, numbers.back())) < end) {
            const std::string_view letters = mRuns.Text(run++);
            if (run == end) {
                return ReadBack(letters, numbers.back());
            }
            NamedNumber next;
            if (!ReadMiddle(letters, numbers.back(), next)) {
                return false;
            }
            numbers.push_back(std::move(next));
        }
        return true;
    }

    std::size_t ReadDigits(std::size_t run, NamedNumber& number) {
        number.place = static_cast<std::uint32_t>(run);
        number.padded = mRuns.Text(run).front() == '0';
        number.value = mRuns[run].value;
        number.wide = mRuns.Length(run) >= kLongestNumber;
        number.digits = WithoutLeadingZeros(mRuns.Text(run));
        number.counter = mRuns.Length(run) > kLongestNumber || HasAny(mRuns.Separator(run), "(:");
        if (run + 1 < mRuns.size() && mRuns[run + 1].joined) {
            number.digits = Joined(run + 1);
            return run + 2;
        }
        return run + 1;
    }

    char Sign(std::size_t run) const {
        const std::string_view separator = mRuns.Separator(run);
        const std::size_t sign = separator.find_first_not_of(' ');
        return separator.empty() ? '\0' : separator[sign == std::string_view::npos ? 0 : sign];
    }

    void Add(NamedNumber number) {
        NamedNumber* const last = mPieces.numbers.empty() ? nullptr : &mPieces.numbers.back();
        const bool isJoined = mJoiner || number.separator == '&' || number.separator == '+' || number.separator == ',';
        number.joined = last != nullptr && ((number.word == SlateWord::Unknown && isJoined) ||
                                            (last->word == SlateWord::Scenes && number.separator == '-'));
        mJoiner = false;
        mPieces.remarks = mPieces.remarks || number.word == SlateWord::Remark;
        mSceneInFront = mSceneInFront || IsSceneWord(number.word);
        const std::string key = Key(number);
        mPieces.numbers.push_back(std::move(number));
        mPieces.shape += key;
        mPieces.wordlessShape += key;
    }

    static std::string Key(const NamedNumber& number) {
        const int flags = (number.prefix.empty() ? 0 : 1) + (number.joined ? 2 : 0) + (number.counter ? 4 : 0);
        return {number.separator == '\0' ? '/' : number.separator,
                static_cast<char>('a' + static_cast<int>(number.word)), static_cast<char>('0' + flags)};
    }

    // What only the numbers beside it tell of one.
    void Settle(std::size_t at) {
        NamedNumber& number = mPieces.numbers[at];
        const bool two = number.word == SlateWord::Unknown && number.letters == "U" && number.value <= 3;
        if (!mIsField && at == 0 && two && mPieces.numbers.size() > 2) { // 2U_18A-6, of the second unit
            number.word = SlateWord::Counter;
        }
        if (number.word == SlateWord::Scenes) {
            number.word = SlateWord::Scene;
        }
    }

    NameRuns mRuns;
    bool mIsField;
    NamePieces mPieces;
    SlateWord mWord = SlateWord::Unknown; ///< Of the word in front.
    bool mSceneInFront = false;
    bool mWordInFront = false; ///< One that nobody knows.
    bool mJoiner = false;
    std::string mApart;
    std::size_t mLastRun = 0; ///< Of the last number's chunk.
};

} // namespace

bool NamePieces::Has(SlateWord word) const {
    return std::any_of(numbers.begin(), numbers.end(),
                       [word](const NamedNumber& number) { return number.word == word; });
}

NamePieces CutName(std::string_view name, const SceneNumbers* story, bool isField) {
    return Cutter(name, story, isField).Cut();
}

} // namespace zonstory
