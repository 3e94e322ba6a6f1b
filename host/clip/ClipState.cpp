#include "clip/ClipState.h"

#include <string_view>
#include <utility>

#include "clip/EmbeddedXMP.h"
#include "clip/Sidecar.h"
#include "clip/packet/PacketEdits.h"
#include "clip/packet/PacketMap.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

// ---- Reading ---------------------------------------------------------------------------------------------------------

StatePointer StateOf(TargetFile file, Target target) {
    auto state = std::make_unique<ClipState>();
    state->target = target;
    state->file = std::move(file);
    if (state->file.Exists()) {
        state->reader.emplace(state->file.File(), static_cast<std::uint64_t>(state->file.Status().st_size));
    }
    return state;
}

// What is behind the last byte of a packet as some programs write it is no part of it, and no XML.
std::string ReadPacket(const ByteReader& file, ByteRange range) {
    constexpr std::uint64_t kLargest = std::uint64_t{64} << 20; // far above any; a bound for what is read into memory
    if (range.size > kLargest) {
        throw NoExactWay("its XMP is too large to be any");
    }
    std::string bytes(static_cast<std::size_t>(range.size), '\0');
    file.Read(range.offset, bytes.data(), bytes.size());
    bytes.resize(bytes.find_last_not_of('\0') + 1);
    return bytes;
}

bool IsBlank(std::string_view bytes) {
    return bytes.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// @throws NoExactWay, DamagedFile
void ReadPacketInside(ClipState& clip) try {
    clip.layout = ReadLayout(*clip.reader, clip.Extension());
    if (const std::optional<ByteRange> range = clip.layout->Packet()) {
        clip.packet = ReadPacket(*clip.reader, *range);
    }
    if (IsBlank(clip.packet)) {
        clip.packet.clear();
    }
    clip.hasXMP = !clip.packet.empty();
    clip.xmp = SXMPMeta(clip.packet.data(), clip.packet.size());
} catch (const XMP_Error&) {
    throw NoExactWay("the XMP inside it cannot be read");
}

TargetFile OpenSidecar(const fs::path& path) try {
    return TargetFile::OpenOrAbsent(path);
} catch (const FileError& error) {
    throw ClipError(std::string("its sidecar ") + error.what());
}

// ---- Changing --------------------------------------------------------------------------------------------------------

bool Says(const std::string& packet, const MetadataContent& wanted) try {
    return MetadataContent(SXMPMeta(packet.data(), packet.size())) == wanted;
} catch (const XMP_Error&) {
    return false;
}

// The edits of the metadata's own bytes; with nothing there yet, of an empty packet.
EditList EditsOf(const std::string& packet, const std::vector<PropertyName>& changed, const MetadataContent& wanted) {
    EditList edits;
    try {
        edits = PacketEdits(packet, changed, wanted);
    } catch (const PacketError& error) {
        throw NoExactWay(std::string("the XMP inside it ") + error.what());
    }
    if (!Says(Edited(packet, edits), wanted)) { // one property is said in two ways, perhaps
        throw NoExactWay("the XMP inside it cannot be changed without changing more of it");
    }
    return edits;
}

std::string PacketInside(const ClipState& clip, const std::vector<PropertyName>& changed,
                         const MetadataContent& wanted) {
    const std::string old = clip.packet.empty() ? EmptyPacket(true) : clip.packet;
    return WithoutPadding(Edited(old, EditsOf(old, changed, wanted)));
}

void EditInside(ClipState& clip, const std::vector<PropertyName>& changed) {
    clip.written = PacketInside(clip, changed, clip.wanted);
    EditPlan plan = clip.written == EmptyPacket(true) ? clip.layout->Remove() : clip.layout->Write(clip.written);
    clip.edits = std::move(plan.edits);
    clip.notes.insert(clip.notes.end(), plan.notes.begin(), plan.notes.end());
}

void EditSidecar(ClipState& sidecar, const std::vector<PropertyName>& changed) try {
    if (sidecar.packet.empty()) {
        const std::string empty = EmptyPacket(false);
        sidecar.edits = {{0, 0, Edited(empty, EditsOf(empty, changed, sidecar.wanted))}};
        return;
    }
    sidecar.edits = EditsOf(sidecar.packet, changed, sidecar.wanted);
    if (Edited(sidecar.packet, sidecar.edits) == EmptyPacket(false)) {
        sidecar.edits = {{0, sidecar.reader->Size(), {}}};
    }
} catch (const NoExactWay&) {
    throw ClipError("its sidecar is XMP of a form that cannot be changed exactly, and is left alone");
}

} // namespace

std::string ClipState::Extension() const {
    const std::string extension = file.Path().extension().native();
    return extension.empty() ? extension : extension.substr(1);
}

StatePointer OpenClip(const fs::path& path) {
    TargetFile clip = TargetFile::Open(path);
    if (IsSidecarName(clip.Path())) {
        throw ClipError("is a sidecar, not a clip");
    }
    if (clip.Status().st_size == 0) {
        throw ClipError("is empty");
    }
    return StateOf(std::move(clip), Target::Inside);
}

void ReadInside(ClipState& clip) {
    try {
        ReadPacketInside(clip);
    } catch (const NoExactWay& reason) {
        clip.noExactWay = reason.what();
    }
}

void ReadEmbedded(ClipState& clip) {
    EmbeddedXMP embedded = ReadEmbeddedXMP(clip.file.Path(), clip.file.File());
    clip.hasXMP = embedded.hasXMP;
    clip.xmp = std::move(embedded.xmp);
}

StatePointer LoadSidecar(const SidecarChoice& choice) try {
    StatePointer sidecar = StateOf(OpenSidecar(choice.path), Target::Sidecar);
    if (!choice.note.empty()) {
        sidecar->notes.push_back(choice.note);
    }
    if (sidecar->reader) {
        sidecar->packet = ReadPacket(*sidecar->reader, {0, sidecar->reader->Size()});
        sidecar->hasXMP = true;
        sidecar->xmp = ReadSidecar(sidecar->packet);
    }
    return sidecar;
} catch (const NoExactWay&) {
    throw ClipError("its sidecar is too large to be one");
}

void BeginChange(ClipState& state) {
    state.before = ContentOf(state.xmp);
}

void FinishChange(ClipState& state) {
    state.wanted = ContentOf(state.xmp);
    const std::vector<PropertyName> changed = state.wanted.Differences(state.before);
    if (changed.empty()) {
        return;
    }
    if (state.target == Target::Inside) {
        EditInside(state, changed);
    } else {
        EditSidecar(state, changed);
    }
}

MetadataContent ContentOf(const SXMPMeta& xmp) {
    try {
        return MetadataContent(xmp);
    } catch (const XMP_Error& error) {
        throw ClipError(std::string("its metadata cannot be written: ") + error.what());
    }
}

bool IsWrittenInside(const TargetFile& clip) try {
    const ByteReader reader(clip.File(), static_cast<std::uint64_t>(clip.Status().st_size));
    const std::string extension = clip.Path().extension().native();
    ReadLayout(reader, extension.empty() ? extension : extension.substr(1));
    return true;
} catch (const NoExactWay&) {
    return false;
}

} // namespace zonstory
