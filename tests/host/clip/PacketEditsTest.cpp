#include <regex>

#include <gmock/gmock.h>

#include "Source.h"
#include "clip/packet/PacketEdits.h"
#include "clip/packet/PacketMap.h"
#include "support/MessageOf.h"

namespace {

using namespace std::string_literals;
using zonstory::MetadataContent;

// With dc:source set to a value, or taken out where there is none.
std::string WithSource(const std::string& packet, const char* value) {
    SXMPMeta xmp(packet.data(), packet.size());
    const MetadataContent before(xmp);
    xmp.DeleteProperty(support::kDublinCore, "source");
    if (value != nullptr) {
        xmp.SetProperty(support::kDublinCore, "source", value);
    }
    const MetadataContent wanted(xmp);
    std::string edited = zonstory::Edited(packet, zonstory::PacketEdits(packet, wanted.Differences(before), wanted));
    EXPECT_TRUE(MetadataContent(SXMPMeta(edited.data(), edited.size())) == wanted) << edited;
    return edited;
}

struct PacketCase {
    const char* name;
    std::string packet; ///< What goes with dc:source stands between « and »; all else stays to the byte.
};

const std::string kHead = R"(<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF
    xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#" xmlns:dc="http://purl.org/dc/elements/1.1/">)";
const std::string kEnd = "\n </rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>";
// What the toolkit's own parsing and writing would lose or change.
const std::string kOthers = R"(<dc:title><rdf:Alt><rdf:li xml:lang="x-default">A</rdf:li>
    <rdf:li xml:lang='de'>B</rdf:li></rdf:Alt></dc:title> <!-- theirs --><dc:format >x&#x41;<![CDATA[>]]></dc:format>)";
const std::string kOther = "<rdf:Description rdf:about=''>" + kOthers + "</rdf:Description>";

// clang-format off
const PacketCase kPackets[] = {
    {"ours",                 zonstory::EmptyPacket(true)},
    {"a sidecar of ours",    zonstory::EmptyPacket(false)},
    {"no description",       kHead + kEnd},
    {"another's",            kHead + "\n  " + kOther + kEnd},
    {"no line ends",         kHead + kOther + "</rdf:RDF></x:xmpmeta>"},
    {"element",              kHead + "<rdf:Description rdf:about=''>" + kOthers + "«\n <dc:source>a</dc:source>» </rdf:Description>" + kEnd},
    {"with an attribute",    kHead + "<rdf:Description rdf:about=''>" + kOthers + "«<dc:source xml:lang='de'>a</dc:source>»</rdf:Description>" + kEnd},
    {"attribute",            kHead + "<rdf:Description rdf:about=\"\" dc:format=' dc:source=\"/>'« \n dc:source = 'a>'» />" + kEnd},
    {"attribute alone",      kHead + kOther + "«\n<rdf:Description rdf:about=\"\" dc:source=\"a\"/>»" + kEnd},
    {"emptied description",  kHead + kOther + "«<rdf:Description rdf:about=\"\">\n<dc:source>a</dc:source>\n</rdf:Description>»" + kEnd},
    {"about something",      kHead + "<rdf:Description rdf:about='of:it'>«\n<dc:source>a</dc:source>»\n</rdf:Description>" + kEnd},
    {"comment stays",        kHead + "<rdf:Description>«<dc:source>a</dc:source>»<!-- c --></rdf:Description>" + kEnd},
    {"other prefix",         kHead + "<rdf:Description xmlns:d='http://purl.org/dc/elements/1.1/'>«<d:source>a</d:source>»<d:format>f</d:format></rdf:Description>" + kEnd},
    {"prefix taken",         kHead + "<rdf:Description xmlns:dc='http://a.b/' dc:source='theirs'/>" + kEnd},
    {"other name for RDF",   "<RDF xmlns='http://www.w3.org/1999/02/22-rdf-syntax-ns#' xmlns:dc='http://purl.org/dc/elements/1.1/'><Description about=''>"
                             "<dc:format>f</dc:format>«<dc:source>a</dc:source>»</Description></RDF>"},
    {"not at the top",       kHead + "<rdf:Description xmlns:o='http://a.b/'><o:x rdf:parseType='Resource'><dc:source>theirs</dc:source></o:x></rdf:Description>" + kEnd},
};
// clang-format on

// The first is what stays when it is taken out, the second all there is.
std::pair<std::string, std::string> ReadMarks(const std::string& text) {
    static const std::regex marked("«[\\s\\S]*?»");
    static const std::regex marks("«|»");
    return {std::regex_replace(text, marked, ""), std::regex_replace(text, marks, "")};
}

TEST(PacketEdits, LeaveEveryOtherByteAlone) {
    for (const PacketCase& c : kPackets) {
        SCOPED_TRACE(c.name);
        const auto [kept, packet] = ReadMarks(c.packet);
        EXPECT_EQ(WithSource(packet, nullptr), kept);
        EXPECT_EQ(WithSource(WithSource(packet, "<new> & \"é\""), nullptr), kept);
    }
}

TEST(PacketEdits, PacketsThatAreNotUnderstoodAreRefused) {
    const std::pair<std::string, const char*> cases[] = {
        {"<a", "no well-formed XML"},
        {"\xFF\xFE<\0a\0"s, "no well-formed XML"},
        {kHead + "\xE9" + kEnd, "no well-formed XML"},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]>" + kHead + kEnd, "declares a document type"},
        {"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'/>", "not one place"},
        {"<a>" + kHead + "</rdf:RDF></x:xmpmeta>" + kHead + "</rdf:RDF></x:xmpmeta></a>", "not one place"},
        {"<a/>", "not one place"},
    };
    for (const auto& c : cases) {
        EXPECT_THAT(support::MessageOf<zonstory::PacketError>([&] { zonstory::ReadPacketMap(c.first); }),
                    testing::HasSubstr(c.second));
    }
}

} // namespace
