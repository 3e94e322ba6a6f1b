#include "clip/ClipState.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "clip/EmbeddedXMP.h"
#include "clip/Sidecar.h"
#include "clip/packet/PacketEdits.h"
#include "clip/packet/PacketMap.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;
using Change = std::function<void(SXMPMeta&)>;

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
void ReadInside(ClipState& clip) try {
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

void NoteSidecarBeside(ClipState& clip, const ClipOptions& options) {
    if (const SidecarChoice sidecar = ChooseSidecar(clip.file.Path(), options.sidecarName); sidecar.exists) {
        clip.notes.push_back("carries its metadata inside; a sidecar lies beside it, " +
                             sidecar.path.filename().native());
    }
}

TargetFile OpenSidecar(const fs::path& path) try {
    return TargetFile::OpenOrAbsent(path);
} catch (const FileError& error) {
    throw ClipError(std::string("its sidecar ") + error.what());
}

StatePointer LoadSidecar(const fs::path& clip, SidecarName name) try {
    const SidecarChoice choice = ChooseSidecar(clip, name);
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

// Whether what another program put inside says something else of the same properties.
bool Contradicts(const EmbeddedXMP& embedded, const MetadataContent& said, const std::vector<PropertyName>& names) {
    const MetadataContent inside(embedded.xmp);
    return std::any_of(names.begin(), names.end(), [&](const PropertyName& name) {
        return !inside.Text(name).empty() && inside.Text(name) != said.Text(name);
    });
}

// A sidecar first, since that is where this program writes; but what another program put inside is better than nothing.
StatePointer LoadWithoutLayout(StatePointer clip, const ClipOptions& options) {
    EmbeddedXMP embedded = ReadEmbeddedXMP(clip->file.Path(), clip->file.File());
    if (options.placement == Placement::Auto) {
        StatePointer sidecar = LoadSidecar(clip->file.Path(), options.sidecarName);
        const MetadataContent said(sidecar->xmp);
        if (Contradicts(embedded, said, said.Differences({}))) {
            sidecar->notes.emplace_back("carries other metadata inside than in its sidecar");
        }
        if (sidecar->hasXMP || !embedded.hasXMP) {
            return sidecar;
        }
    }
    clip->hasXMP = embedded.hasXMP;
    clip->xmp = std::move(embedded.xmp);
    return clip;
}

// ---- Changing --------------------------------------------------------------------------------------------------------

MetadataContent ContentOf(const SXMPMeta& xmp) {
    try {
        return MetadataContent(xmp);
    } catch (const XMP_Error& error) {
        throw ClipError(std::string("its metadata cannot be written: ") + error.what());
    }
}

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

// Tries a longer text. Where that would go beside the clip, its sidecar is the one place for all of it, so that no reading
// and no clearing meets another text than the last that was written.
/// @throws NoExactWay saying why, where there is a sidecar and no room
void RequireRoomBefore(const ClipState& clip, const ClipOptions& options) {
    constexpr const char* kNamespace = "http://purl.org/dc/elements/1.1/"; // any that the toolkit knows
    constexpr const char* kProperty = "source";
    constexpr std::size_t kLongText = std::size_t{1} << 20; // more than padding holds
    if (options.placement == Placement::Auto && ChooseSidecar(clip.file.Path(), options.sidecarName).exists) {
        SXMPMeta longer(clip.packet.data(), clip.packet.size());
        longer.DeleteProperty(kNamespace, kProperty); // what it was might have another form
        longer.SetProperty(kNamespace, kProperty, std::string(kLongText, '-'));
        const MetadataContent wanted = ContentOf(longer);
        static_cast<void>(clip.layout->Write(PacketInside(clip, wanted.Differences(ContentOf(clip.xmp)), wanted)));
    }
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

void Apply(const Change& change, ClipState& state) {
    state.before = ContentOf(state.xmp);
    change(state.xmp);
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

} // namespace

std::string ClipState::Extension() const {
    const std::string extension = file.Path().extension().native();
    return extension.empty() ? extension : extension.substr(1);
}

StatePointer LoadClip(const fs::path& clip, const ClipOptions& options) {
    StatePointer state = OpenClip(clip);
    if (options.placement == Placement::Sidecar) {
        return LoadSidecar(state->file.Path(), options.sidecarName);
    }
    try {
        ReadInside(*state);
        RequireRoomBefore(*state, options);
    } catch (const NoExactWay&) {
        return LoadWithoutLayout(std::move(state), options);
    }
    NoteSidecarBeside(*state, options);
    return state;
}

StatePointer LoadChanged(const fs::path& clip, const ClipOptions& options, const Change& change) {
    StatePointer state = OpenClip(clip);
    std::vector<std::string> notes;
    if (options.placement != Placement::Sidecar) {
        try {
            ReadInside(*state);
            RequireRoomBefore(*state, options);
            Apply(change, *state);
            if (!state->edits.empty()) {
                NoteSidecarBeside(*state, options);
            }
            return state;
        } catch (const NoExactWay& reason) {
            if (options.placement == Placement::Inside) {
                throw ClipError(std::string("cannot be written inside, since ") + reason.what());
            }
            notes.push_back(std::string("not written inside, since ") + reason.what());
        }
    }
    StatePointer sidecar = LoadSidecar(state->file.Path(), options.sidecarName);
    Apply(change, *sidecar);
    if (sidecar->edits.empty() || notes.empty()) {
        return sidecar;
    }
    if (Contradicts(ReadEmbeddedXMP(state->file.Path(), state->file.File()), sidecar->wanted,
                    sidecar->wanted.Differences(sidecar->before))) {
        notes.emplace_back("carries other metadata inside, which stays as it is");
    }
    sidecar->notes.insert(sidecar->notes.begin(), notes.begin(), notes.end());
    return sidecar;
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
