#include "clip/NewVersion.h"

#include <algorithm>

#include "clip/CopyFile.h"
#include "clip/EditPlaces.h"
#include "clip/EmbeddedXMP.h"
#include "clip/Interrupt.h"
#include "clip/SameBytes.h"
#include "clip/packet/PacketEdits.h"
#include "files/FileSize.h"

namespace zonstory {

namespace {

// A sidecar that does not exist yet has no bytes.
ByteReader OldBytes(const ClipState& state) {
    return state.reader ? *state.reader : ByteReader(state.file.File(), 0);
}

void RequireSamePlaces(const ContainerLayout& old, const EditList& edits, const ContainerLayout& made) {
    const NewPlaces places(edits);
    const auto leadsThere = [&](std::uint64_t before, std::uint64_t after) { return places.Of(before) == after; };
    const std::vector<std::uint64_t> before = old.Positions();
    const std::vector<std::uint64_t> after = made.Positions();
    if (!std::equal(before.begin(), before.end(), after.begin(), after.end(), leadsThere)) {
        throw ClipError("its index would not lead to its media any more");
    }
    const auto isSame = [&](ByteRange range, ByteRange madeRange) {
        return range.size == madeRange.size && leadsThere(range.offset, madeRange.offset);
    };
    const std::vector<ByteRange> media = old.Media();
    const std::vector<ByteRange> madeMedia = made.Media();
    if (!std::equal(media.begin(), media.end(), madeMedia.begin(), madeMedia.end(), isSame)) {
        throw ClipError("its media would not be found again");
    }
}

// The very packet that the edits were made for needs no second look at what it says.
void RequireWanted(const ContainerLayout& layout, const ByteReader& made, const ClipState& state) {
    std::string packet;
    if (const std::optional<ByteRange> range = layout.Packet()) {
        packet.resize(static_cast<std::size_t>(range->size));
        made.Read(range->offset, packet.data(), packet.size());
    }
    packet.resize(packet.find_last_not_of('\0') + 1);
    if (WithoutPadding(packet) != state.written &&
        MetadataContent(SXMPMeta(packet.data(), packet.size())) != state.wanted) {
        throw ClipError("the metadata read back from its copy is not what was written");
    }
}

// The properties that the toolkit's reader of this container does not see as they are said.
std::vector<PropertyName> NotSeen(std::vector<PropertyName> names, const EmbeddedXMP& read,
                                  const MetadataContent& said) {
    const MetadataContent seen(read.xmp);
    std::erase_if(names, [&](const PropertyName& name) { return seen.Text(name) == said.Text(name); });
    return names;
}

// That reader puts some of the file's other metadata in the place of the packet's, and does not know every file that is
// sound. So it has to see in the new version what it saw in the old one.
void RequireSeen(const ClipState& state, const Replacement& replacement, const FileDescriptor& copy) {
    const std::vector<PropertyName> changed = state.wanted.Differences(state.before);
    const std::vector<PropertyName> missing = NotSeen(changed, ReadEmbeddedXMP(replacement.Path(), copy), state.wanted);
    if (missing.empty()) {
        return;
    }
    const EmbeddedXMP old = ReadEmbeddedXMP(state.file.Path(), state.file.File());
    if (old.isRead && NotSeen(missing, old, state.before).size() < missing.size()) {
        throw ClipError("the XMP toolkit would not find what is written");
    }
}

Checksums Prove(const ClipState& state, const ClipOptions& options, const ByteReader& old, const ByteReader& made) {
    const bool leavesOutMedia = state.layout && !options.verifyMedia;
    Checksums checksums = RequireEdited(
        old, state.edits, made, leavesOutMedia ? state.layout->Media() : std::vector<ByteRange>(), options.hash);
    if (!state.layout) {
        return checksums;
    }
    const std::unique_ptr<ContainerLayout> layout = ReadLayout(made, state.Extension());
    RequireSamePlaces(*state.layout, state.edits, *layout);
    if (state.wanted != state.before) { // else nothing is known of the metadata but its bytes
        RequireWanted(*layout, made, state);
    }
    return checksums;
}

} // namespace

RecordedEdits PrepareNewVersion(const ClipState& state, const ClipOptions& options, Replacement& replacement) {
    const ByteReader old = OldBytes(state);
    if (!AreInOrder(state.edits, old.Size())) {
        throw ClipError("does not have the bytes that were to be changed");
    }
    RecordedEdits record{old.Size(), SizeAfter(state.edits, old.Size()), state.edits, InverseOf(state.edits, old)};
    const FileDescriptor& copy = replacement.Create();
    CopyEdited(state.file.File(), old.Size(), state.edits, copy, state.file.FolderDescriptor());
    ThrowIfInterrupted();
    try {
        const ByteReader made(copy, FileSize(copy));
        Checksums checksums = Prove(state, options, old, made);
        record.checksumBefore = std::move(checksums.before);
        record.checksumAfter = std::move(checksums.after);
        if (state.layout && state.wanted != state.before) {
            RequireSeen(state, replacement, copy);
        }
    } catch (const DamagedFile& error) {
        throw ClipError(std::string("its copy ") + error.what());
    } catch (const NoExactWay& error) {
        throw ClipError(std::string("its copy would not be read, since ") + error.what());
    } catch (const XMP_Error& error) {
        throw ClipError(std::string("the metadata in its copy cannot be read: ") + error.what());
    }
    return record;
}

} // namespace zonstory
