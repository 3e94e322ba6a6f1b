#include "clip/Sidecar.h"

#include <optional>

#include <strings.h>
#include <sys/stat.h>

#include "clip/FrameSequence.h"
#include "clip/packet/MetadataContent.h"
#include "files/FileIdentity.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

constexpr const char* kExtension = ".xmp";
constexpr const char* kRDFNamespace = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

fs::path UpperCase(fs::path sidecar) {
    return sidecar.replace_extension(".XMP");
}

// The toolkit takes any XML for metadata that happens to be empty.
bool HoldsRDF(const std::string& bytes, const SXMPMeta& xmp) {
    return bytes.find(kRDFNamespace) != std::string::npos || MetadataContent(xmp) != MetadataContent(SXMPMeta());
}

} // namespace

fs::path SidecarPath(const fs::path& clip, SidecarName name) {
    fs::path sidecar = SequenceName(clip);
    if (name == SidecarName::Short) {
        return sidecar.replace_extension(kExtension);
    }
    return sidecar += kExtension;
}

bool IsSidecarName(const fs::path& file) {
    return ::strcasecmp(file.extension().c_str(), kExtension) == 0;
}

// As they are asked for; then as other programs and cards write them. Where upper and lower case are one, two of these
// names may be one file.
SidecarChoice ChooseSidecar(const fs::path& clip, SidecarName name) {
    const SidecarName otherName = name == SidecarName::Short ? SidecarName::Full : SidecarName::Short;
    SidecarChoice choice = {SidecarPath(clip, name), false, {}};
    std::optional<FileKey> chosen;
    for (const fs::path& path : {choice.path, SidecarPath(clip, otherName), UpperCase(SidecarPath(clip, name)),
                                 UpperCase(SidecarPath(clip, otherName))}) {
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0) {
            continue;
        }
        if (!chosen) {
            chosen = KeyOf(status);
            choice.path = path;
            choice.exists = true;
        } else if (*chosen != KeyOf(status)) {
            choice.note = "has two sidecars; " + path.filename().native() + " was left alone";
        }
    }
    return choice;
}

SidecarChoice FullSidecar(const fs::path& clip) {
    struct stat status {};
    const fs::path path = SidecarPath(clip, SidecarName::Full);
    return {path, ::lstat(path.c_str(), &status) == 0, {}};
}

SXMPMeta ReadSidecar(const std::string& bytes) {
    constexpr const char* kRefusal = "its sidecar is not XMP and is left alone";
    try {
        SXMPMeta xmp(bytes.data(), bytes.size());
        if (HoldsRDF(bytes, xmp)) {
            return xmp;
        }
    } catch (const XMP_Error&) {
        throw ClipError(kRefusal);
    }
    throw ClipError(kRefusal);
}

} // namespace zonstory
