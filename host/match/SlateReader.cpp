#include "match/SlateReader.h"

#include <algorithm>
#include <iterator>

#include "match/NameNoise.h"

namespace zonstory {

namespace {

using Kind = SlateAtom::Kind;

constexpr std::uint32_t kHighestTake = 199;
constexpr std::uint32_t kRangeReach = 3; ///< "12-14" may be two scenes and what is between; "2-11" is a take.

bool Contains(std::string_view characters, std::string_view text) {
    return text.find_first_of(characters) != std::string_view::npos;
}

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

// ---- What stands around a number --------------------------------------------------------------------------------------

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
    const auto isDash = [&](std::size_t atom) { return Contains("-", mName.Separator(mAtoms[atom].begin)); };
    return at + 1 < mAtoms.size() && mAtoms[at + 1].IsPlainNumber() && isDash(at + 1) && !isDash(at);
}

bool SlateReader::IsBareTake(std::size_t slate, std::size_t at) const {
    const SlateAtom& atom = mAtoms[at];
    if (IsBoundToNext(at)) {
        return false;
    }
    if (atom.kind != Kind::Number || Contains("&+,", mName.Separator(atom.begin)) || Value(at) == 0 ||
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
    take.setUp = {};
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
        return Contains("&+,", mName.Separator(next.begin));
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

// ---- How sure a number is ---------------------------------------------------------------------------------------------

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
        const bool dashed = take && !Contains("_", mName.Separator(mAtoms[slate.take.atom].begin));
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

// "12-1-3": episode, scene, shot, take, who knows. The number is the second or a later one.
bool SlateReader::IsChain(std::size_t at) const {
    return at + 1 < mAtoms.size() && mAtoms[at + 1].IsPlainNumber() &&
           mName.Separator(mAtoms[at + 1].begin) == mName.Separator(mAtoms[at].begin);
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
    const bool behindNoise = before && before->kind == Kind::Noise; // whose take it may be
    const bool behindNumber = behindNoise && mName[before->begin].digits;
    const bool counter =
        mLooseDigits || behindNoise || (mName.StartsWithZero(atom.number) && mName.Length(atom.number) >= 4);
    if (IsWhole(slate) && (HasLetters(slate) ? !behindNumber : !counter)) {
        return {SlateRule::NumberAlone, Confidence::Medium};
    }
    return {SlateRule::AmongWords, Confidence::Low};
}

// ---- The readings -----------------------------------------------------------------------------------------------------

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
    if (separator.size() != 1 || !Contains("-_./", separator)) {
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
    const bool joined = slate.marker == Marker::None || Contains("-/", separator);
    const bool range =
        joined && Value(last) > first && Value(last) <= first + kRangeReach && Value(last) >= 10 && !padded;
    const bool pair = Value(last) == first + 1 && Contains("/", separator);
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
        const bool letters = !Contains("0123456789", reading.scene.substr(reading.scene.size() - 1));
        reading.confidence = letters || isInFront(reading) ? best : Confidence::None;
        reading.standing = Standing::Rival;
    }
    std::erase_if(mReadings, [](const SlateReading& reading) { return reading.confidence == Confidence::None; });
}

} // namespace zonstory
