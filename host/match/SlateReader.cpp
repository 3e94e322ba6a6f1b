#include "match/SlateReader.h"

#include <algorithm>
#include <utility>

#include "match/NameNoise.h"

namespace zonstory {

namespace {

using Kind = SlateAtom::Kind;

constexpr std::uint32_t kRangeReach = 3; ///< "12-14" may be two scenes and what is between; "2-11" is a take.

} // namespace

SlateReader::SlateReader(std::string_view name) : mName(name) {
    MarkNoise(mName);
    mAtoms = ReadAtoms(mName);
    mUsed.resize(mAtoms.size());
    TakeStock();
}

std::vector<SlateReading> SlateReader::Read() {
    for (std::size_t at = 0; at < mAtoms.size(); ++at) {
        if (mAtoms[at].kind == Kind::Number && !mUsed[at]) {
            ReadNumber(at);
        }
    }
    AddDecimals();
    SettleLooseNumbers();
    return std::move(mReadings);
}

void SlateReader::TakeStock() {
    for (const SlateAtom& atom : mAtoms) {
        mUnknownWords |= atom.kind == Kind::Word && atom.word == SlateWord::Unknown && atom.letters.size() > 1;
        mReel |= atom.reel;
        mLooseDigits |= atom.kind == Kind::Noise && mName[atom.begin].digits && mName.Alone(atom.begin);
    }
}

std::string SlateReader::SceneOf(std::string_view prefix, std::size_t at, std::string_view setUp) const {
    std::string scene(prefix);
    scene += WithoutLeadingZeros(mName.Text(mAtoms[at].number));
    scene += mAtoms[at].letters;
    scene += setUp;
    return scene;
}

void SlateReader::ReadNumber(std::size_t at) {
    const Slate slate = Surroundings(at);
    const Verdict verdict = Judge(slate);
    if (verdict.confidence == Confidence::None) {
        return;
    }
    AddMain(slate, verdict);
    AddRivals(slate, verdict);
    if (slate.take.kind == TakeKind::Spoken) {
        mUsed[slate.take.atom] = true;
    }
    if (slate.take.kind == TakeKind::Bare) {
        AddRange(slate, verdict);
        std::size_t last = slate.take.atom;
        mUsed[last] = true;
        for (; IsChain(last); ++last) {
            mUsed[last + 1] = true;
        }
    }
    ReadPartners(at, verdict);
}

void SlateReader::AddMain(const Slate& slate, const Verdict& verdict) {
    SlateReading reading;
    reading.scene = SceneOf(slate.prefix, slate.at, slate.take.setUp);
    const std::string_view take = mAtoms[slate.at].tail.empty() ? slate.take.digits : mAtoms[slate.at].tail;
    reading.take = WithoutLeadingZeros(take);
    reading.rule = verdict.rule;
    reading.confidence = verdict.confidence;
    reading.place = static_cast<std::uint32_t>(mAtoms[slate.at].number);
    if (mAtoms[slate.at].letters.size() > 2) { // 12AAB needs the story's 12A; else it is a word
        reading.standing = Standing::Rival;
    }
    mReadings.push_back(std::move(reading));
}

void SlateReader::AddRival(std::string scene, std::string_view take, const Verdict& verdict, std::size_t place,
                           bool exactOnly) {
    SlateReading reading;
    reading.scene = std::move(scene);
    reading.take = WithoutLeadingZeros(take);
    reading.rule = verdict.rule;
    reading.confidence = verdict.confidence;
    reading.standing = Standing::Rival;
    reading.exactOnly = exactOnly;
    reading.place = static_cast<std::uint32_t>(place);
    mReadings.push_back(std::move(reading));
}

void SlateReader::AddRivals(const Slate& slate, const Verdict& verdict) {
    const SlateAtom& atom = mAtoms[slate.at];
    const std::size_t place = atom.number;
    if (!slate.take.setUp.empty()) { // "12 A 3" may be 12A, or 12 by camera A
        AddRival(SceneOf(slate.prefix, slate.at, {}), slate.take.digits, verdict, place, false);
    }
    if (!slate.apart.empty()) { // "A 12" may be A12, or 12 by camera A
        AddRival(SceneOf(slate.apart, slate.at, slate.take.setUp), slate.take.digits, verdict, place, false);
    }
    if (slate.marker == Marker::Letter && slate.prefix.empty() && atom.word == SlateWord::SceneLetter) {
        AddRival(SceneOf("S", slate.at, {}), slate.take.digits, verdict, place, true);
    }
    if (!atom.unread.empty()) {
        std::string whole(slate.prefix);
        whole += WithoutLeadingZeros(mName.Text(atom.number));
        AddRival(whole.append(atom.unread), slate.take.digits, verdict, place, false);
    }
    if (!atom.tail.empty()) { // 12A3 may be a number of the story
        std::string whole = SceneOf(slate.prefix, slate.at, {});
        whole += WithoutLeadingZeros(atom.tail);
        AddRival(std::move(whole), slate.take.digits, {verdict.rule, Confidence::Medium}, place, true);
    }
    const std::size_t next = slate.at + 1;
    if (atom.letters.empty() && atom.take.empty() && next < mAtoms.size() && mAtoms[next].kind == Kind::Number &&
        mAtoms[next].word == SlateWord::Unknown && mAtoms[next].prefix.empty()) {
        AddComposite(slate.at, next, std::max(verdict.confidence, Confidence::Medium), place);
    }
}

// "101-12", where the story numbers scenes within episodes. Says nothing unless the story has such a number.
void SlateReader::AddComposite(std::size_t first, std::size_t second, Confidence confidence, std::size_t place) {
    const std::string_view separator = mName.Separator(mAtoms[second].begin);
    if (separator.size() != 1 || !HasAny(separator, "-_./")) {
        return;
    }
    std::string scene = SceneOf(mAtoms[first].prefix, first, {});
    scene += '.';
    scene += SceneOf({}, second, {});
    const Take take = FindTake(second);
    const std::size_t at = mAtoms[second].letters.empty() ? place : mAtoms[second].number;
    AddRival(std::move(scene), take.digits, {SlateRule::NumberAndTake, confidence}, at, false);
}

// "12-14" may be the take or the last of three scenes.
void SlateReader::AddRange(const Slate& slate, const Verdict& verdict) {
    const SlateAtom& atom = mAtoms[slate.at];
    const std::size_t last = slate.take.atom;
    if (HasLetters(slate) || !mAtoms[last].IsPlainNumber()) {
        return;
    }
    const std::uint32_t first = Value(slate.at);
    const bool padded = mName.StartsWithZero(atom.number) != mName.StartsWithZero(mAtoms[last].number);
    const std::string_view separator = mName.Separator(mAtoms[last].begin);
    const bool joined = slate.marker == Marker::None || HasAny(separator, "-/");
    const bool range =
        joined && Value(last) > first && Value(last) <= first + kRangeReach && Value(last) >= 10 && !padded;
    const bool pair = Value(last) == first + 1 && HasAny(separator, "/");
    if (range || pair) {
        AddRival(SceneOf({}, last, {}), {}, verdict, mAtoms[last].number, false);
    }
}

void SlateReader::ReadPartners(std::size_t at, const Verdict& verdict) {
    while (IsJoinedToNext(at)) {
        at = NextNumber(at);
        Slate partner;
        partner.at = at;
        partner.prefix = mAtoms[at].prefix;
        AddMain(partner, verdict);
        mUsed[at] = true;
    }
}

// "12.1" was set aside as a decimal; a story may number so.
void SlateReader::AddDecimals() {
    for (std::size_t at = 0; at + 1 < mAtoms.size(); ++at) {
        const std::size_t first = mAtoms[at].begin;
        const std::size_t second = mAtoms[at + 1].begin;
        const bool decimal = mAtoms[at].kind == Kind::Noise && mAtoms[at + 1].kind == Kind::Noise &&
                             mName[first].digits && mName[second].digits && mName.Separator(second) == "." &&
                             mName.Alone(first) && mName.Alone(second);
        if (!decimal) {
            continue;
        }
        std::string scene(WithoutLeadingZeros(mName.Text(first)));
        scene += '.';
        scene += WithoutLeadingZeros(mName.Text(second));
        const bool sceneWord = at > 0 && mAtoms[at - 1].IsSceneWord();
        const Take take = FindTake(at + 1);
        const bool sure =
            sceneWord || take.kind == TakeKind::Spoken || take.kind == TakeKind::Bare || mAtoms.size() == 2;
        AddRival(std::move(scene), take.digits, {SlateRule::NumberAlone, sure ? Confidence::Medium : Confidence::Low},
                 first, true);
    }
}

// Numbers without take or scene word beside a whole slate. With a letter, or just in front of the slate, they may be the
// scene as well; any other number is a copy, a channel, a part of the title.
void SlateReader::SettleLooseNumbers() {
    const auto isLoose = [](const SlateReading& reading) {
        return reading.rule == SlateRule::AmongWords || reading.rule == SlateRule::NumberAlone;
    };
    Confidence best = Confidence::None;
    for (const SlateReading& reading : mReadings) {
        best = isLoose(reading) || reading.standing == Standing::Rival ? best : std::max(best, reading.confidence);
    }
    if (best < Confidence::Medium) {
        return;
    }
    const auto isInFront = [&](const SlateReading& reading) {
        return std::any_of(mReadings.begin(), mReadings.end(), [&](const SlateReading& other) {
            return !isLoose(other) && other.rule != SlateRule::SceneWord && other.rule != SlateRule::SceneLetter &&
                   other.place > reading.place && other.place <= reading.place + 2;
        });
    };
    for (SlateReading& reading : mReadings) {
        if (!isLoose(reading) || reading.standing == Standing::Rival) {
            continue;
        }
        const bool letters = !HasAny(reading.scene.substr(reading.scene.size() - 1), "0123456789");
        reading.confidence = letters || isInFront(reading) ? best : Confidence::None;
        reading.standing = Standing::Rival;
    }
    std::erase_if(mReadings, [](const SlateReading& reading) { return reading.confidence == Confidence::None; });
}

} // namespace zonstory
