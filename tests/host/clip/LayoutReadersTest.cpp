// Real files of each family made of chunks or tags, written by edits and then looked at by programs of others.
#include <string>

#include <gmock/gmock.h>

#include <zonstoryparser/XMPFiles.h>

#include "support/ClipSamples.h"
#include "support/LayoutInvariants.h"
#include "support/RunProgram.h"

namespace {

const support::ClipSample kFiles[] = {
    {"Wav", "clip.wav", true, "-map 1 -write_bext 1 -metadata description=Slate"},
    {"WavBeyond4GB", "large.wav", true, "-map 1 -rf64 always"},
    {"Avi", "clip.avi", true, "-map 0 -map 1 -c:v mjpeg -c:a pcm_s16le -metadata title=Title"},
    {"Aiff", "clip.aiff", true, "-map 1 -metadata title=Title"},
    {"Aifc", "clip.aifc", true, "-map 1 -c:a pcm_s16le"},
    {"Mp3", "three.mp3", true, "-map 1 -id3v2_version 3 -write_id3v1 1 -metadata title=Title"},
    {"Mp3OfVersion4", "four.mp3", true, "-map 1 -id3v2_version 4 -metadata title=Title"},
    {"Mp3Bare", "bare.mp3", true, "-map 1 -id3v2_version 0"},
};

std::string PacketOf(const std::string& scene) {
    return "<?xpacket begin=\"\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?><x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
           "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" "
           "xmlns:xmpDM=\"http://ns.adobe.com/xmp/1.0/DynamicMedia/\" xmpDM:scene=\"" +
           scene + "\"/></rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";
}

// All that exiftool finds but the packet, and what it reckons from the size of the file or the tag.
std::string OtherTags(const std::filesystem::path& file) {
    return support::RunProgram({"exiftool", "-a", "-G1", "-s", "--XMP:all", "--System:all", "--Composite:all",
                                "--ID3Size", "--RIFFSize64", "--ApplicationData", file.native()})
        .output;
}

std::string SceneForToolkit(const std::filesystem::path& file) {
    SXMPFiles files;
    SXMPMeta xmp;
    std::string scene;
    files.OpenFile(file.c_str(), kXMPFiles_OpenForRead | kXMPFiles_OpenUseSmartHandler);
    files.GetXMP(&xmp);
    xmp.GetProperty("http://ns.adobe.com/xmp/1.0/DynamicMedia/", "scene", &scene, nullptr);
    return scene;
}

class RealFile : public ::testing::TestWithParam<support::ClipSample> {};

TEST_P(RealFile, IsReadAndPlayedByOthers) {
    const support::TemporaryFolder folder;
    const auto file = support::MakeClip(folder.Path(), GetParam());
    const std::string first = support::ReadFile(file);
    const std::string decoded = support::DecodedDigest(file);
    const std::string tags = OtherTags(file);
    const bool isKnownToExifTool = file.extension() != ".aiff" && file.extension() != ".aifc";
    const std::string scene(5000, 'x');
    for (const std::string& value : {std::string("12A"), scene}) {
        const std::string before = support::ReadFile(file);
        support::WriteFile(file, support::Applied(before, support::LayoutOf(before)->Write(PacketOf(value)).edits));
    }
    EXPECT_EQ(support::DecodedDigest(file), decoded);
    EXPECT_EQ(OtherTags(file), tags);
    EXPECT_EQ(SceneForToolkit(file), scene);
    EXPECT_EQ(support::ExifToolValue(file, "XMP-xmpDM:Scene"), isKnownToExifTool ? scene : "");
    const std::string written = support::ReadFile(file);
    const bool isMoved = support::LayoutOf(first)->Media() != support::LayoutOf(written)->Media();
    const std::string cleared = support::Applied(written, support::LayoutOf(written)->Remove().edits);
    EXPECT_TRUE(cleared == first || (isMoved && file.extension() == ".mp3"));
}

INSTANTIATE_TEST_SUITE_P(Of, RealFile, ::testing::ValuesIn(kFiles), [](const auto& made) { return made.param.name; });

} // namespace
