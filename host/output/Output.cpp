#include "output/Output.h"

#include <cerrno>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

#include "files/FileIdentity.h"
#include "files/SystemError.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

constexpr std::chrono::milliseconds kProgressInterval(100);
constexpr std::string_view kYellow = "\x1b[33m";
constexpr std::string_view kRed = "\x1b[31m";
constexpr std::string_view kGreen = "\x1b[32m";
constexpr std::string_view kPlain = "\x1b[0m";
constexpr std::string_view kEraseLine = "\r\x1b[K";

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

bool EnvironmentAllowsColor() {
    const char* const noColor = std::getenv("NO_COLOR");
    return noColor == nullptr || *noColor == '\0';
}

bool IsSameFile(std::FILE* left, std::FILE* right) {
    struct stat leftStatus {};
    struct stat rightStatus {};
    return ::fstat(::fileno(left), &leftStatus) == 0 && ::fstat(::fileno(right), &rightStatus) == 0 &&
           KeyOf(leftStatus) == KeyOf(rightStatus);
}

void Print(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

} // namespace

Output::Output(std::FILE* results, std::FILE* messages)
    : mResults(results), mMessages(messages), mResultsOnTerminal(IsTerminal(results)),
      mMessagesOnTerminal(IsTerminal(messages)), mIsOneFile(IsSameFile(results, messages)) {}

Output::~Output() {
    EndProgress();
}

void Output::Result(std::string_view text) {
    if (mResultsOnTerminal) {
        EndProgress();
        Write(SafeLines(text));
    } else {
        Write(text);
    }
}

void Output::Result(const StyledText& text) {
    const bool isColored = mResultsOnTerminal && mAllowsColor && EnvironmentAllowsColor();
    EndProgress();
    for (const auto& [look, stretch] : text) {
        if (look == Look::Plain || stretch.empty()) {
            Result(stretch);
        } else if (isColored) {
            Write(std::string(look == Look::Added ? kGreen : kRed) + SafeLines(stretch) + std::string(kPlain));
        } else {
            Result((look == Look::Added ? "{+" : "[-") + stretch + (look == Look::Added ? "+}" : "-]"));
        }
    }
}

void Output::Note(std::string_view line) {
    if (!mIsQuiet) {
        PrintMessage("", line);
    }
}

void Output::Warning(std::string_view line) {
    PrintMessage(kYellow, line);
}

void Output::Error(std::string_view line) {
    PrintMessage(kRed, line);
}

void Output::Progress(std::string_view line) {
    const auto now = std::chrono::steady_clock::now();
    if (!ShowsProgress() || now < mNextProgress) {
        return;
    }
    mNextProgress = now + kProgressInterval;
    mShowsProgress = true;
    Print(mMessages, std::string(kEraseLine) + SafeLine(line));
    std::fflush(mMessages);
}

void Output::EndProgress() {
    if (mShowsProgress) {
        Print(mMessages, kEraseLine);
        std::fflush(mMessages);
        mShowsProgress = false;
    }
}

bool Output::Finish() {
    EndProgress();
    FlushResults();
    if (mWriteError == 0) {
        return true;
    }
    Error("standard output: " + SystemErrorText(mWriteError));
    return false;
}

void Output::PrintMessage(std::string_view color, std::string_view line) {
    EndProgress();
    if (mIsOneFile) {
        FlushResults(); // read together, they are to stand in the order of printing
    }
    const bool isColored = !color.empty() && mAllowsColor && mMessagesOnTerminal && EnvironmentAllowsColor();
    std::string text = SafeLine(line);
    if (isColored) {
        text = std::string(color) + text + std::string(kPlain);
    }
    Print(mMessages, text + '\n');
}

void Output::FlushResults() {
    if (std::fflush(mResults) != 0 && mWriteError == 0) {
        mWriteError = errno;
    }
}

void Output::Write(std::string_view text) {
    if (mWriteError == 0 && std::fwrite(text.data(), 1, text.size(), mResults) != text.size()) {
        mWriteError = errno;
    }
}

} // namespace zonstory
