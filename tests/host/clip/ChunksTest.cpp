#include <gtest/gtest.h>

#include <optional>

#include "clip/layout/Chunks.h"
#include "host/clip/MadeChunks.h"
#include "host/files/MemoryFile.h"

namespace {

using namespace std::string_literals;
using support::Chunk;
using support::Little;

// In a file of `head`, then a hole, then a chunk.
std::optional<std::string> Find(const std::string& head, std::uint64_t hole = 0, const std::string& tail = {}) {
    support::MemoryFile file(head);
    file.Put(static_cast<off_t>(head.size() + hole), tail);
    const zonstory::ByteReader reader(file.Descriptor(), head.size() + hole + tail.size());
    return zonstory::FindRiffChunk(reader, zonstory::FourCharacters("iXML"), 4);
}

TEST(RiffChunk, IsFoundBehindOthersAndGigabytes) {
    const std::uint64_t media = std::uint64_t{5} << 30;
    const std::string elsewhere = Little(0xFFFFFFFF);
    const std::string ixml = Chunk("iXML", "<x/>");
    const auto head = [](std::uint64_t size, const std::string& rows = {}) {
        return "RF64....WAVE" +
               Chunk("ds64", Little(0, 8) + Little(size, 8) + Little(0, 8) + Little(rows.size() / 12) + rows);
    };
    EXPECT_EQ(Find("RIFF....WAVE" + Chunk("data", "123") + Chunk("iXML", "<x/> and more")), "<x/>") << "cut";
    EXPECT_EQ(Find("RIFF....WAVEodd " + Little(3) + "odd" + ixml), "<x/>") << "a pad byte forgotten";
    EXPECT_EQ(Find("RIFF....WAVEiXML" + Little(4000000000) + "<x/>"), "<x/>") << "the file is cut off";
    EXPECT_EQ(Find(head(media) + "data" + elsewhere, media, ixml), "<x/>");
    EXPECT_EQ(Find(head(7, "more" + Little(media, 8)) + "more" + elsewhere, media, ixml), "<x/>");
    EXPECT_EQ(Find(head(7) + Chunk("data", "12") + ixml), "<x/>") << "a relic";
    for (const std::string& none :
         {"RIFX....WAVE" + ixml, "RIFF....WAVEdata" + elsewhere + ixml, ""s, "RIFF"s,
          "RIFF....WAVE" + std::string(16, '\0') + ixml, head(~std::uint64_t{0} - 4) + "data" + elsewhere + ixml}) {
        EXPECT_EQ(Find(none), std::nullopt);
    }
}

} // namespace
