// WAV, AVI and AIFF files in all the orders that chunks can have, those too that no encoder makes.

#include <gmock/gmock.h>

#include "clip/layout/ChunkForm.h"
#include "host/clip/LayoutInvariants.h"
#include "host/clip/MadeChunks.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

namespace {

using namespace std::string_literals;
using support::Chunk;
using support::Little;
using support::Number;
using zonstory::ByteRange;

bool Maybe(int oneIn = 2) {
    return *rc::gen::inRange(0, oneIn) == 0;
}

std::string Content() {
    return *rc::gen::resize(30, rc::gen::container<std::string>(rc::gen::arbitrary<char>()));
}

// Chunks whose meaning is none of ours; a packet, and a filler behind it, now and then.
std::string OtherChunks(bool isBig, int most = 3) {
    std::string chunks;
    for (int left = *rc::gen::inRange(0, most + 1); left > 0; --left) {
        chunks += Chunk(*rc::gen::element<std::string>("LIST", "DISP", "ID3 ", "(c) ", "JUNK"), Content(), isBig);
    }
    if (Maybe(3)) {
        const std::string packet = support::MadePacket(static_cast<std::size_t>(*rc::gen::inRange(0, 900)));
        chunks += isBig ? Chunk("APPL", "XMP " + packet, true) : Chunk("_PMX", packet);
        const std::size_t filler = static_cast<std::size_t>(*rc::gen::inRange(0, 4000));
        chunks += Maybe() ? Chunk(isBig ? "    " : "JUNK", std::string(filler, '\0'), isBig) : "";
    }
    return chunks;
}

// The form around chunks, ending as programs let it end: with or without its last pad byte, counted or not, with a few
// bytes more that are no chunk or lie behind the form.
std::string Form(const std::string& head, std::string chunks, bool isOddAtEnd, bool isBig) {
    if (isOddAtEnd) {
        chunks += Chunk("odd ", "odd", isBig);
        chunks.pop_back();
    }
    const std::uint64_t size = 4 + chunks.size() + (isOddAtEnd && Maybe() ? 1 : 0);
    const std::string rest = Maybe() ? *rc::gen::element("\0\0\0"s, std::string(100, '\0')) : "";
    const std::string behind = Maybe(3) ? "\0TAG, and what else"s : "";
    return isOddAtEnd ? head.substr(0, 4) + Number(size, isBig) + head.substr(8) + chunks + behind
                      : head.substr(0, 4) + Number(size + rest.size(), isBig) + head.substr(8) + chunks + rest + behind;
}

RC_GTEST_PROP(WaveLayout, IsEditedExactly, ()) {
    const std::string before = Chunk("fmt ", std::string(16, 'f')) + OtherChunks(false);
    const std::string media = Content();
    const std::string file = Form("RIFF....WAVE", before + Chunk("data", media) + OtherChunks(false), Maybe(3), false);
    EXPECT_THAT(support::LayoutOf(file)->Media(),
                testing::ElementsAre(ByteRange{12 + before.size() + 8, media.size()}));
    support::RequireExactEdits(file);
}

// Sizes stand in "ds64", or in their own fields and "ds64" is a relic.
RC_GTEST_PROP(WaveLayout, BeyondFourGigabytesIsEditedExactly, ()) {
    const std::string media = Content();
    const bool isRelic = Maybe();
    const std::string rest = OtherChunks(false);
    const std::string data =
        "data" + (isRelic ? Little(media.size()) : Little(0xFFFFFFFF)) + media + std::string(media.size() % 2, '\0');
    const std::uint64_t size = 4 + 36 + data.size() + rest.size();
    const std::string longSizes = isRelic ? Little(Maybe() ? 0 : size, 8) + Little(Maybe() ? 0 : media.size(), 8)
                                          : Little(size, 8) + Little(media.size(), 8);
    support::RequireExactEdits((Maybe() ? "RF64" : "BW64") + Little(isRelic ? size : 0xFFFFFFFF) + "WAVE" +
                               Chunk("ds64", longSizes + Little(0, 8) + Little(0)) + data + rest);
}

RC_GTEST_PROP(AiffLayout, IsEditedExactly, ()) {
    const std::string before = Chunk("COMM", std::string(18, 'c'), true) + OtherChunks(true);
    support::RequireExactEdits(Form(Maybe() ? "FORM....AIFF" : "FORM....AIFC",
                                    before + Chunk("SSND", Content(), true) + OtherChunks(true), Maybe(3), true));
}

// An AVI of several parts with one stream, whose frames an older index names in either way and newer ones by their content.
struct MadeAvi {
    std::string bytes;
    std::vector<std::uint64_t> positions;
};

MadeAvi MakeAvi() {
    const bool isAbsolute = Maybe();
    const auto parts = static_cast<std::size_t>(*rc::gen::inRange(1, 4));
    const auto head = [&](const std::string& rows) {
        const std::string index = Little(4) + Little(parts) + "00dc" + std::string(12, '\0') + rows;
        return "RIFF....AVI " + Chunk("LIST", "hdrl" + Chunk("LIST", "strl" + Chunk("indx", index)));
    };
    const std::size_t headSize = head(std::string(16 * parts, '.')).size();
    std::string file(headSize, '.');
    std::string rows;
    std::vector<std::string> sizes;
    std::vector<std::uint64_t> older;
    std::vector<std::uint64_t> newer;
    for (std::size_t part = 0; part < parts; ++part) {
        const std::size_t form = part == 0 ? 0 : file.size();
        file += (part == 0 ? "" : "RIFF....AVIX") + OtherChunks(false);
        const std::uint64_t movi = file.size() + 8;
        std::string frames = "movi";
        std::string olderRows;
        std::string newerRows;
        std::vector<std::uint64_t> places;
        for (int frame = *rc::gen::inRange(1, 4); frame > 0; --frame) {
            places.push_back(movi + frames.size());
            olderRows += "00dc" + Little(16) + Little(places.back() - (isAbsolute ? 0 : movi)) + Little(1);
            newerRows += Little(places.back() + 8 - movi) + Little(1);
            frames += Chunk("00dc", Content());
        }
        rows += Little(movi + frames.size(), 8) + Little(32 + newerRows.size()) + Little(1);
        newer.push_back(movi + frames.size());
        for (const std::uint64_t place : places) {
            newer.push_back(place + 8);
        }
        frames += Chunk("ix00",
                        Little(0x01000002) + Little(places.size()) + "00dc" + Little(movi, 8) + Little(0) + newerRows);
        file += Chunk("LIST", frames) + OtherChunks(false);
        if (part == 0) {
            older = places;
            file += Chunk("idx1", olderRows) + OtherChunks(false);
        }
        sizes.push_back(Little(file.size() - form - 8));
        file.replace(form + 4, 4, sizes.back());
    }
    file.replace(0, headSize, head(rows).replace(4, 4, sizes.front()));
    older.insert(older.end(), newer.begin(), newer.end());
    return {file, older};
}

RC_GTEST_PROP(AviLayout, IsEditedExactly, ()) {
    const MadeAvi avi = MakeAvi();
    RC_ASSERT(support::LayoutOf(avi.bytes)->Positions() == avi.positions);
    support::RequireExactEdits(avi.bytes);
}

TEST(ChunkLayout, LeavesAloneWhatIsOdd) {
    const std::string data = Chunk("data", "1234");
    const auto riff = [](const std::string& chunks) { return Chunk("RIFF", "WAVE" + chunks); };
    const std::pair<std::string, const char*> files[] = {
        {Chunk("RIFF", "RMID"), "neither WAV nor AVI"},
        {"RIFF" + Little(0) + "WAVE" + data, "never filled in"},
        {"RIFF" + Little(0xFFFFFFFF) + "WAVE" + data, "never filled in"},
        {"RIFF" + Little(16) + "WAVEdata" + Little(0xFFFFFFFF) + "1234", "never filled in"},
        {"RIFF" + Little(99) + "WAVE" + data, "contradict"},
        {"RIFF" + Little(14) + "WAVE" + data, "contradict"},
        {riff("odd " + Little(3) + "odd" + data), "not padded"},
        {riff(data + "\x01\x02\x03\x04 what is this"), "not understood"},
        {riff(data) + std::string(70000, 'x'), "much lies behind"},
        {"RF64" + Little(52) + "WAVE" + Chunk("ds64", Little(0, 8) + Little(9, 8) + std::string(12, '\0')) + data,
         "ds64"},
    };
    for (const auto& [file, reason] : files) {
        EXPECT_THAT(support::ReasonAgainst(file), testing::HasSubstr(reason));
    }
    zonstory::ChunkForm full;
    full.sizeField = {4, 4};
    full.size = 0xFFFFFFF0;
    EXPECT_THROW(zonstory::ResizeForm(full, 100), zonstory::NoExactWay);
    EXPECT_THROW(support::LayoutOf(Chunk("RIFF", "WAVEdata" + Little(99) + "1234")), zonstory::DamagedFile);
    EXPECT_THROW(support::LayoutOf(Chunk("FORM", "AIFFSSND" + Number(99, true) + "1234", true)), zonstory::DamagedFile);
}

} // namespace
