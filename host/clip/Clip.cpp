#include "clip/Clip.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "clip/AtRest.h"
#include "clip/ClipPlaces.h"
#include "clip/ClipState.h"
#include "clip/EditPlaces.h"
#include "clip/Interrupt.h"
#include "clip/NewVersion.h"
#include "clip/Replacement.h"
#include "clip/Sidecar.h"
#include "clip/Workspace.h"
#include "clip/packet/PropertyChanges.h"

namespace zonstory {

namespace {

using Change = std::function<void(SXMPMeta&)>;

void RequireAtRest(const ClipState& state, const ClipOptions& options) try {
    RequireAtRest(state.file, options.settle);
} catch (const FileError& error) {
    throw ClipError((state.target == Target::Sidecar ? "its sidecar " : "") + std::string(error.what()));
}

UpdateResult MakeResult(Outcome outcome, ClipState& state) {
    const Target other = state.target == Target::Inside ? Target::Sidecar : Target::Inside;
    UpdateResult result = {outcome, state.target, state.file.Path(), std::move(state.notes), {}, {}, {}, {}};
    result.unsettled = state.leavesOther ? std::optional(other) : std::nullopt;
    return result;
}

// Puts the new version in the file's place, before witnesses.
UpdateResult Commit(ClipState& state, RecordedEdits record, const ClipOptions& options, Replacement& replacement) {
    UpdateResult result = MakeResult(Outcome::Written, state);
    result.record = std::move(record);
    result.properties = ChangesBetween(state.before, state.wanted);
    const auto confirm = [&] {
        if (options.witness != nullptr) {
            options.witness->Confirm();
        }
    };
    if (options.witness != nullptr) {
        options.witness->Announce(result);
    }
    const bool isGone = result.record.sizeAfter == 0; // of a sidecar alone: no clip is without bytes
    result.warnings = isGone ? replacement.Remove(confirm) : replacement.Commit(options.preserveTime, confirm);
    if (options.witness != nullptr) {
        options.witness->Done();
    }
    return result;
}

// What a load finds to be done is done, while no other run works on the file, unless `require` throws of the record.
template <typename Load, typename Require>
UpdateResult Perform(Load load, Require require, const ClipOptions& options, KeptFolder* kept) {
    ThrowIfInterrupted();
    const StatePointer first = load();
    if (first->edits.empty()) {
        Workspace::RemoveStale(first->file, kept);
        return MakeResult(Outcome::Unchanged, *first);
    }
    RequireAtRest(*first, options);
    if (first->leavesOther) {
        RequireAtRest(*first->other, options);
    }
    if (options.dryRun) {
        return MakeResult(Outcome::WouldWrite, *first);
    }
    StatePointer fresh; // where another run changed the file while this one waited
    Replacement replacement(first->file, kept);
    if (!first->file.IsUnchanged()) {
        fresh = load();
        replacement.Retarget(fresh->file);
    }
    ClipState& state = fresh ? *fresh : *first;
    if (state.edits.empty()) {
        return MakeResult(Outcome::Unchanged, state);
    }
    RecordedEdits record = PrepareNewVersion(state, options, replacement);
    require(record);
    return Commit(state, std::move(record), options, replacement);
}

constexpr const char* kChangedSince = "was changed since, so that its bytes are not those that were recorded";
constexpr const char* kContradicts = "cannot be what its record says: the record contradicts itself";

// Opened, as the reader sees it; a file that is not there has no bytes.
StatePointer OpenRecorded(const std::filesystem::path& file) {
    auto state = std::make_unique<ClipState>();
    state->target = IsSidecarName(file) ? Target::Sidecar : Target::Inside;
    state->file = TargetFile::OpenOrAbsent(file);
    const bool isGone = !state->file.Exists();
    state->reader.emplace(state->file.File(), isGone ? 0 : static_cast<std::uint64_t>(state->file.Status().st_size));
    return state;
}

std::string ChecksumOf(const ByteReader& file, HashKind kind) {
    constexpr std::size_t kPiece = std::size_t{1} << 18;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
    Hasher hasher(kind);
    for (std::uint64_t offset = 0; offset < file.Size();) {
        ThrowIfInterrupted();
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, file.Size() - offset));
        file.Read(offset, buffer.get(), count);
        hasher.Add({buffer.get(), count});
        offset += count;
    }
    return hasher.Finish();
}

/// A file's bytes, none of one that is not there.
struct FileBytes {
    explicit FileBytes(const std::filesystem::path& path)
        : file(TargetFile::OpenOrAbsent(path)),
          reader(file.File(), file.Exists() ? static_cast<std::uint64_t>(file.Status().st_size) : 0) {}

    TargetFile file;
    ByteReader reader;
};

bool LooksEdited(const ByteReader& file, const RecordedEdits& record) {
    std::uint64_t moved = 0;
    bool isSame = file.Size() == record.sizeAfter;
    for (auto edit = record.edits.begin(); isSame && edit != record.edits.end(); ++edit) {
        std::string bytes(edit->put.size(), '\0');
        isSame = file.Has(edit->offset + moved, bytes.size());
        if (isSame) {
            file.Read(edit->offset + moved, bytes.data(), bytes.size());
            isSame = bytes == edit->put;
        }
        moved += edit->put.size() - edit->taken;
    }
    return isSame;
}

// A record may come from anybody, and media is nobody's to change.
void RequireMediaUntouched(const ContainerLayout& layout, const EditList& edits) {
    for (const ByteRange& range : layout.Media()) {
        const auto next =
            std::lower_bound(edits.begin(), edits.end(), range.offset,
                             [](const Edit& edit, std::uint64_t offset) { return edit.offset + edit.taken <= offset; });
        if (next != edits.end() && next->offset < range.End()) {
            throw ClipError("is left alone, since its record would change picture or sound");
        }
    }
}

bool HasChecksums(const RecordedEdits& record) {
    return !record.checksumBefore.empty() && !record.checksumAfter.empty();
}

// A file whose bytes are changed, whatever they mean; a container's media has to be found afterwards.
StatePointer LoadRecordedFile(const std::filesystem::path& file, const RecordedEdits& record,
                              const ClipOptions& options) {
    StatePointer state = OpenRecorded(file);
    if (!state->file.Exists() && record.sizeBefore > 0) {
        throw ClipError("is not there any more; it was moved, renamed or removed");
    }
    if (state->reader->Size() != record.sizeBefore) {
        throw ClipError(kChangedSince);
    }
    if (!AreInOrder(record.edits, record.sizeBefore) ||
        SizeAfter(record.edits, record.sizeBefore) != record.sizeAfter ||
        (state->target == Target::Inside && record.sizeAfter == 0)) {
        throw ClipError(kContradicts);
    }
    const bool isInverseKnown = !HasChecksums(record) || !record.inverse.empty();
    if (isInverseKnown && InverseOf(record.edits, *state->reader) != record.inverse) {
        throw ClipError(kChangedSince);
    }
    state->edits = record.edits;
    if (state->target == Target::Inside) {
        try {
            state->layout = ReadLayout(*state->reader, state->Extension());
        } catch (const NoExactWay& reason) {
            throw ClipError(std::string("is no clip that is written inside, since ") + reason.what());
        }
        RequireMediaUntouched(*state->layout, state->edits);
    }
    if (options.dryRun && options.hash && ChecksumOf(*state->reader, *options.hash) != record.checksumBefore) {
        throw ClipError(kChangedSince);
    }
    return state;
}

// What is wrong with a sidecar is told behind its clip's name.
StatePointer LoadRecorded(const std::filesystem::path& file, const RecordedEdits& record, const ClipOptions& options) {
    try {
        return LoadRecordedFile(file, record, options);
    } catch (const ClipInterrupted&) {
        throw;
    } catch (const FileError& error) {
        throw ClipError((IsSidecarName(file) ? "its sidecar " : "") + std::string(error.what()));
    }
}

void RequireRecorded(const RecordedEdits& wanted, const RecordedEdits& made) {
    if (made.checksumBefore != wanted.checksumBefore) {
        throw ClipError(kChangedSince);
    }
    if (made.checksumAfter != wanted.checksumAfter) {
        throw ClipError(kContradicts);
    }
}

} // namespace

ClipContents ReadClip(const std::filesystem::path& clip, const ClipOptions& options) {
    const StatePointer state = LoadClip(clip, options);
    return {state->target,
            state->file.Path(),
            state->hasXMP,
            std::move(state->xmp),
            state->other ? std::move(state->other->xmp) : SXMPMeta(),
            std::move(state->contradiction),
            std::move(state->notes)};
}

UpdateResult UpdateClip(const std::filesystem::path& clip, const ClipOptions& options, const Change& change,
                        KeptFolder* kept) {
    return Perform([&] { return LoadChanged(clip, options, change); }, [](const RecordedEdits&) {}, options, kept);
}

UpdateResult SettleClip(const std::filesystem::path& clip, Target place, const ClipOptions& options, KeptFolder* kept) {
    return Perform([&] { return LoadSettled(clip, place, options); }, [](const RecordedEdits&) {}, options, kept);
}

UpdateResult RepeatEdits(const std::filesystem::path& file, const RecordedEdits& record, const ClipOptions& options,
                         KeptFolder* kept) {
    ClipOptions proven = options;
    if (HasChecksums(record)) {
        proven.hash = KindOfChecksum(record.checksumBefore);
    }
    return Perform([&] { return LoadRecorded(file, record, proven); },
                   [&](const RecordedEdits& made) {
                       if (HasChecksums(record)) {
                           RequireRecorded(record, made);
                       }
                   },
                   proven, kept);
}

bool LooksEdited(const std::filesystem::path& file, const RecordedEdits& record) {
    return LooksEdited(FileBytes(file).reader, record);
}

bool IsEdited(const std::filesystem::path& file, const RecordedEdits& record) {
    const std::optional<HashKind> kind = KindOfChecksum(record.checksumAfter);
    const FileBytes now(file);
    return kind && LooksEdited(now.reader, record) && ChecksumOf(now.reader, *kind) == record.checksumAfter;
}

} // namespace zonstory
