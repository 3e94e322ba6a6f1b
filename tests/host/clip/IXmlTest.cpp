#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "clip/IXml.h"
#include "support/Utf16.h"

namespace zonstory {
namespace {

using namespace std::string_literals;

const std::string kIXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<BWFXML>\n\t<IXML_VERSION>1.5</IXML_VERSION>\n"
                          "\t<PROJECT>Willow</PROJECT><SCENE> 12A </SCENE><TAKE>3</TAKE><TAPE>S04</TAPE>\n"
                          "\t<SPEED><NOTE>not this</NOTE></SPEED><NOTE>caf\xC3\xA9</NOTE><SCENE>99</SCENE>\n</BWFXML>";

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
        {"UTF-16", support::InUTF16(plain + "</BWFXML>", false)},
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

} // namespace
} // namespace zonstory
