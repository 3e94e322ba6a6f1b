#include "host/match/Support.h"

#include <rapidcheck/gtest.h>

#include "clip/layout/Chunks.h"
#include "match/IXml.h"

namespace zonstory {
namespace {

using namespace std::string_literals;

const std::string kIXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<BWFXML>\n\t<IXML_VERSION>1.5</IXML_VERSION>\n"
                          "\t<PROJECT>Willow</PROJECT><SCENE> 12A </SCENE><TAKE>3</TAKE><TAPE>S04</TAPE>\n"
                          "\t<SPEED><NOTE>not this</NOTE></SPEED><NOTE>caf\xC3\xA9</NOTE><SCENE>99</SCENE>\n</BWFXML>";

std::string Wide(const std::string& ascii) {
    std::string wide = "\xFF\xFE";
    for (const char c : ascii) {
        wide += {c, '\0'};
    }
    return wide;
}

TEST(IXml, GivesWhatTheRecorderNoted) {
    const auto ixml = ParseIXml(kIXml);
    ASSERT_TRUE(ixml);
    EXPECT_EQ(ixml->project, "Willow");
    EXPECT_EQ(ixml->scene, "12A");
    EXPECT_EQ(ixml->take, "3");
    EXPECT_EQ(ixml->tape, "S04");
    EXPECT_EQ(ixml->note, "caf\xC3\xA9");
}

TEST(IXml, IsReadAsRecordersLeaveIt) {
    const std::string plain = "<BWFXML><SCENE>12A</SCENE>";
    const std::pair<const char*, std::string> cases[] = {
        {"no declaration", plain + "</BWFXML>"},
        {"zeros behind", plain + "</BWFXML>" + std::string(1000, '\0')},
        {"blanks in front", "\r\n " + plain + "</BWFXML>"},
        {"byte order mark", "\xEF\xBB\xBF" + plain + "</BWFXML>"},
        {"cut off behind the scene", plain + "<TAKE>3"},
        {"Latin-1 without saying so", plain + "<NOTE>caf\xE9</NOTE></BWFXML>"},
        {"Latin-1 that says UTF-8",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + plain + "<NOTE>\xE9</NOTE></BWFXML>"},
        {"an encoding that nobody knows", "<?xml version=\"1.0\" encoding=\"x-none\"?>" + plain + "</BWFXML>"},
        {"UTF-16", Wide(plain + "</BWFXML>")},
    };
    for (const auto& [name, chunk] : cases) {
        const auto ixml = ParseIXml(chunk);
        ASSERT_TRUE(ixml) << name;
        EXPECT_EQ(ixml->scene, "12A") << name;
    }
}

TEST(IXml, IsNothingElse) {
    for (const std::string& chunk :
         {""s, std::string(64, '\0'), "no xml"s, "<HTML><SCENE>12</SCENE></HTML>"s, "<a><BWFXML/></a>"s}) {
        EXPECT_FALSE(ParseIXml(chunk)) << chunk;
    }
    const auto bomb = ParseIXml("<!DOCTYPE a [<!ENTITY b \"12\">]><BWFXML><SCENE>&b;</SCENE></BWFXML>");
    EXPECT_TRUE(!bomb || bomb->scene.empty()) << "no document type is read";
    const auto large = ParseIXml("<BWFXML><SCENE>" + std::string(1000000, '1') + "</SCENE></BWFXML>");
    ASSERT_TRUE(large);
    EXPECT_LT(large->scene.size(), 100000u) << "a value has its limit";
}

// ---- The chunk in its file --------------------------------------------------------------------------------------------

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

// A file with a hole: `head`, then `hole` bytes that are never read, then `tail`.
struct SparseFile {
    std::string head;
    std::uint64_t hole = 0;
    std::string tail = {};
    mutable std::size_t bytesRead = 0;

    std::uint64_t Size() const { return head.size() + hole + tail.size(); }
    std::size_t Read(std::uint64_t offset, char* bytes, std::size_t count) const {
        bytesRead += count;
        for (std::size_t at = 0; at < count; ++at) {
            const std::uint64_t place = offset + at;
            if (place >= Size()) {
                return at;
            }
            bytes[at] = place < head.size()          ? head[place]
                        : place < head.size() + hole ? '\0'
                                                     : tail[place - head.size() - hole];
        }
        return count;
    }
    std::optional<std::string> Find(const std::string& id, std::size_t most = 1024) const {
        return FindRiffChunk([this](auto offset, char* bytes, auto count) { return Read(offset, bytes, count); },
                             Size(), id, most);
    }
};

TEST(RiffChunk, IsFoundBehindOthers) {
    const SparseFile file{Form("RIFF", Chunk("fmt ", "odd") + Chunk("data", "12345") + Chunk("iXML", "<x/>"))};
    EXPECT_EQ(file.Find("iXML"), "<x/>");
    EXPECT_EQ(file.Find("data"), "12345");
    EXPECT_EQ(file.Find("bext"), std::nullopt);
    EXPECT_EQ(file.Find("iXML", 2), "<x") << "no longer than asked";
}

TEST(RiffChunk, IsFoundBehindGigabytesWithoutReadingThem) {
    const std::uint64_t media = std::uint64_t{5} << 30;
    for (const char* const form : {"RF64", "BW64"}) {
        const std::string ds64 = Chunk("ds64", Little(0, 8) + Little(media, 8) + Little(0, 8) + Little(0, 4));
        const SparseFile file{Form(form, ds64 + "data" + Little(0xFFFFFFFF, 4)), media, Chunk("iXML", "<x/>")};
        EXPECT_EQ(file.Find("iXML"), "<x/>") << form;
        EXPECT_LT(file.bytesRead, 1000u) << form;
    }
}

TEST(RiffChunk, IsNotFoundWhereSizesLie) {
    const std::string files[] = {"",
                                 "RIFF",
                                 "RIFX" + Form("", Chunk("iXML", "x")),
                                 Form("RIFF", "iXM"),
                                 Form("RIFF", "data" + Little(0xFFFFFFFF, 4) + Chunk("iXML", "x")),
                                 Form("RIFF", "data" + Little(100, 4) + Chunk("iXML", "x"))};
    for (const std::string& bytes : files) {
        EXPECT_EQ(SparseFile{bytes}.Find("iXML"), std::nullopt);
    }
    const std::string ds64 = Chunk("ds64", Little(0, 8) + Little(~std::uint64_t{0} - 4, 8) + Little(0, 12));
    EXPECT_EQ(SparseFile{Form("RF64", ds64 + "data" + Little(0xFFFFFFFF, 4))}.Find("iXML"), std::nullopt) << "wraps";
    EXPECT_EQ(SparseFile{Form("RIFF", "iXML" + Little(4000000000, 4) + "<x/>")}.Find("iXML"), "<x/>") << "cut off";
}

// Chunks of no size would otherwise take a look at each eight bytes of a large file.
TEST(RiffChunk, SearchIsBounded) {
    SparseFile file{Form("RIFF", ""), std::uint64_t{1} << 40, ""};
    EXPECT_EQ(file.Find("iXML"), std::nullopt);
    EXPECT_LT(file.bytesRead, 100000u);
}

RC_GTEST_PROP(IXmlProperties, ArbitraryBytesAreTaken, (const std::string& text)) {
    ParseIXml(text);
    const auto whole = ParseIXml("<BWFXML><SCENE>12</SCENE>" + text);
    RC_ASSERT(whole.has_value());
    RC_ASSERT(whole->scene == "12");
}

RC_GTEST_PROP(IXmlProperties, ArbitraryFilesAreTaken, ()) {
    const auto piece = rc::gen::oneOf(rc::gen::element<std::string>("data", "ds64", "iXML", "LIST", Little(4, 4),
                                                                    Little(0xFFFFFFFF, 4), Little(0, 8)),
                                      rc::gen::arbitrary<std::string>());
    std::string bytes = *rc::gen::element<std::string>("RIFF", "RF64", "BW64") + "1234WAVE";
    for (const std::string& part : *rc::gen::container<std::vector<std::string>>(piece)) {
        bytes += part;
    }
    const auto chunk = SparseFile{bytes}.Find("iXML");
    RC_ASSERT(!chunk || chunk->size() <= bytes.size());
}

} // namespace
} // namespace zonstory
