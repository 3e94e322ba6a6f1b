#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

/// Real clips of a second or less, made by ffmpeg when a test asks for them, and what independent programs say of them.
namespace support {

struct ClipSample {
    const char* name; ///< Letters and digits: it becomes part of a test's name.
    const char* file;
    bool isInside;       ///< Whether its metadata goes inside it, else into a sidecar.
    const char* options; ///< Of ffmpeg, parted by blanks, behind a moving picture as first input and a tone as second.
};
void PrintTo(const ClipSample& sample, std::ostream* stream);

/// One of each container, in the layouts that matter.
const std::vector<ClipSample>& ClipSamples();
const ClipSample& SampleNamed(const std::string& name);

/// Makes a clip.
/// @return Its path. @throws std::runtime_error with what ffmpeg said.
std::filesystem::path MakeClip(const std::filesystem::path& folder, const ClipSample& sample);

/// A digest of all pictures and sounds that ffmpeg decodes, and what it complains about; or of those from a second on.
std::string DecodedDigest(const std::filesystem::path& clip, const std::string& from = "0");

/// The value of a tag ("XMP-dc:Source") as exiftool reads it; empty without one.
std::string ExifToolValue(const std::filesystem::path& file, const std::string& tag);
/// The value of a property ("Xmp.dc.source") as exiv2 reads it.
std::string Exiv2Value(const std::filesystem::path& file, const std::string& property);

} // namespace support
