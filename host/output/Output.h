#pragma once

#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>

#include "output/StyledText.h"

namespace zonstory {

/// Where a command prints: results on one stream, everything else on another. Used by one thread.
///
/// Nothing throws. A stream that takes no more (a closed pipe, a full disk) ends the printing, not the work: what
/// happens to clips does not depend on who reads along. Finish() tells.
class Output {
public:
    /// The streams stay the caller's.
    Output(std::FILE* results, std::FILE* messages);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    /// Drops notes and progress; results, warnings and errors stay.
    void SetQuiet(bool quiet) { mIsQuiet = quiet; }
    /// Colours are used when the messages go to a terminal, NO_COLOR is unset or empty, and this allows them.
    void AllowColor(bool allow) { mAllowsColor = allow; }

    /// Prints text byte by byte; on a terminal, what it could act on is escaped.
    void Result(std::string_view text);
    /// The same for text that is coloured where results go to a terminal and colours are allowed.
    void Result(const StyledText& text);

    /// @name Messages
    /// One line each, without its line feed; made safe for a terminal wherever it goes.
    /// @{
    void Note(std::string_view line);
    void Warning(std::string_view line);
    void Error(std::string_view line);
    /// @}

    /// Shows how far long work is, on a terminal alone; the line is replaced by the next one and taken away before any
    /// other text. Calls in quick succession are passed over.
    void Progress(std::string_view line);
    void EndProgress();
    bool ShowsProgress() const { return mMessagesOnTerminal && !mIsQuiet; }

    /// Flushes. Called once all is printed.
    /// @return false, with an error printed, when a result could not be written.
    bool Finish();

private:
    void PrintMessage(std::string_view color, std::string_view line);
    void Write(std::string_view text);
    void FlushResults();

    std::FILE* mResults;
    std::FILE* mMessages;
    bool mResultsOnTerminal;
    bool mMessagesOnTerminal;
    bool mIsOneFile; // both streams go to one terminal, file or pipe
    bool mIsQuiet = false;
    bool mAllowsColor = true;
    bool mShowsProgress = false;
    int mWriteError = 0; // errno of the first failed write of a result
    std::chrono::steady_clock::time_point mNextProgress{};
};

} // namespace zonstory
