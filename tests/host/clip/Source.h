#pragma once

#include <gmock/gmock.h>

#include "clip/Clip.h"
#include "host/clip/ClipSamples.h"

/// The one property by which the tests change clips.
namespace support {

namespace fs = std::filesystem;

constexpr const char* kDublinCore = "http://purl.org/dc/elements/1.1/";

inline auto SetSource(const std::string& value = "v") {
    return [value](SXMPMeta& xmp) { xmp.SetProperty(kDublinCore, "source", value); };
}

/// What the clip says now; empty for none.
inline std::string SourceOf(const fs::path& clip) {
    std::string value;
    zonstory::ReadClip(clip, {}).xmp.GetProperty(kDublinCore, "source", &value, nullptr);
    return value;
}

} // namespace support
