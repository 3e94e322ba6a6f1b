#include <gmock/gmock.h>

#include "clip/SameMetadata.h"

namespace {

using zonstory::MetadataContent;

MetadataContent ContentOf(const std::string& properties) {
    const std::string packet = "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
                               "rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' "
                               "xmlns:xmp='http://ns.adobe.com/xap/1.0/'>" +
                               properties + "</rdf:Description></rdf:RDF>";
    return MetadataContent(SXMPMeta(packet.data(), packet.size()));
}

struct PairCase {
    const char* name;
    bool isSame;
    const char *first, *second;
};

// clang-format off
const PairCase kPairs[] = {
    {"nothing", true, "", ""},
    {"one more", false, "<dc:source>a</dc:source>", ""},
    {"other order", true, "<dc:source>a</dc:source><dc:format>b</dc:format>", "<dc:format>b</dc:format><dc:source>a</dc:source>"},
    {"values swapped", false, "<dc:source>a</dc:source><dc:format>b</dc:format>", "<dc:format>a</dc:format><dc:source>b</dc:source>"},
    {"other schema", false, "<dc:format>a</dc:format>", "<xmp:format>a</xmp:format>"},
    {"empty is not absent", false, "<dc:source></dc:source>", ""},
    {"space", false, "<dc:source>a</dc:source>", "<dc:source>a </dc:source>"},
    {"item order", false, "<dc:subject><rdf:Seq><rdf:li>a</rdf:li><rdf:li>b</rdf:li></rdf:Seq></dc:subject>",
                          "<dc:subject><rdf:Seq><rdf:li>b</rdf:li><rdf:li>a</rdf:li></rdf:Seq></dc:subject>"},
    {"form", false, "<dc:own><rdf:Seq><rdf:li>a</rdf:li></rdf:Seq></dc:own>", "<dc:own><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:own>"},
    {"item of the next", false, "<dc:subject><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:subject><dc:type><rdf:Bag/></dc:type>",
                                "<dc:subject><rdf:Bag/></dc:subject><dc:type><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:type>"},
    {"markup in a value", false, "<dc:source>x&#10;   &lt;dc:format>b&lt;/dc:format></dc:source>", "<dc:source>x</dc:source><dc:format>b</dc:format>"},
};
// clang-format on

TEST(SameMetadata, ComparesWhatIsSaid) {
    for (const PairCase& c : kPairs) {
        EXPECT_EQ(ContentOf(c.first) == ContentOf(c.second), c.isSame) << c.name;
    }
}

struct WrittenCase {
    const char* name;
    bool isGood;
    const char *before, *wanted, *written;
};

// clang-format off
const WrittenCase kWritten[] = {
    {"exact",                       true,  "", "<dc:source>a</dc:source>", "<dc:source>a</dc:source>"},
    {"missing",                     false, "", "<dc:source>a</dc:source>", ""},
    {"changed",                     false, "", "<dc:source>a</dc:source>", "<dc:source>b</dc:source>"},
    {"added from elsewhere",        true,  "", "", "<dc:format>native</dc:format>"},
    {"still there",                 false, "<dc:source>a</dc:source>", "", "<dc:source>a</dc:source>"},
    {"still there in another form", false, "<dc:source>a</dc:source>", "", "<dc:source>b</dc:source>"},
    {"other digest", true, "<xmp:NativeDigests>1</xmp:NativeDigests>", "<xmp:NativeDigests>1</xmp:NativeDigests>", "<xmp:NativeDigests>2</xmp:NativeDigests>"},
};
// clang-format on

TEST(WrittenMetadata, AllowsOnlyAdditionsOfTheHandlers) {
    for (const WrittenCase& c : kWritten) {
        EXPECT_EQ(ContentOf(c.wanted).IsWhatWasWritten(ContentOf(c.written), ContentOf(c.before)), c.isGood) << c.name;
    }
}

} // namespace
