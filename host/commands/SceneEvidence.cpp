#include "commands/SceneEvidence.h"

#include <utility>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/Story.h>

#include "clip/IXml.h"
#include "clip/TargetFile.h"
#include "clip/layout/Chunks.h"
#include "files/FileSize.h"
#include "match/Decision.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

// Only these hold the chunk; others are not opened for it.
bool IsSoundFile(const fs::path& clip) {
    const std::string extension = LowerCase(clip.extension().string());
    return extension == ".wav" || extension == ".bwf" || extension == ".rf64";
}

// Nothing where the file cannot be read, which is said when its metadata is asked for.
std::optional<IXml> ReadIXml(const fs::path& clip) try {
    const TargetFile file = TargetFile::Open(clip);
    const ByteReader bytes(file.File(), FileSize(file.File()));
    const std::optional<std::string> chunk = FindRiffChunk(bytes, FourCharacters("iXML"));
    return chunk ? ParseIXml(*chunk) : std::nullopt;
} catch (const FileError&) {
    return std::nullopt;
}

void AddField(SceneEvidence& evidence, Source source, const std::string& scene, const std::string& take) {
    if (!scene.empty()) {
        evidence.statements.push_back(StateField(source, scene, take));
    }
}

void AddXmp(SceneEvidence& evidence, const fs::path& clip, const ClipOptions& options) {
    try {
        ClipContents contents = ReadClip(clip, options);
        const CarriedNumbers carried = CarriedNumbersIn(contents);
        evidence.problem = contents.contradiction.empty() ? "" : "says " + contents.contradiction;
        AddField(evidence, Source::Xmp, carried.scene, carried.take);
    } catch (const FileError& error) {
        evidence.problem = error.what();
    } catch (const XMP_Error& error) {
        evidence.problem = error.what();
    }
}

// A logger's words stay where they are when the scene goes into the clip's other place.
std::string FirstValue(const ClipContents& contents, const char* name) {
    std::string value;
    for (const SXMPMeta* const xmp : {&contents.xmp, &contents.other}) {
        if (value.empty()) {
            xmp->GetProperty(zonmetadata::kDynamicMediaNamespaceURI, name, &value, nullptr);
        }
    }
    return value;
}

} // namespace

SceneEvidence GatherEvidence(const fs::path& clip, const ClipOptions& options) {
    SceneEvidence evidence;
    if (const auto ixml = IsSoundFile(clip) ? ReadIXml(clip) : std::nullopt) {
        AddField(evidence, Source::IXml, ixml->scene, ixml->take);
    }
    AddXmp(evidence, clip, options);
    return evidence;
}

CarriedNumbers CarriedNumbersIn(ClipContents& contents) {
    CarriedNumbers carried;
    zonstoryparser::GetSceneNumberFromXMP(contents.xmp, nullptr, &carried.scene);
    carried.take = FirstValue(contents, "takeNumber");
    carried.camera = FirstValue(contents, "cameraLabel");
    return carried;
}

} // namespace zonstory
