#pragma once

namespace zonstory {

/// How the program ends. Scripts depend on the numbers: they never change.
enum ExitCode : int {
    kDone = 0,
    kSomeFailed = 1,  ///< Some clips failed, or the results could not be written.
    kUsage = 2,       ///< The command line, or a file it names beside story and clips, makes no sense.
    kStoryUnread = 3, ///< The story is unreadable or malformed.
    kUnmatched = 4,   ///< A scene was not found, or more than one answers.
    kDiffers = 5,     ///< `diff --exit-code` found a difference.
    kNoJournal = 6,   ///< The journal cannot be written or read; no clip was touched.
};

} // namespace zonstory
