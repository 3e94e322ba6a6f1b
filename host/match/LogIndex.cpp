#include "match/LogIndex.h"

#include <algorithm>

#include <fmt/format.h>

#include "match/NameRuns.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

constexpr std::size_t kMostFolders = 5; ///< Of a path, compared from its end.

// File systems and people differ in case, and logs come from systems that write folders with a backslash.
std::string FoldPath(std::string_view path) {
    std::string folded = LowerCase(std::string(path));
    std::replace(folded.begin(), folded.end(), '\\', '/');
    return folded;
}

std::string_view FileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

// The path from its last `folders` folders on; the whole path where it has fewer.
std::string_view Tail(std::string_view path, std::size_t folders) {
    std::size_t begin = path.size();
    for (std::size_t part = 0; part <= folders && begin > 0; ++part) {
        const std::size_t slash = path.rfind('/', begin - 1);
        if (slash == std::string_view::npos) {
            return path;
        }
        begin = slash;
    }
    return path.substr(begin + 1);
}

// "a007c006" of "a007c006_160424_r28l" and of "a007_c006_0131ab"; empty for a name of another kind.
std::string RollAndClip(std::string_view stem) {
    std::string head(stem.substr(0, stem.find('_')));
    if (head.size() >= 4 && head.size() <= 5 && stem.substr(head.size()).starts_with("_c")) {
        head += stem.substr(head.size() + 1, stem.find('_', head.size() + 1) - head.size() - 1);
    }
    const std::size_t clip = head.rfind('c');
    const bool roll = head.size() >= 6 && !IsDigit(head.front()) && clip != std::string::npos && clip >= 3 &&
                      clip + 3 < head.size() && AreDigits(std::string_view(head).substr(1, clip - 1)) &&
                      AreDigits(std::string_view(head).substr(clip + 1));
    return roll ? head : std::string();
}

// The stem of the clip that this one is a part or a copy of: without "_001" of a spanned clip, without "_proxy".
std::string_view MadeOf(std::string_view stem) {
    constexpr std::string_view kCopies[] = {"proxy",  "proxies", "h264",   "h265",   "hevc",   "prores",
                                            "dnxhd",  "lt",      "hq",     "1080p",  "720p",   "sync",
                                            "synced", "lut",     "rec709", "graded", "offline"};
    for (std::size_t sign = stem.find_last_of("_-. "); sign != std::string_view::npos && sign > 0;
         sign = stem.find_last_of("_-. ")) {
        const std::string_view last = stem.substr(sign + 1);
        const bool copy = std::find(std::begin(kCopies), std::end(kCopies), last) != std::end(kCopies);
        const bool segment =
            last.size() == 3 && AreDigits(last) && !RollAndClip(stem.substr(0, sign)).empty() && stem.find('_') < sign;
        if (!copy && !segment) {
            break;
        }
        stem = stem.substr(0, sign);
    }
    return stem;
}

} // namespace

LogIndex::LogIndex(std::span<const ClipLog> logs, std::span<const std::string> clips, SlateStyle style)
    : mFindings(clips.size()) {
    if (logs.empty()) {
        return;
    }
    mTakes.resize(clips.size());
    mContinuous = style == SlateStyle::Continuous;
    for (std::size_t clip = 0; clip < clips.size(); ++clip) {
        IndexClip(clip, clips[clip], style);
    }
    for (const ClipLog& log : logs) {
        for (const ClipLog::Row& row : log.rows) {
            FindClips(log, row);
        }
    }
}

void LogIndex::IndexClip(std::size_t clip, std::string_view path, SlateStyle style) {
    const std::string folded = FoldPath(path);
    const auto add = [clip](Places& places, std::string_view key) {
        Hit& hit = places[std::string(key)];
        hit.clip = clip;
        ++hit.count;
    };
    std::size_t length = 0;
    for (std::size_t folders = 0; folders <= kMostFolders && length < folded.size(); ++folders) {
        const std::string_view tail = Tail(folded, folders);
        if (tail.size() > length) {
            add(mPaths, tail);
            length = tail.size();
        }
    }
    const std::string_view stem = WithoutMediaExtension(FileName(folded));
    add(mStems, stem);
    mMade[std::string(MadeOf(stem))].push_back(clip);
    if (const std::string roll = RollAndClip(stem); !roll.empty()) {
        add(mRolls, roll);
    }
    if (style == SlateStyle::Continuous) {
        SlateNumber number = ReadSlateNumber(FileName(path));
        mTakes[clip] = std::move(number.take);
        if (!number.slate.empty()) {
            mSlates[std::move(number.slate)].push_back(clip);
        }
    }
}

LogIndex::Hit LogIndex::Look(const Places& places, const std::string& key, Way way) {
    const auto found = places.find(key);
    return found == places.end() || key.empty() ? Hit() : Hit{found->second.clip, found->second.count, way};
}

LogIndex::Hit LogIndex::FindName(std::string_view value) const {
    const std::string folded = FoldPath(value);
    if (folded.empty()) {
        return {};
    }
    const Way byName = folded.find('/') != std::string::npos ? Way::OtherFolder : Way::FileName;
    for (std::size_t folders = kMostFolders + 1; folders-- > 0;) {
        const std::string tail(Tail(folded, folders));
        const bool shared = folders > 0 && tail.find('/') != std::string::npos;
        if (const Hit hit = Look(mPaths, tail, shared ? Way::SharedPath : byName); hit.count > 0) {
            return hit;
        }
    }
    const std::string stem(WithoutMediaExtension(FileName(folded)));
    if (const Hit hit = Look(mStems, stem, Way::Stem); hit.count > 0) {
        return hit;
    }
    const std::string roll = RollAndClip(stem);
    const bool isShort = roll.size() == stem.size() || roll.size() + 1 == stem.size();
    const Hit longName = isShort ? Look(mRolls, roll, Way::Roll) : Hit();
    return longName.count > 0 ? longName : Look(mStems, roll, Way::Roll); // the clip's own name may be the short one
}

// Tape "A007C006_160424_R28L"; camera roll "A007" with clip "C006" or "6".
LogIndex::Hit LogIndex::FindRoll(std::string_view reel, std::string_view number) const {
    const std::string roll = FoldPath(reel);
    if (roll.empty() || number.empty()) {
        return Look(mStems, roll, Way::Roll);
    }
    std::string clip = FoldPath(number);
    clip = clip.front() == 'c' ? clip.substr(1) : clip;
    clip.insert(0, clip.size() < 3 ? 3 - clip.size() : 0, '0');
    return Look(mRolls, roll + "c" + clip, Way::Roll);
}

void LogIndex::FindClips(const ClipLog& log, const ClipLog::Row& row) {
    const LogColumns& known = log.known;
    const bool isSlate = known.slatesAreScenes && mContinuous;
    if (isSlate || log.Field(row, known.scene).empty()) {
        return;
    }
    const std::string_view file = log.Field(row, known.file);
    const std::string_view clip = log.Field(row, known.clip);
    const std::string_view reel = log.Field(row, known.reel);
    bool found = Record(log, row, file, FindName(file)) || RecordMade(log, row, file) ||
                 Record(log, row, clip, FindName(clip)) || RecordMade(log, row, clip) ||
                 Record(log, row, reel, FindRoll(reel, log.Field(row, known.number)));
    const std::string_view sound = log.Field(row, known.sound);
    found = Record(log, row, sound, FindName(sound)) || found;
    if (!found && !RecordSlate(log, row)) {
        ++mRowsWithoutClip;
    }
}

// Whether the row is dealt with: it found its clip, or more than one.
bool LogIndex::Record(const ClipLog& log, const ClipLog::Row& row, std::string_view value, const Hit& hit) {
    if (hit.count > 1) {
        mProblems.push_back(fmt::format("{}: {} clips are called \"{}\"", log.Where(row), hit.count, value));
    } else if (hit.count == 1) {
        mFindings[hit.clip].push_back({&log, &row, hit.way});
    }
    return hit.count > 0;
}

// All parts and copies of the clip that the row names, wherever the clip itself is not among the clips.
bool LogIndex::RecordMade(const ClipLog& log, const ClipLog::Row& row, std::string_view value) {
    const std::string folded = FoldPath(value);
    const auto made = mMade.find(std::string(WithoutMediaExtension(FileName(folded))));
    if (folded.empty() || made == mMade.end()) {
        return false;
    }
    for (const std::size_t clip : made->second) {
        mFindings[clip].push_back({&log, &row, Way::Made});
    }
    return true;
}

bool LogIndex::RecordSlate(const ClipLog& log, const ClipLog::Row& row) {
    const std::string slate = CanonicalSceneNumber(log.Field(row, log.known.slate));
    const auto clips = mSlates.find(slate);
    if (slate.empty() || clips == mSlates.end()) {
        return false;
    }
    const std::string take = CanonicalSceneNumber(log.Field(row, log.known.take));
    for (const std::size_t clip : clips->second) {
        if (take.empty() || mTakes[clip].empty() || take == mTakes[clip]) {
            mFindings[clip].push_back({&log, &row, Way::Slate});
        }
    }
    return true;
}

std::vector<Statement> LogIndex::Statements(std::size_t clip) const {
    std::vector<Statement> statements;
    for (const auto& [log, row, way] : Rows(clip)) {
        Statement statement =
            StateField(Source::Log, log->Field(*row, log->known.scene), log->Field(*row, log->known.take));
        statement.where = log->Where(*row);
        const bool exact = way <= Way::FileName && !log->known.slatesAreScenes;
        statement.ceiling = exact                     ? Confidence::Certain
                            : way == Way::OtherFolder ? Confidence::Medium
                                                      : Confidence::High;
        statements.push_back(std::move(statement));
    }
    return statements;
}

std::vector<LogIndex::RowOfLog> LogIndex::Rows(std::size_t clip) const {
    std::vector<RowOfLog> rows = mFindings[clip];
    Way best = Way::Slate;
    for (const RowOfLog& one : rows) {
        best = std::min(best, one.way);
    }
    std::erase_if(rows, [best](const RowOfLog& one) { return one.way != best; });
    return rows;
}

} // namespace zonstory
