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
    const char *first, *second;
    bool isSame;
};
void PrintTo(const PairCase& c, std::ostream* stream) {
    *stream << c.name;
}

class SameMetadata : public testing::TestWithParam<PairCase> {};

TEST_P(SameMetadata, ComparesWhatIsSaid) {
    EXPECT_EQ(ContentOf(GetParam().first) == ContentOf(GetParam().second), GetParam().isSame);
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, SameMetadata,
    testing::Values(
        PairCase{"Nothing", "", "", true}, PairCase{"OneMore", "<dc:source>a</dc:source>", "", false},
        PairCase{"OtherOrder", "<dc:source>a</dc:source><dc:format>b</dc:format>",
                 "<dc:format>b</dc:format><dc:source>a</dc:source>", true},
        PairCase{"ValuesSwapped", "<dc:source>a</dc:source><dc:format>b</dc:format>",
                 "<dc:format>a</dc:format><dc:source>b</dc:source>", false},
        PairCase{"OtherSchema", "<dc:format>a</dc:format>", "<xmp:format>a</xmp:format>", false},
        PairCase{"EmptyIsNotAbsent", "<dc:source></dc:source>", "", false},
        PairCase{"Space", "<dc:source>a</dc:source>", "<dc:source>a </dc:source>", false},
        PairCase{"ItemOrder", "<dc:subject><rdf:Seq><rdf:li>a</rdf:li><rdf:li>b</rdf:li></rdf:Seq></dc:subject>",
                 "<dc:subject><rdf:Seq><rdf:li>b</rdf:li><rdf:li>a</rdf:li></rdf:Seq></dc:subject>", false},
        PairCase{"Form", "<dc:own><rdf:Seq><rdf:li>a</rdf:li></rdf:Seq></dc:own>",
                 "<dc:own><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:own>", false},
        PairCase{"ItemOfTheNext",
                 "<dc:subject><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:subject><dc:type><rdf:Bag/></dc:type>",
                 "<dc:subject><rdf:Bag/></dc:subject><dc:type><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:type>", false},
        PairCase{"MarkupInAValue", "<dc:source>x&#10;   &lt;dc:format>b&lt;/dc:format></dc:source>",
                 "<dc:source>x</dc:source><dc:format>b</dc:format>", false}),
    [](const auto& sample) { return std::string(sample.param.name); });

struct WrittenCase {
    const char* name;
    const char *before, *wanted, *written;
    bool isGood;
};

TEST(WrittenMetadata, AllowsOnlyAdditionsOfTheHandlers) {
    const WrittenCase cases[] = {
        {"exact", "", "<dc:source>a</dc:source>", "<dc:source>a</dc:source>", true},
        {"missing", "", "<dc:source>a</dc:source>", "", false},
        {"changed", "", "<dc:source>a</dc:source>", "<dc:source>b</dc:source>", false},
        {"added from elsewhere", "", "", "<dc:format>native</dc:format>", true},
        {"still there", "<dc:source>a</dc:source>", "", "<dc:source>a</dc:source>", false},
        {"still there in another form", "<dc:source>a</dc:source>", "", "<dc:source>b</dc:source>", false},
        {"other digest", "<xmp:NativeDigests>1</xmp:NativeDigests>", "<xmp:NativeDigests>1</xmp:NativeDigests>",
         "<xmp:NativeDigests>2</xmp:NativeDigests>", true},
    };
    for (const WrittenCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ContentOf(c.wanted).IsWhatWasWritten(ContentOf(c.written), ContentOf(c.before)), c.isGood);
    }
}

} // namespace
