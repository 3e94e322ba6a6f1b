#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "match/ClipLog.h"
#include "match/Decision.h"

namespace zonstory {

/// Which rows of logs speak of which clips.
///
/// A row finds its clip by the longest path they share from the end, by the file's name, by the name without extension,
/// by the tape, or by roll and clip number; with continuous slates by slate and take as well. What is cut from one clip or
/// made of it (A001_C002_0131AB_001, …_proxy) is spoken of by the clip's row. A surer way beats a weaker one, and a row
/// that could mean two clips says nothing of either.
class LogIndex {
public:
    /// @param logs   Must outlive the index.
    /// @param clips  The paths of all clips, UTF-8 or not.
    LogIndex(std::span<const ClipLog> logs, std::span<const std::string> clips, SlateStyle style);

    /// What the logs say of a clip, for Decide().
    std::vector<Statement> Statements(std::size_t clip) const;

    /// Surest first.
    enum class Way { SharedPath, FileName, OtherFolder, Stem, Made, Roll, Slate };

    struct RowOfLog {
        const ClipLog* log;
        const ClipLog::Row* row;
        Way way; ///< By which it found the clip.
    };

    /// The rows behind Statements(), one for one.
    std::vector<RowOfLog> Rows(std::size_t clip) const;

    /// Rows that name a scene and could mean several clips: "day3.csv:12: 2 clips are called C0001.MP4".
    const std::vector<std::string>& Problems() const { return mProblems; }

    /// Rows that name a scene and found no clip.
    std::size_t RowsWithoutClip() const { return mRowsWithoutClip; }

private:
    struct Hit {
        std::size_t clip = 0;
        std::size_t count = 0; ///< Of clips.
        Way way = Way::FileName;
    };

    using Places = std::unordered_map<std::string, Hit>;

    static Hit Look(const Places& places, const std::string& key, Way way);
    void IndexClip(std::size_t clip, std::string_view path, SlateStyle style);
    void FindClips(const ClipLog& log, const ClipLog::Row& row);
    bool Record(const ClipLog& log, const ClipLog::Row& row, std::string_view value, const Hit& hit);
    bool RecordMade(const ClipLog& log, const ClipLog::Row& row, std::string_view value);
    bool RecordSlate(const ClipLog& log, const ClipLog::Row& row);
    Hit FindName(std::string_view value) const;
    Hit FindRoll(std::string_view reel, std::string_view number) const;

    Places mPaths; ///< A clip's name, and its last folders with it.
    Places mStems;
    std::unordered_map<std::string, std::vector<std::size_t>> mMade; ///< By the stem of the clip they are made of.
    Places mRolls;                                                   ///< "A007C006" of A007C006_160424_R28L.
    std::unordered_map<std::string, std::vector<std::size_t>> mSlates;
    std::vector<std::string> mTakes; ///< Of each clip, with continuous slates.
    bool mContinuous = false;        ///< Slates are continuous.
    std::vector<std::vector<RowOfLog>> mFindings;
    std::vector<std::string> mProblems;
    std::size_t mRowsWithoutClip = 0;
};

} // namespace zonstory
