#include "clip/NewVersion.h"

#include <algorithm>
#include <optional>

#include <fcntl.h>

#include "clip/EmbeddedXMP.h"
#include "clip/Essence.h"
#include "clip/Interrupt.h"
#include "clip/IsoBoxes.h"
#include "clip/MovPacket.h"
#include "clip/SameMetadata.h"
#include "clip/Sidecar.h"
#include "files/FileSize.h"

namespace zonstory {

namespace {

bool IsIso(XMP_FileFormat format) {
    return format == kXMP_MOVFile || format == kXMP_MPEG4File;
}

bool Carries(const SXMPMeta& written, const ClipState& state) {
    return state.wanted.IsWhatWasWritten(MetadataContent(written), state.before);
}

void RequireWantedMetadata(const SXMPMeta& written, const ClipState& state) {
    if (!Carries(written, state)) {
        throw ClipError("the metadata read back from its copy is not what was written");
    }
}

void RequireNothingMoved(const Essence& before, const Essence& after) {
    const auto isSame = [](ByteRange left, ByteRange right) {
        return left.offset == right.offset && left.size == right.size;
    };
    if (!std::equal(before.ranges.begin(), before.ranges.end(), after.ranges.begin(), after.ranges.end(), isSame)) {
        throw ClipError("its media would not be found again after writing inside");
    }
}

// A media file open for reading, with what is known of its layout.
struct MediaFile {
    MediaFile(const FileDescriptor& file, std::uint64_t size, XMP_FileFormat format)
        : reader(file, size), essence(FindEssence(reader, format)) {
        if (IsIso(format)) {
            iso = ReadIsoLayout(reader);
        }
    }

    bool HasIndexInFront() const { return iso && iso->indexInFront; }

    ByteReader reader;
    Essence essence;
    std::optional<IsoLayout> iso;
};

void RequireSameMedia(const MediaFile& before, const MediaFile& after, const ClipOptions& options,
                      std::vector<std::string>& notes) {
    if (before.essence.mustNotMove) {
        RequireNothingMoved(before.essence, after.essence);
    }
    if (before.iso) {
        RequireSameMediaPositions(before.reader, *before.iso, after.reader, *after.iso);
    }
    if (options.verifyEssence && before.essence.isKnown) {
        RequireSameEssence(before.reader, before.essence, after.reader, after.essence);
    } else if (options.verifyEssence) {
        notes.emplace_back("its media was not compared, since its format is not known closely enough");
    }
}

void WriteCopy(const ClipState& state, Layout layout, Replacement& replacement) {
    constexpr int kWithSecondCopy = 2; // the toolkit moves an index by making a copy of its own
    replacement.CopyTarget(layout == Layout::IndexInFront ? kWithSecondCopy : 1);
    ThrowIfInterrupted();
    WriteEmbeddedXMP(replacement.Path(), state.xmp, layout);
    ThrowIfInterrupted();
}

// Whether the copy has the layout that a file with its index in front is to have as well.
bool KeepsIndexInFront(const MediaFile& before, const ClipState& state, const Replacement& replacement) {
    if (!before.HasIndexInFront()) {
        return true;
    }
    const FileDescriptor copy = replacement.Open(O_RDONLY);
    return MediaFile(copy, FileSize(copy), state.format).HasIndexInFront();
}

// A MOV's index holds its metadata, grows with it and then moves to the end; the metadata of an MP4 goes behind all.
// The pieces of a fragmented file name their places in it, which the toolkit does not correct when it moves them.
Layout FirstLayout(const MediaFile& before, const ClipState& state) {
    const bool willMove = state.format == kXMP_MOVFile && before.HasIndexInFront();
    return willMove && !before.essence.mustNotMove ? Layout::IndexInFront : Layout::AsItFalls;
}

void RequireMetadataInCopy(const ClipState& state, const FileDescriptor& copy, const Replacement& replacement) {
    const auto read = [&] { return ReadEmbeddedXMP(replacement.Path(), copy).xmp; };
    SXMPMeta written = read();
    if (state.format == kXMP_MOVFile && !Carries(written, state) && OverwriteMovPacket(copy, state.xmp)) {
        written = read();
    }
    RequireWantedMetadata(written, state);
}

std::vector<std::string> PrepareClip(const ClipState& state, const ClipOptions& options, Replacement& replacement) {
    std::vector<std::string> notes;
    const MediaFile before(state.file.File(), static_cast<std::uint64_t>(state.file.Status().st_size), state.format);
    WriteCopy(state, FirstLayout(before, state), replacement);
    if (!KeepsIndexInFront(before, state, replacement) && !before.essence.mustNotMove) {
        replacement.Discard();
        WriteCopy(state, Layout::IndexInFront, replacement);
    }
    const FileDescriptor copy = replacement.Open(O_RDWR);
    RequireMetadataInCopy(state, copy, replacement);
    const MediaFile after(copy, FileSize(copy), state.format);
    if (before.HasIndexInFront() && !after.HasIndexInFront()) {
        throw ClipError("its index would not stay in front of its media");
    }
    RequireSameMedia(before, after, options, notes);
    return notes;
}

void PrepareSidecar(const ClipState& state, Replacement& replacement) {
    replacement.Write(SidecarText(state.xmp));
    RequireWantedMetadata(ReadSidecar(replacement.Open(O_RDONLY)), state);
}

} // namespace

std::vector<std::string> PrepareNewVersion(const ClipState& state, const ClipOptions& options,
                                           Replacement& replacement) try {
    if (state.target == Target::Inside) {
        return PrepareClip(state, options, replacement);
    }
    PrepareSidecar(state, replacement);
    return {};
} catch (const XMP_Error& error) {
    throw ClipError(std::string("its metadata cannot be written: ") + error.what());
}

} // namespace zonstory
