#include "journal/Journal.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>

#include "files/ByteReader.h"
#include "files/FileError.h"
#include "files/FileSize.h"
#include "files/SystemError.h"

namespace zonstory {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t kLongestLine = std::uint64_t{128}
                                       << 20; // far above any: a whole packet and all tables of a clip
constexpr const char* kExtension = ".jsonl";

// In the order of their names, which begin with the time.
std::vector<fs::path> FilesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == kExtension && entry->is_regular_file(ignored)) {
            files.push_back(entry->path());
        }
    }
    if (error && error != std::errc::no_such_file_or_directory) {
        throw JournalError(folder.string() + ": " + error.message());
    }
    std::sort(files.begin(), files.end());
    return files;
}

struct Line {
    std::uint64_t offset = 0;
    std::string_view text;
    bool isWhole = false; ///< Has an end.
    bool isTooLong = false;
};

/// The lines of a file, one at a time; of one that is too long, the beginning.
class LineReader {
public:
    explicit LineReader(const FileDescriptor& file) : mReader(file, FileSize(file)) {}

    bool Next(Line& line) {
        mText.clear();
        line = {mOffset, {}, false, false};
        while (!line.isWhole && Fill()) {
            const std::string_view rest = std::string_view(mPiece).substr(mUsed);
            const std::size_t end = rest.find('\n');
            line.isWhole = end != std::string_view::npos;
            const std::string_view part = rest.substr(0, end);
            mUsed += part.size() + (line.isWhole ? 1 : 0);
            mOffset += part.size() + (line.isWhole ? 1 : 0);
            line.isTooLong = line.isTooLong || mText.size() + part.size() > kLongestLine;
            if (!line.isTooLong) {
                mText += part;
            }
        }
        line.text = mText;
        return line.isWhole || mOffset > line.offset;
    }

private:
    bool Fill() {
        constexpr std::uint64_t kPiece = std::uint64_t{1} << 18;
        if (mUsed == mPiece.size()) {
            mPiece.resize(static_cast<std::size_t>(std::min(kPiece, mReader.Size() - mOffset)));
            mReader.Read(mOffset, mPiece.data(), mPiece.size());
            mUsed = 0;
        }
        return !mPiece.empty();
    }

    ByteReader mReader;
    std::uint64_t mOffset = 0;
    std::string mPiece;
    std::size_t mUsed = 0;
    std::string mText;
};

FileDescriptor Open(const fs::path& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.IsOpen()) {
        ThrowSystemError("cannot be read");
    }
    return file;
}

} // namespace

Journal::Journal(const JournalPlace& place)
    : mFiles(place.isFolder ? FilesIn(place.path) : std::vector<fs::path>{place.path}) {
    for (std::size_t file = 0; file < mFiles.size(); ++file) {
        try {
            ReadLines(file);
        } catch (const FileError& error) {
            throw JournalError(mFiles[file].string() + ": the journal " + error.what());
        }
    }
    std::stable_sort(mRuns.begin(), mRuns.end(), [](const RecordedRun& left, const RecordedRun& right) {
        return left.facts.time < right.facts.time;
    });
    for (std::size_t index = 0; index < mRuns.size(); ++index) {
        mRunOf[mRuns[index].facts.id] = index;
    }
    MarkUndone();
}

ChangeFacts Journal::Whole(const RecordedChange& change) const try {
    const FileDescriptor file = Open(mFiles[change.file]);
    const ByteReader reader(file, FileSize(file));
    std::string line(static_cast<std::size_t>(change.size), '\0');
    reader.Read(change.offset, line.data(), line.size());
    return EntryIn(line).change;
} catch (const std::runtime_error& error) { // was changed while it was read
    throw JournalError(PlaceOf(change) + ": " + error.what());
}

fs::path Journal::FolderOf(const RecordedChange& change) const {
    std::error_code ignored;
    const fs::path& journal = mFiles[change.file];
    return (fs::is_symlink(journal, ignored) ? fs::canonical(journal, ignored) : journal).parent_path();
}

std::string Journal::PlaceOf(const RecordedChange& change) const {
    return fmt::format("{}:{}", mFiles[change.file].string(), change.line);
}

ChangeState Journal::StateOf(const RecordedChange& change) const {
    if (change.state != ChangeState::Unknown) {
        return change.state;
    }
    const fs::path file = FolderOf(change) / change.facts.file;
    if (LooksEdited(file, Whole(change).back)) {
        return ChangeState::NotMade;
    }
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if ((error ? 0 : size) == change.facts.back.sizeBefore) {
        return ChangeState::Made;
    }
    return change.hasFailed ? ChangeState::NotMade : ChangeState::Unknown;
}

void Journal::ReadLines(std::size_t file) {
    const FileDescriptor descriptor = Open(mFiles[file]);
    LineReader lines(descriptor);
    RecordedChange place;
    place.file = file;
    for (Line line; lines.Next(line);) {
        ++place.line;
        place.offset = line.offset;
        place.size = line.text.size();
        try {
            if (line.isTooLong) {
                throw EntryError("is too long for a record of a run");
            }
            if (!line.text.empty()) {
                Add(EntryIn(line.text), place);
            }
        } catch (const EntryError& error) {
            mProblems.push_back(PlaceOf(place) + ": " + error.what());
        }
    }
}

void Journal::Add(const JournalEntry& entry, const RecordedChange& place) {
    using Kind = JournalEntry::Kind;
    if (entry.kind == Kind::AsBefore) {
        mFoundAsBefore.push_back(*entry.change.undoes);
    } else if (entry.kind == Kind::Change) {
        RecordedRun& run = RunOf(entry.run);
        if (!mChangeOf.try_emplace({entry.run.id, entry.change.number}, run.changes.size()).second) {
            throw EntryError("repeats what another record says");
        }
        RecordedChange change = place;
        change.facts = entry.change;
        change.facts.back.edits.clear();
        change.facts.properties.clear();
        run.changes.push_back(std::move(change));
    } else if (entry.kind == Kind::Done || entry.kind == Kind::NotDone) {
        if (RecordedChange* const change = Find({entry.run.id, entry.change.number})) {
            change->state = entry.kind == Kind::Done ? ChangeState::Made : ChangeState::Unknown;
            change->hasFailed = entry.kind == Kind::NotDone;
        }
    }
}

RecordedRun& Journal::RunOf(const RunFacts& facts) {
    const auto [found, isNew] = mRunOf.try_emplace(facts.id, mRuns.size());
    if (isNew) {
        mRuns.push_back({facts, {}});
    }
    return mRuns[found->second];
}

RecordedChange* Journal::Find(const ChangeKey& key) {
    const auto found = mChangeOf.find({key.run, key.number});
    return found == mChangeOf.end() ? nullptr : &mRuns[mRunOf.at(key.run)].changes[found->second];
}

void Journal::MarkUndone() {
    std::vector<ChangeKey> undone = std::move(mFoundAsBefore);
    for (const RecordedRun& run : mRuns) {
        for (const RecordedChange& change : run.changes) {
            if (change.facts.undoes && change.state == ChangeState::Made) {
                undone.push_back(*change.facts.undoes);
            }
        }
    }
    for (const ChangeKey& key : undone) {
        if (RecordedChange* const change = Find(key)) {
            change->state = ChangeState::Undone;
        }
    }
}

} // namespace zonstory
