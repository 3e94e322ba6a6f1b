#include "files/GrowingFile.h"

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "files/SystemError.h"
#include "files/WriteAll.h"

namespace zonstory {

namespace {

constexpr mode_t kOrdinary = 0666; // less what the user's mask takes away
constexpr const char* kAttempt = "cannot be written";

} // namespace

GrowingFile::GrowingFile(std::filesystem::path path, std::string_view before, std::string_view behind)
    : mPath(std::move(path)),
      mFile(::open(mPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY | O_CLOEXEC, kOrdinary)) {
    struct stat status {};
    try {
        if (!mFile.IsOpen() || ::fstat(mFile.Get(), &status) != 0) {
            ThrowSystemError(kAttempt);
        }
        mIsRegular = S_ISREG(status.st_mode);
        Write(before, behind);
    } catch (const FileError& error) {
        throw OutputError(mPath.string() + ": " + error.what());
    }
}

void GrowingFile::Add(std::string_view text, std::string_view behind) {
    if (mProblem.empty()) {
        try {
            Write(text, behind);
        } catch (const FileError& error) {
            mProblem = error.what();
        }
    }
}

void GrowingFile::Finish() {
    if (mProblem.empty()) {
        try {
            if (!mIsRegular) {
                WriteAll(mFile, mBehind);
            }
            if ((mIsRegular && ::fsync(mFile.Get()) != 0) || !mFile.Close()) {
                ThrowSystemError(kAttempt);
            }
        } catch (const FileError& error) {
            mProblem = error.what();
        }
    }
    if (!mProblem.empty()) {
        throw OutputError(mPath.string() + ": " + mProblem);
    }
}

void GrowingFile::Write(std::string_view text, std::string_view behind) {
    mBehind = behind;
    if (mIsRegular) {
        WriteAllAt(mFile, std::string(text) + mBehind, mSize);
    } else {
        WriteAll(mFile, text);
    }
    mSize += text.size();
}

} // namespace zonstory
