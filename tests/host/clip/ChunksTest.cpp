#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include "clip/layout/Chunks.h"

namespace {

using namespace std::string_literals;
using zonstory::FourCharacters;

std::string Little(std::uint64_t number, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, number >>= 8) {
        text += static_cast<char>(number & 0xFF);
    }
    return text;
}

std::string Chunk(const std::string& id, const std::string& body) {
    return id + Little(body.size(), 4) + body + std::string(body.size() % 2, '\0');
}

std::string Form(const std::string& id, const std::string& chunks) {
    return id + Little(chunks.size() + 4, 4) + "WAVE" + chunks;
}

// What is found in a file of `head`, then a hole, then `tail`.
std::optional<std::string> Find(const std::string& head, std::uint64_t hole = 0, const std::string& tail = {},
                                std::size_t most = 1024) {
    const zonstory::FileDescriptor file(::memfd_create("chunks", MFD_CLOEXEC));
    const std::uint64_t behind = head.size() + hole;
    EXPECT_EQ(::pwrite(file.Get(), head.data(), head.size(), 0), static_cast<ssize_t>(head.size()));
    EXPECT_EQ(::ftruncate(file.Get(), static_cast<off_t>(behind)), 0);
    EXPECT_EQ(::pwrite(file.Get(), tail.data(), tail.size(), static_cast<off_t>(behind)),
              static_cast<ssize_t>(tail.size()));
    return zonstory::FindRiffChunk(zonstory::ByteReader(file, behind + tail.size()), FourCharacters("iXML"), most);
}

std::string LongSizes(std::uint64_t dataSize, const std::string& rows = {}) {
    return Chunk("ds64", Little(0, 8) + Little(dataSize, 8) + Little(0, 8) + Little(rows.size() / 12, 4) + rows);
}

TEST(RiffChunk, IsFoundBehindOthers) {
    const std::string media = Chunk("data", "12345");
    EXPECT_EQ(Find(Form("RIFF", Chunk("fmt ", "odd") + media + Chunk("iXML", "<x/>"))), "<x/>");
    EXPECT_EQ(Find(Form("RIFF", media + Chunk("iXML", "<x/>")), 0, "", 2), "<x") << "no longer than asked";
    EXPECT_EQ(Find(Form("RIFF", media.substr(0, 13) + Chunk("iXML", "<x/>"))), "<x/>") << "a pad byte forgotten";
    EXPECT_EQ(Find(Form("RIFF", "iXML" + Little(4000000000, 4) + "<x/>")), "<x/>") << "cut off";
    EXPECT_EQ(Find(Form("RIFF", media)), std::nullopt);
}

TEST(RiffChunk, IsFoundBehindGigabytes) {
    const std::uint64_t media = std::uint64_t{5} << 30;
    const std::string elsewhere = Little(0xFFFFFFFF, 4);
    for (const char* const form : {"RF64", "BW64"}) {
        EXPECT_EQ(Find(Form(form, LongSizes(media) + "data" + elsewhere), media, Chunk("iXML", "<x/>")), "<x/>");
        const std::string row = "more" + Little(media, 8);
        EXPECT_EQ(Find(Form(form, LongSizes(7, row) + "more" + elsewhere), media, Chunk("iXML", "<x/>")), "<x/>");
        EXPECT_EQ(Find(Form(form, LongSizes(7) + Chunk("data", "12") + Chunk("iXML", "<x/>"))), "<x/>") << "stale";
    }
}

TEST(RiffChunk, IsNotFoundWhereSizesLie) {
    const std::string elsewhere = "data" + Little(0xFFFFFFFF, 4);
    const std::string chunk = Chunk("iXML", "x");
    const std::string files[] = {"",
                                 "RIFF",
                                 "RIFX" + Form("", chunk),
                                 Form("RIFF", "iXM"),
                                 Form("RIFF", elsewhere + chunk),
                                 Form("RIFF", "data" + Little(100, 4) + chunk),
                                 Form("RIFF", std::string(16, '\0') + chunk),
                                 Form("RF64", LongSizes(~std::uint64_t{0} - 4) + elsewhere + chunk)};
    for (const std::string& bytes : files) {
        EXPECT_EQ(Find(bytes), std::nullopt);
    }
}

} // namespace
