#include "clip/Clip.h"

#include <utility>

#include "clip/AtRest.h"
#include "clip/ClipState.h"
#include "clip/Interrupt.h"
#include "clip/NewVersion.h"
#include "clip/Replacement.h"
#include "clip/SameMetadata.h"
#include "clip/Workspace.h"

namespace zonstory {

namespace {

using Change = std::function<void(SXMPMeta&)>;

MetadataContent ContentOf(const SXMPMeta& xmp) {
    try {
        return MetadataContent(xmp);
    } catch (const XMP_Error& error) {
        throw ClipError(std::string("its metadata cannot be written: ") + error.what());
    }
}

// Whether the change makes a difference.
bool Apply(const Change& change, ClipState& state) {
    state.before = ContentOf(state.xmp);
    change(state.xmp);
    state.wanted = ContentOf(state.xmp);
    return state.wanted != state.before;
}

void RequireAtRest(const ClipState& state, const ClipOptions& options) try {
    RequireAtRest(state.file, options.settle);
} catch (const FileError& error) {
    throw ClipError((state.target == Target::Sidecar ? "its sidecar " : "") + std::string(error.what()));
}

// Reads the clip again, now that no other run can change it.
// @return Whether it still calls for a change.
bool Reload(const std::filesystem::path& clip, const ClipOptions& options, const Change& change, ClipState& state) {
    ClipState fresh = LoadClip(clip, options);
    if (fresh.file.Path() != state.file.Path()) { // the lock is for another name
        throw ClipError("was changed by another program at the same time");
    }
    state = std::move(fresh);
    return Apply(change, state);
}

UpdateResult MakeResult(Outcome outcome, ClipState& state) {
    return {outcome, state.target, state.file.Path(), std::move(state.notes), {}};
}

void Append(std::vector<std::string>& to, std::vector<std::string> notes) {
    to.insert(to.end(), std::make_move_iterator(notes.begin()), std::make_move_iterator(notes.end()));
}

} // namespace

ClipContents ReadClip(const std::filesystem::path& clip, const ClipOptions& options) {
    ClipState state = LoadClip(clip, options);
    return {state.target, state.file.Path(), state.hasXMP, std::move(state.xmp)};
}

UpdateResult UpdateClip(const std::filesystem::path& clip, const ClipOptions& options, const Change& change,
                        KeptFolder* kept) {
    ThrowIfInterrupted();
    ClipState state = LoadClip(clip, options);
    if (!Apply(change, state)) {
        Workspace::RemoveStale(state.file, kept);
        return MakeResult(Outcome::Unchanged, state);
    }
    RequireAtRest(state, options);
    Replacement replacement(state.file, kept);
    if (!state.file.IsUnchanged() && !Reload(clip, options, change, state)) {
        return MakeResult(Outcome::Unchanged, state);
    }
    Append(state.notes, PrepareNewVersion(state, options, replacement));
    if (options.dryRun) {
        return MakeResult(Outcome::WouldWrite, state);
    }
    std::vector<std::string> warnings = replacement.Commit(options.preserveTime);
    UpdateResult result = MakeResult(Outcome::Written, state);
    result.warnings = std::move(warnings);
    return result;
}

} // namespace zonstory
