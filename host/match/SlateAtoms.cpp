#include "match/SlateAtoms.h"

#include <optional>

namespace zonstory {

namespace {

using Kind = SlateAtom::Kind;

SlateAtom Noise(const NameRuns& name, std::size_t begin, std::size_t end) {
    SlateAtom atom;
    atom.begin = begin;
    for (std::size_t run = begin; run < end; ++run) {
        atom.reel = atom.reel || name[run].reel;
    }
    return atom;
}

SlateAtom Word(const NameRuns& name, std::size_t run) {
    SlateAtom atom;
    atom.kind = Kind::Word;
    atom.begin = run;
    atom.letters = name.Text(run);
    atom.word = MeaningOf(atom.letters);
    return atom;
}

// A number inside a word.
SlateAtom UnknownWord(std::size_t begin, std::string_view text) {
    SlateAtom atom;
    atom.kind = Kind::Word;
    atom.begin = begin;
    atom.letters = text;
    return atom;
}

bool IsAscii(std::string_view letters) {
    return letters.find_first_of("\x80\xC0\xE0") == std::string_view::npos &&
           static_cast<unsigned char>(letters.front()) < 0x80;
}

bool IsSceneOrSlate(SlateWord word) {
    return word == SlateWord::Scene || word == SlateWord::SceneLetter || word == SlateWord::Slate;
}

// What letters glued in front of a number are; false where they are a word that the number belongs to.
bool ReadFront(std::string_view letters, SlateAtom& atom) {
    const SlateWord whole = MeaningOf(letters);
    if (IsSceneOrSlate(whole)) {
        atom.word = whole;
        return true;
    }
    if (whole == SlateWord::Remark) {
        return true;
    }
    const SlateWord front = letters.size() > 1 ? MeaningOf(letters.substr(0, letters.size() - 1)) : SlateWord::Unknown;
    if (whole == SlateWord::Unknown && letters.back() != 'T' &&
        (front == SlateWord::Scene || front == SlateWord::SceneLetter)) { // ScA12, SA12-T3
        atom.word = front;
        atom.prefix = letters.substr(letters.size() - 1);
        return true;
    }
    atom.prefix = letters;
    return whole == SlateWord::Unknown && letters.size() <= 2 && IsAscii(letters);
}

// Cuts a known word off the end of letters, leaving a set-up or nothing: ATK is A and TK, APU is A and PU.
std::optional<std::string_view> SetUpBefore(SlateWord wanted, std::string_view letters) {
    for (std::size_t setUp = 0; setUp <= 3 && setUp < letters.size(); ++setUp) {
        const bool fits = setUp == 0 || IsSetUp(letters.substr(0, setUp).substr(setUp > 2 ? 1 : 0));
        if (fits && MeaningOf(letters.substr(setUp)) == wanted) {
            return letters.substr(0, setUp);
        }
    }
    return std::nullopt;
}

// Letters behind the scene number that end the chunk: a set-up of up to two, and one of the number's own.
bool ReadBack(std::string_view letters, SlateAtom& atom) {
    if (const auto setUp = SetUpBefore(SlateWord::Remark, letters); setUp && letters.size() > 1) {
        atom.letters = *setUp;
        atom.unread = letters.size() <= 3 ? letters : std::string_view();
        return true;
    }
    atom.letters = letters;
    return letters.size() <= 3 && IsAscii(letters) && (letters.size() < 3 || MeaningOf(letters) == SlateWord::Unknown);
}

// Letters between the scene number and another number.
bool ReadMiddle(std::string_view letters, std::string_view digits, SlateAtom& atom) {
    if (const auto setUp = SetUpBefore(SlateWord::Take, letters)) {
        atom.letters = *setUp;
        atom.take = digits;
        return true;
    }
    for (const SlateWord counted : {SlateWord::Shot, SlateWord::Remark}) {
        if (const auto setUp = SetUpBefore(counted, letters); setUp && letters.size() > 1) {
            atom.letters = *setUp;
            atom.unread = letters.size() <= 3 ? letters : std::string_view();
            return true;
        }
    }
    atom.letters = letters;
    atom.tail = digits;
    return IsSetUp(letters);
}

// A camera's letter or a remark behind a take: T3A, TK3PU.
bool IsBehindTake(std::string_view letters) {
    return letters.size() == 1 || MeaningOf(letters) == SlateWord::Remark;
}

// What follows the scene's digits in its chunk.
bool ReadRest(const NameRuns& name, std::size_t run, std::size_t end, SlateAtom& atom) {
    if (run == end) {
        return true;
    }
    if (run + 1 == end) {
        return ReadBack(name.Text(run), atom);
    }
    if (!ReadMiddle(name.Text(run), name.Text(run + 1), atom)) {
        return false;
    }
    run += 2;
    if (run + 1 < end && atom.tail.empty() && MeaningOf(name.Text(run)) == SlateWord::Take) { // 12SH3TK2
        atom.take = name.Text(run + 1);
        run += 2;
    }
    return run == end || (run + 1 == end && atom.tail.empty() && IsBehindTake(name.Text(run)));
}

std::optional<SlateAtom> ReadNumber(const NameRuns& name, std::size_t begin, std::size_t end) {
    SlateAtom atom;
    atom.kind = Kind::Number;
    atom.begin = begin;
    atom.number = name[begin].digits ? begin : begin + 1;
    const bool front = name[begin].digits || ReadFront(name.Text(begin), atom);
    if (!front || !ReadRest(name, atom.number + 1, end, atom)) {
        return std::nullopt;
    }
    return atom;
}

// T3, TK003A.
std::optional<SlateAtom> ReadTake(const NameRuns& name, std::size_t begin, std::size_t end) {
    const bool take = !name[begin].digits && end <= begin + 3 && MeaningOf(name.Text(begin)) == SlateWord::Take;
    if (!take || (end == begin + 3 && !IsBehindTake(name.Text(begin + 2)))) {
        return std::nullopt;
    }
    SlateAtom atom;
    atom.kind = Kind::Take;
    atom.begin = begin;
    atom.number = begin + 1;
    atom.take = name.Text(begin + 1);
    return atom;
}

bool HasNoise(const NameRuns& name, std::size_t begin, std::size_t end) {
    for (std::size_t run = begin; run < end; ++run) {
        if (name[run].noise) {
            return true;
        }
    }
    return false;
}

// WT1, PU2: the number counts the remark.
bool IsCountedRemark(const NameRuns& name, std::size_t begin, std::size_t end) {
    return end == begin + 2 && !name[begin].digits && MeaningOf(name.Text(begin)) == SlateWord::Remark;
}

SlateAtom ReadChunk(const NameRuns& name, std::size_t begin, std::size_t end) {
    if (HasNoise(name, begin, end) || IsCountedRemark(name, begin, end)) {
        return Noise(name, begin, end);
    }
    if (end == begin + 1 && !name[begin].digits) {
        return Word(name, begin);
    }
    if (const auto take = ReadTake(name, begin, end)) {
        return *take;
    }
    if (const auto number = ReadNumber(name, begin, end)) {
        return *number;
    }
    return UnknownWord(begin, "NUMBER IN A WORD");
}

// "Take 3", "T 3": the word and the number become one. "WT 3" says nothing.
void JoinCounted(std::vector<SlateAtom>& atoms) {
    for (std::size_t at = 0; at + 1 < atoms.size(); ++at) {
        if (atoms[at].kind != Kind::Word || !atoms[at + 1].IsPlainNumber()) {
            continue;
        }
        if (atoms[at].word == SlateWord::Take) {
            atoms[at + 1].kind = Kind::Take;
        }
    }
}

} // namespace

std::vector<SlateAtom> ReadAtoms(const NameRuns& name) {
    std::vector<SlateAtom> atoms;
    atoms.reserve(name.size());
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = name.ChunkEnd(begin);
        atoms.push_back(ReadChunk(name, begin, end));
        begin = end;
    }
    JoinCounted(atoms);
    for (SlateAtom& atom : atoms) {
        if (atom.kind == Kind::Take && atom.take.empty()) {
            atom.take = name.Text(atom.number);
        }
    }
    return atoms;
}

} // namespace zonstory
