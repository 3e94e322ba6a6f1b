#include "clip/Clip.h"

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
    return {outcome,
            state.target,
            state.file.Path(),
            std::move(state.notes),
            {},
            {},
            state.leavesOther ? std::optional(other) : std::nullopt};
}

// What a load finds to be done is done, while no other run works on the file.
template <typename Load>
UpdateResult Perform(Load load, const ClipOptions& options, KeptFolder* kept) {
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
    const bool isGone = record.sizeAfter == 0; // of a sidecar alone: no clip is without bytes
    std::vector<std::string> warnings = isGone ? replacement.Remove() : replacement.Commit(options.preserveTime);
    UpdateResult result = MakeResult(Outcome::Written, state);
    result.warnings = std::move(warnings);
    result.record = std::move(record);
    return result;
}

// A file whose bytes are changed, whatever they mean; where they are a container's, its media has to be found afterwards.
StatePointer LoadRecorded(const std::filesystem::path& file, const RecordedEdits& record) {
    constexpr const char* kRefusal = "was changed since, so that its bytes are not those that were recorded";
    auto state = std::make_unique<ClipState>();
    state->target = IsSidecarName(file) ? Target::Sidecar : Target::Inside;
    state->file = state->target == Target::Sidecar ? TargetFile::OpenOrAbsent(file) : TargetFile::Open(file);
    const bool isGone = !state->file.Exists();
    state->reader.emplace(state->file.File(), isGone ? 0 : static_cast<std::uint64_t>(state->file.Status().st_size));
    if (state->reader->Size() != record.sizeBefore || !AreInOrder(record.edits, record.sizeBefore) ||
        InverseOf(record.edits, *state->reader) != record.inverse ||
        SizeAfter(record.edits, record.sizeBefore) != record.sizeAfter ||
        (state->target == Target::Inside && record.sizeAfter == 0)) {
        throw ClipError(kRefusal);
    }
    state->edits = record.edits;
    if (state->target == Target::Sidecar) {
        return state;
    }
    try {
        state->layout = ReadLayout(*state->reader, state->Extension());
    } catch (const NoExactWay&) { // its bytes alone are known
    }
    return state;
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
    return Perform([&] { return LoadChanged(clip, options, change); }, options, kept);
}

UpdateResult SettleClip(const std::filesystem::path& clip, Target place, const ClipOptions& options, KeptFolder* kept) {
    return Perform([&] { return LoadSettled(clip, place, options); }, options, kept);
}

UpdateResult RepeatEdits(const std::filesystem::path& file, const RecordedEdits& record, const ClipOptions& options,
                         KeptFolder* kept) {
    return Perform([&] { return LoadRecorded(file, record); }, options, kept);
}

} // namespace zonstory
