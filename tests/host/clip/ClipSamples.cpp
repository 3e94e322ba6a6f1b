#include "host/clip/ClipSamples.h"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "support/RunProgram.h"

namespace support {

namespace {

namespace fs = std::filesystem;

#define MOVING "-map 0 -map 1 -c:v mjpeg -c:a pcm_s16le "
#define TITLED "-metadata title=Title -metadata artist=Artist -metadata copyright=Copyright -metadata comment=Comment "

std::string WithoutLineEnd(std::string text) {
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

} // namespace

void PrintTo(const ClipSample& sample, std::ostream* stream) {
    *stream << sample.name;
}

const std::vector<ClipSample>& ClipSamples() {
    static const std::vector<ClipSample> samples = {
        {"Mp4IndexAtEnd", "end.mp4", true, "-map 0 -map 1 -c:v mpeg4 -c:a aac " TITLED},
        {"Mp4IndexInFront", "front.mp4", true, "-map 0 -map 1 -c:v mpeg4 -c:a aac -movflags +faststart " TITLED},
        {"Mp4Fragmented", "pieces.mp4", true, "-map 0 -map 1 -c:v mpeg4 -c:a aac -movflags +frag_keyframe+empty_moov"},
        {"MovIndexAtEnd", "end.mov", true, MOVING TITLED "-metadata creation_time=2019-05-06T07:08:09Z"},
        {"MovIndexInFront", "front.mov", true, MOVING TITLED "-movflags +faststart"},
        {"Avi", "clip.avi", true, MOVING TITLED},
        {"Wav", "clip.wav", true,
         "-map 1 -write_bext 1 -metadata description=Slate -metadata originator=Mixer " TITLED},
        {"WavBeyond4GB", "large.wav", true, "-map 1 -rf64 always " TITLED},
        {"Mp3", "clip.mp3", true, "-map 1 " TITLED},
        {"Mp3Bare", "bare.mp3", true, "-map 1 -write_xing 0 -id3v2_version 0"},
        {"Wmv", "clip.wmv", false, "-map 0 -map 1 -c:v wmv2"},
        {"Flv", "clip.flv", false, "-map 0 -map 1 -c:v flv1 -ar 44100"},
        {"Mkv", "clip.mkv", false, MOVING},
        {"Mxf", "clip.mxf", false, "-map 0 -map 1 -c:v mpeg2video -ar 48000"},
        {"TransportStream", "clip.ts", false, "-map 0 -map 1 -c:v mpeg2video"},
        {"Mpeg", "clip.mpg", false, "-map 0 -map 1 -c:v mpeg2video"},
    };
    return samples;
}

const ClipSample& SampleNamed(const std::string& name) {
    const auto found = std::find_if(ClipSamples().begin(), ClipSamples().end(),
                                    [&](const ClipSample& sample) { return sample.name == name; });
    if (found == ClipSamples().end()) {
        throw std::logic_error("no sample is named " + name);
    }
    return *found;
}

fs::path MakeClip(const fs::path& folder, const ClipSample& sample) {
    std::vector<std::string> words = {"ffmpeg", "-nostdin", "-v", "error",
                                      "-f",     "lavfi",    "-i", "testsrc=d=0.5:s=64x48:r=25",
                                      "-f",     "lavfi",    "-i", "sine=d=0.5:f=440"};
    std::istringstream options(sample.options);
    for (std::string option; options >> option;) {
        words.push_back(option);
    }
    fs::path clip = folder / sample.file;
    words.push_back(clip);
    if (const ProgramResult result = RunProgram(words); result.exitCode != 0) {
        throw std::runtime_error("ffmpeg: " + result.output);
    }
    return clip;
}

std::string DecodedDigest(const fs::path& clip, const std::string& from) {
    const char* const said = from == "0" ? "error" : "quiet"; // between two frames there is always something to say
    return RunProgram({"ffmpeg", "-nostdin", "-v", said, "-ss", from, "-i", "file:" + clip.native(), "-map", "0:v?",
                       "-map", "0:a?", "-f", "md5", "-"})
        .output;
}

std::string ExifToolValue(const fs::path& file, const std::string& tag) {
    return WithoutLineEnd(RunProgram({"exiftool", "-s3", '-' + tag, file.native()}).output);
}

std::string Exiv2Value(const fs::path& file, const std::string& property) {
    return WithoutLineEnd(RunProgram({"exiv2", "-K", property, "-Pv", file.native()}).output);
}

} // namespace support
