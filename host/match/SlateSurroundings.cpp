#include "match/SlateReader.h"

// What stands around a number.
namespace zonstory {

namespace {

using Kind = SlateAtom::Kind;

constexpr std::uint32_t kHighestTake = 199;

} // namespace

SlateReader::Slate SlateReader::Surroundings(std::size_t at) const {
    Slate slate;
    slate.at = at;
    slate.prefix = mAtoms[at].prefix;
    slate.marker = MarkerInFront(at, slate.prefix, slate.apart);
    slate.take = FindTake(at);
    return slate;
}

SlateReader::Marker SlateReader::MarkerInFront(std::size_t at, std::string_view& prefix,
                                               std::string_view& apart) const {
    const auto markerOf = [](SlateWord word) {
        return word == SlateWord::Scene         ? Marker::Scene
               : word == SlateWord::Slate       ? Marker::Slate
               : word == SlateWord::SceneLetter ? Marker::Letter
                                                : Marker::None;
    };
    if (const Marker own = markerOf(mAtoms[at].word); own != Marker::None || at == 0) {
        return own;
    }
    std::size_t front = at - 1;
    while (front > 0 && mAtoms[front].kind == Kind::Word && mAtoms[front].word == SlateWord::NumberSign) {
        --front;
    }
    const SlateAtom& before = mAtoms[front];
    if (before.kind != Kind::Word) {
        return Marker::None;
    }
    if (before.IsLetter() && before.word == SlateWord::Unknown && prefix.empty()) {
        if (front > 0 && mAtoms[front - 1].IsSceneWord()) { // Scene A 12
            prefix = before.letters;
            return Marker::Scene;
        }
        apart = before.letters;
    }
    return markerOf(before.word);
}

// A letter between number and take: "12 A 3".
bool SlateReader::IsSetUpApart(std::size_t at) const {
    const SlateAtom& atom = mAtoms[at];
    const bool take = at + 1 < mAtoms.size() && (mAtoms[at + 1].kind == Kind::Take || mAtoms[at + 1].IsPlainNumber());
    return atom.kind == Kind::Word && take && IsSetUp(atom.letters) &&
           (atom.word == SlateWord::Unknown || atom.IsLetter()) && atom.word != SlateWord::Take;
}

// "99A_37-3": the dash binds closer, 37-3 is a slate of its own.
bool SlateReader::IsBoundToNext(std::size_t at) const {
    const auto isDash = [&](std::size_t atom) { return HasAny(mName.Separator(mAtoms[atom].begin), "-"); };
    return at + 1 < mAtoms.size() && mAtoms[at + 1].IsPlainNumber() && isDash(at + 1) && !isDash(at);
}

bool SlateReader::IsBareTake(std::size_t slate, std::size_t at) const {
    const SlateAtom& atom = mAtoms[at];
    if (IsBoundToNext(at)) {
        return false;
    }
    if (atom.kind != Kind::Number || HasAny(mName.Separator(atom.begin), "&+,") || Value(at) == 0 ||
        Value(at) > kHighestTake) {
        return false;
    }
    const bool camera = atom.letters.size() == 1 && atom.prefix.empty() && atom.take.empty() && atom.tail.empty() &&
                        atom.word == SlateWord::Unknown && mName.StartsWithZero(atom.number) &&
                        !mName.StartsWithZero(mAtoms[slate].number); // 12A-03B
    return atom.IsPlainNumber() || camera;
}

SlateReader::Take SlateReader::FindTake(std::size_t at) const {
    Take take;
    if (!mAtoms[at].take.empty()) {
        take.kind = TakeKind::Spoken;
        take.digits = mAtoms[at].take;
        take.atom = at;
        return take;
    }
    bool noise = false;
    for (std::size_t next = at + 1; next < mAtoms.size(); ++next) {
        const SlateAtom& atom = mAtoms[next];
        if (atom.kind == Kind::Take || (!noise && IsBareTake(at, next))) {
            take.kind = atom.kind == Kind::Take ? TakeKind::Spoken : TakeKind::Bare;
            take.atom = next;
            take.digits = mName.Text(atom.number);
            return take;
        }
        if (next == at + 1 && mAtoms[at].letters.empty() && IsSetUpApart(next)) {
            take.setUp = atom.letters;
            continue;
        }
        const bool passed = atom.kind == Kind::Noise ||
                            (atom.kind == Kind::Word && (atom.word != SlateWord::Unknown || atom.IsLetter()) &&
                             atom.word != SlateWord::Scene && atom.word != SlateWord::Joiner);
        if (!passed) {
            break;
        }
        noise = noise || atom.kind == Kind::Noise;
    }
    return FindFarTake();
}

// "7_roll2_take4": a take that no slate has used, wherever it stands.
SlateReader::Take SlateReader::FindFarTake() const {
    Take take;
    for (std::size_t far = 0; far < mAtoms.size(); ++far) {
        if (mAtoms[far].kind == Kind::Take && !mUsed[far]) {
            take.kind = TakeKind::Far;
            take.atom = far;
            take.digits = mAtoms[far].take;
            break;
        }
    }
    return take;
}

// "12+13", "12 & 13", "12 and 13".
bool SlateReader::IsJoinedToNext(std::size_t at) const {
    if (at + 1 >= mAtoms.size()) {
        return false;
    }
    const SlateAtom& next = mAtoms[at + 1];
    if (next.kind == Kind::Number) {
        return HasAny(mName.Separator(next.begin), "&+,");
    }
    return next.kind == Kind::Word && next.word == SlateWord::Joiner && at + 2 < mAtoms.size() &&
           mAtoms[at + 2].kind == Kind::Number;
}

std::size_t SlateReader::NextNumber(std::size_t at) const {
    return mAtoms[at + 1].kind == Kind::Number ? at + 1 : at + 2;
}

// S01 E02.
bool SlateReader::IsSeason(const Slate& slate) const {
    if (slate.marker != Marker::Letter || slate.at + 1 >= mAtoms.size()) {
        return false;
    }
    const SlateAtom& next = mAtoms[slate.at + 1];
    return (next.kind == Kind::Number && (next.prefix == "E" || next.prefix == "EP")) ||
           (next.kind == Kind::Word && (next.letters == "E" || next.letters == "EP")) ||
           (next.kind == Kind::Noise && mName.Text(next.begin).substr(0, 2) == "EP");
}

bool SlateReader::HasLetters(const Slate& slate) const {
    return !slate.prefix.empty() || !mAtoms[slate.at].letters.empty() || !slate.take.setUp.empty();
}

// Nothing in the name but this number, its take and what cameras and crews add.
bool SlateReader::IsWhole(const Slate& slate) const {
    if (mUnknownWords || mReel) {
        return false;
    }
    std::size_t lastJoined = slate.at;
    while (IsJoinedToNext(lastJoined)) {
        lastJoined = NextNumber(lastJoined);
    }
    for (std::size_t at = 0; at < mAtoms.size(); ++at) {
        const bool own =
            (at >= slate.at && at <= lastJoined) || (slate.take.kind == TakeKind::Bare && at == slate.take.atom);
        if (mAtoms[at].kind == Kind::Number && !own && !mUsed[at]) {
            return false;
        }
    }
    return true;
}

// "12-1-3": episode, scene, shot, take, who knows. The number is the second or a later one.
bool SlateReader::IsChain(std::size_t at) const {
    return at + 1 < mAtoms.size() && mAtoms[at + 1].IsPlainNumber() &&
           mName.Separator(mAtoms[at + 1].begin) == mName.Separator(mAtoms[at].begin);
}

} // namespace zonstory
