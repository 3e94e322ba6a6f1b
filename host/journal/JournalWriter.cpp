#include "journal/JournalWriter.h"

#include <chrono>
#include <random>
#include <utility>

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/FileError.h"
#include "files/SystemError.h"

namespace zonstory {

namespace fs = std::filesystem;

namespace {

std::string Now() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const auto milliseconds = duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    return fmt::format("{:%FT%T}.{:03}Z", fmt::gmtime(system_clock::to_time_t(now)), milliseconds);
}

std::string NewId() {
    std::random_device random;
    return fmt::format("{:08x}{:08x}", random(), random());
}

std::string HostName() {
    char host[65] = "";
    ::gethostname(host, sizeof host - 1);
    return host;
}

// A name that sorts by time, and is no other run's.
std::string FileNameOf(const RunFacts& run) {
    std::string time = run.time;
    std::erase_if(time, [](char character) { return character == '-' || character == ':'; });
    return time + '-' + run.id + ".jsonl";
}

// For its owner alone: a journal holds what a screenplay says.
void MakeOwnFolder(const fs::path& folder) {
    std::error_code error;
    const fs::path parent = folder.parent_path();
    fs::create_directories(parent, error);
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        throw JournalError(folder.string() + ": " + SystemErrorText());
    }
}

} // namespace

JournalWriter::JournalWriter(const JournalPlace& place, RunFacts facts)
    : mPath(place.path), mIsOfThisRun(place.isFolder), mRun(std::move(facts)) {
    mRun.id = NewId();
    mRun.time = Now();
    mRun.program = "zonstory " ZONSTORY_VERSION;
    mRun.host = HostName();
    if (place.isFolder) {
        if (place.isOwn) {
            MakeOwnFolder(place.path);
        }
        mPath /= FileNameOf(mRun);
    }
    if (!place.isOwn) {
        std::error_code ignored;
        mFolder = fs::weakly_canonical(fs::absolute(mPath, ignored), ignored).parent_path();
    }
    try {
        mFile = std::make_unique<JournalFile>(mPath, place.isOwn);
        mFile->AwaitFlush(Append({JournalEntry::Kind::Begin, mRun, {}, {}}));
    } catch (const FileError& error) {
        throw JournalError(mPath.string() + ": the journal " + error.what());
    }
}

JournalWriter::~JournalWriter() = default;

void JournalWriter::Finish() try {
    if (mIsOfThisRun && !mIsUsed) {
        ::unlink(mPath.c_str());
        return;
    }
    mFile->AwaitFlush(Append({JournalEntry::Kind::End, mRun, {}, {}}));
} catch (const FileError& error) {
    throw JournalError(mPath.string() + ": the journal " + error.what());
}

JournalWriter::Announced JournalWriter::Announce(ChangeFacts change) try {
    mIsUsed = true;
    change.number = ++mChanges;
    change.clip = NameOf(change.clip);
    change.file = NameOf(change.file);
    const std::uint64_t number = change.number;
    const std::uint64_t line = Append({JournalEntry::Kind::Change, mRun, std::move(change), {}});
    mFile->BeginFlush(line);
    return {number, line};
} catch (const FileError& error) {
    throw FileError(std::string("is left alone, since the journal ") + error.what());
}

void JournalWriter::Confirm(const Announced& change) try {
    mFile->AwaitFlush(change.line);
} catch (const FileError& error) {
    throw FileError(std::string("is left alone, since the journal ") + error.what());
}

void JournalWriter::Settle(const Announced& change, bool isDone) noexcept {
    AppendIfPossible(isDone ? JournalEntry::Kind::Done : JournalEntry::Kind::NotDone, change.number, nullptr);
}

void JournalWriter::FoundAsBefore(const ChangeKey& change) noexcept {
    mIsUsed = true;
    AppendIfPossible(JournalEntry::Kind::AsBefore, 0, &change);
}

std::uint64_t JournalWriter::Append(JournalEntry entry) {
    entry.time = Now();
    return mFile->Append(LineOf(entry));
}

void JournalWriter::AppendIfPossible(JournalEntry::Kind kind, std::uint64_t number, const ChangeKey* undoes) noexcept {
    try {
        JournalEntry entry;
        entry.kind = kind;
        entry.run.id = mRun.id;
        entry.change.number = number;
        if (undoes != nullptr) {
            entry.change.undoes = *undoes;
        }
        Append(std::move(entry));
    } catch (const std::exception&) { // the file itself will tell
    }
}

std::string JournalWriter::NameOf(const std::string& file) const {
    const fs::path relative = mFolder.empty() ? fs::path() : fs::path(file).lexically_relative(mFolder);
    return relative.empty() || *relative.begin() == ".." ? file : relative.native();
}

} // namespace zonstory
