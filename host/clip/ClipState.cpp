#include "clip/ClipState.h"

#include <utility>

#include "clip/EmbeddedXMP.h"
#include "clip/Sidecar.h"

namespace zonstory {

namespace {

TargetFile OpenClip(const std::filesystem::path& path) {
    TargetFile clip = TargetFile::Open(path);
    if (IsSidecarName(clip.Path())) {
        throw ClipError("is a sidecar, not a clip");
    }
    if (clip.Status().st_size == 0) {
        throw ClipError("is empty");
    }
    return clip;
}

TargetFile OpenSidecar(const std::filesystem::path& path) try {
    return TargetFile::OpenOrAbsent(path);
} catch (const FileError& error) {
    throw ClipError(std::string("its sidecar ") + error.what());
}

ClipState LoadSidecar(const std::filesystem::path& clip, SidecarName name) {
    ClipState state;
    state.target = Target::Sidecar;
    const SidecarChoice sidecar = ChooseSidecar(clip, name);
    if (!sidecar.note.empty()) {
        state.notes.push_back(sidecar.note);
    }
    state.file = OpenSidecar(sidecar.path);
    state.hasXMP = state.file.Exists();
    if (state.hasXMP) {
        state.xmp = ReadSidecar(state.file.File());
    }
    return state;
}

} // namespace

ClipState LoadClip(const std::filesystem::path& clip, const ClipOptions& options) {
    ClipState state;
    state.file = OpenClip(clip);
    if (options.forceSidecar) {
        return LoadSidecar(state.file.Path(), options.sidecarName);
    }
    EmbeddedXMP embedded = ReadEmbeddedXMP(state.file.Path(), state.file.File());
    if (!embedded.isWritable) {
        return LoadSidecar(state.file.Path(), options.sidecarName);
    }
    state.format = embedded.format;
    state.hasXMP = embedded.hasXMP;
    state.xmp = std::move(embedded.xmp);
    return state;
}

} // namespace zonstory
