#include "match/SlateReader.h"

#include <algorithm>
#include <iterator>

// How sure a number is to be the scene.
namespace zonstory {

namespace {

using Kind = SlateAtom::Kind;

template <std::size_t Size>
bool IsOneOf(const std::uint32_t (&values)[Size], std::uint32_t value) {
    return std::find(std::begin(values), std::end(values), value) != std::end(values);
}

// Lines of a picture, samples of a colour, a year: a scene only where letters or a take say so.
bool IsOftenNoScene(std::uint32_t value) {
    constexpr std::uint32_t kValues[] = {480, 540, 576, 709, 720, 422, 444, 4444};
    return IsOneOf(kValues, value) || (value >= 1900 && value < 2100);
}

// 4K, 25p, 48k: sizes and rates that are set-ups only where the rest of the name leaves no doubt.
bool IsSizeOrRate(std::uint32_t value, std::string_view letters) {
    constexpr std::uint32_t kThousands[] = {2, 3, 4, 5, 6, 8, 44, 48, 96, 192};
    constexpr std::uint32_t kRates[] = {24, 25, 30, 50, 60, 100, 120};
    return (letters == "K" && IsOneOf(kThousands, value)) || (letters == "P" && IsOneOf(kRates, value));
}

// 3D, 2x, 24h, a two-shot's 2S, 12K: set-ups where a take follows.
bool IsOftenNoSetUp(std::uint32_t value, std::string_view letters) {
    return (letters == "D" && value <= 3) || (letters == "X" && value <= 10) ||
           (letters == "H" && (value == 24 || value == 48)) || (letters == "S" && value <= 3) ||
           (letters == "K" && value == 12) || (letters == "G" && value <= 5);
}

} // namespace

// What no take and no scene word speaks for, and cameras, disks and formats are called.
bool SlateReader::LooksLikeSomethingElse(const Slate& slate) const {
    const SlateAtom& atom = mAtoms[slate.at];
    const std::size_t digits = mName.Length(atom.number);
    const bool zeros = mName.StartsWithZero(atom.number);
    const bool spoken = slate.take.kind == TakeKind::Spoken;
    const bool take = spoken || slate.take.kind == TakeKind::Bare;
    if (atom.prefix.empty() && IsSizeOrRate(Value(slate.at), atom.letters)) {
        return !spoken || slate.take.atom != slate.at + 1 || !IsWhole(slate);
    }
    if (atom.prefix.empty() && IsOftenNoSetUp(Value(slate.at), atom.letters)) {
        return !take || (!spoken && !IsWhole(slate));
    }
    if (!atom.prefix.empty()) {
        const bool lettered = take && !atom.letters.empty();
        const bool dashed = take && !HasAny(mName.Separator(mAtoms[slate.take.atom].begin), "_");
        return zeros && digits >= 3 && !spoken && !lettered &&
               !dashed; // A012 is a reel, A012_3 one of its clips, A012-3 a slate
    }
    if (atom.letters.empty()) {
        return IsOftenNoScene(Value(slate.at)) && !spoken;
    }
    return zeros && digits >= 4 && atom.letters.size() == 2 && !take; // 0012AB is a file of a memory card
}

SlateReader::Verdict SlateReader::Judge(const Slate& slate) const {
    if (IsSeason(slate)) {
        return {};
    }
    return slate.marker == Marker::None ? JudgeUnmarked(slate) : JudgeMarked(slate);
}

SlateReader::Verdict SlateReader::JudgeMarked(const Slate& slate) const {
    if (slate.marker == Marker::Scene) {
        return {SlateRule::SceneWord, Confidence::High};
    }
    const bool take = slate.take.kind != TakeKind::None;
    if (slate.marker == Marker::Slate) {
        return {SlateRule::SlateWord, take || HasLetters(slate) ? Confidence::High : Confidence::Medium};
    }
    if (slate.take.kind == TakeKind::Spoken || slate.take.kind == TakeKind::Far ||
        (slate.take.kind == TakeKind::Bare && HasLetters(slate))) {
        return {SlateRule::SceneLetter, Confidence::High};
    }
    return {SlateRule::SceneLetter, take || IsWhole(slate) ? Confidence::Medium : Confidence::Low};
}

SlateReader::Verdict SlateReader::JudgeUnmarked(const Slate& slate) const {
    if (LooksLikeSomethingElse(slate)) {
        return {};
    }
    if (!mAtoms[slate.at].tail.empty()) {
        return {SlateRule::AmongWords, Confidence::Low};
    }
    return slate.take.kind == TakeKind::Spoken || slate.take.kind == TakeKind::Bare ? JudgeWithTake(slate)
                                                                                    : JudgeAlone(slate);
}

SlateReader::Verdict SlateReader::JudgeWithTake(const Slate& slate) const {
    if (slate.take.kind == TakeKind::Spoken) {
        return {SlateRule::NumberAndTakeWord, Confidence::High};
    }
    if (HasLetters(slate)) {
        return {SlateRule::SetUpAndTake, Confidence::High};
    }
    const auto isCounter = [&](std::size_t at) {
        return mName.StartsWithZero(mAtoms[at].number) && mName.Length(mAtoms[at].number) >= 4;
    };
    const bool counters = isCounter(slate.at) && isCounter(slate.take.atom);
    return {SlateRule::NumberAndTake, IsChain(slate.take.atom) || counters ? Confidence::Low : Confidence::Medium};
}

SlateReader::Verdict SlateReader::JudgeAlone(const Slate& slate) const {
    if (slate.take.kind == TakeKind::Far) {
        return {SlateRule::NumberAndTakeWord, Confidence::Medium};
    }
    const SlateAtom& atom = mAtoms[slate.at];
    const SlateAtom* const before = slate.at > 0 ? &mAtoms[slate.at - 1] : nullptr;
    const bool behindNoise = before != nullptr && before->kind == Kind::Noise; // whose take it may be
    const bool behindNumber = behindNoise && mName[before->begin].digits;
    const bool counter =
        mLooseDigits || behindNoise || (mName.StartsWithZero(atom.number) && mName.Length(atom.number) >= 4);
    if (IsWhole(slate) && (HasLetters(slate) ? !behindNumber : !counter)) {
        return {SlateRule::NumberAlone, Confidence::Medium};
    }
    return {SlateRule::AmongWords, Confidence::Low};
}

} // namespace zonstory
