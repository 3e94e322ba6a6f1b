#include "log/ClipXmlFilling.h"

#include <gmock/gmock.h>

#include "output/CsvReader.h"
#include "support/MessageOf.h"

namespace zonstory {
namespace {

std::string Fill(const std::string& bytes, bool replace = false) {
    const ClipXml xml = ReadClipXml(bytes, "day.fcpxml");
    const std::vector<XmlClipWords> words(
        xml.clips.size(), {"12A", "3", "Rain & <wind>\n\"now\" \xC3\x84\xF0\x9F\x8E\xAC", {"EXT", "PIER, OLD", "JO"}});
    return ApplyEdits(bytes, FillClipXml(xml, words, replace).edits);
}

struct XmlCase {
    std::string before;
    std::string after;
};

const std::string kNote = "<note>Rain &amp; &lt;wind&gt; &quot;now&quot; \xC3\x84\xF0\x9F\x8E\xAC</note>";
const std::string kData = R"(<md key="com.apple.proapps.studio.scene" value="12A"/>)"
                          R"(<md key="com.apple.proapps.studio.shot" value="3"/>)";

TEST(ClipXml, GetsItsWordsInTheOrderOfTheFormat) {
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!DOCTYPE fcpxml>\r\n";
    const XmlCase cases[] = {
        {head + "<fcpxml><event>\r\n  <asset-clip name='a > b' duration=\"5s\"/>\r\n</event></fcpxml>",
         head + "<fcpxml><event>\r\n  <asset-clip name='a > b' duration=\"5s\">\r\n      " + kNote +
             "\r\n      <keyword duration=\"5s\" value=\"EXT, PIER  OLD, JO\"/>\r\n      <metadata>\r\n          " +
             R"(<md key="com.apple.proapps.studio.scene" value="12A"/>)" + "\r\n          " +
             R"(<md key="com.apple.proapps.studio.shot" value="3"/>)" +
             "\r\n      </metadata>\r\n  </asset-clip>\r\n</event></fcpxml>"},
        {R"(<fcpxml><clip start="1/25s"><note/><video/><!-- x --><filter-audio/><metadata/></clip></fcpxml>)",
         "<fcpxml><clip start=\"1/25s\">" + kNote + R"(<video/><keyword start="1/25s" value="EXT, PIER  OLD, JO"/>)" +
             "<!-- x --><filter-audio/><metadata>" + kData + "</metadata></clip></fcpxml>"},
        {R"(<fcpxml><clip><note> </note><keyword value="JO,EXT"/><keyword value="PIER  OLD"/><metadata>)"
         R"(<md key='com.apple.proapps.studio.shot' value = ''/><md key="x" value="1"/></metadata></clip></fcpxml>)",
         "<fcpxml><clip>" + kNote.substr(0, kNote.size() - 7) +
             R"( </note><keyword value="JO,EXT"/><keyword value="PIER  OLD"/><metadata>)"
             R"(<md key='com.apple.proapps.studio.shot' value = '3'/><md key="x" value="1"/>)" +
             kData.substr(0, kData.find("/>") + 2) + "</metadata></clip></fcpxml>"},
        {"<fcpxml><spine><clip><note><![CDATA[mine]]>&#65;</note><asset-clip/></clip></spine></fcpxml>",
         "<fcpxml><spine><clip><note><![CDATA[mine]]>&#65;</note><asset-clip>" + kNote +
             "<keyword value=\"EXT, PIER  OLD, JO\"/><metadata>" + kData +
             "</metadata></asset-clip><keyword value=\"EXT, PIER  OLD, JO\"/><metadata>" + kData +
             "</metadata></clip></spine></fcpxml>"}};
    for (const auto& [before, after] : cases) {
        EXPECT_EQ(Fill(before), after);
        EXPECT_EQ(Fill(after), after) << "a second time";
    }
    EXPECT_THAT(Fill("<fcpxml><clip><note>mine</note></clip></fcpxml>", true), ::testing::HasSubstr(kNote));
    EXPECT_THAT(
        Fill("<?xml version='1.0' encoding='ISO-8859-1'?><fcpxml><clip name='\xE9'/></fcpxml>"),
        ::testing::AllOf(::testing::HasSubstr("name='\xE9'><note>"), ::testing::HasSubstr("&#xC4;&#x1F3AC;</note>")));
    const std::string narrow = "\xFE<fcpxml><clip a='/>'/></fcpxml>";
    std::string wide;
    for (const char c : narrow) {
        wide += c == '\xFE' ? "\xFE\xFF" : std::string{'\0', c};
    }
    const std::string filled = Fill(wide);
    EXPECT_EQ(ReadClipXml(filled, "wide").clips.at(0).note.value().text,
              "Rain & <wind> \"now\" \xC3\x84\xF0\x9F\x8E\xAC");
    EXPECT_EQ(filled.substr(0, wide.size() - 22), wide.substr(0, wide.size() - 22));
}

TEST(ClipXml, KnowsTheFilesOfItsClips) {
    const ClipXml xml = ReadClipXml(R"(<fcpxml><resources><asset id="r1" src="file:///V/A%20B/%C3%84.mov%"><metadata>
        <md key="com.apple.proapps.studio.scene" value="7"/></metadata></asset><asset id="r2"><media-rep src="b.mov"/></asset>
        </resources><asset-clip ref="r1"/><clip><video ref="r2"/></clip></fcpxml>)",
                                    "day");
    ASSERT_EQ(xml.clips.size(), 2U);
    EXPECT_EQ(xml.clips[0].file, "/V/A B/\xC3\x84.mov%");
    EXPECT_EQ(xml.clips[0].assetScene, "7");
    EXPECT_EQ(xml.clips[0].line, 3U);
    EXPECT_EQ(xml.clips[1].file, "b.mov");
}

TEST(ClipXml, RefusesWhatItCannotPlace) {
    for (const auto& [bytes, message] :
         {std::pair("<x/>", "day:1: is no FCPXML"),
          {"<fcpxml>\n<a></b></fcpxml>", "day:2: mismatched tag"},
          {"<!DOCTYPE fcpxml [<!ENTITY c '<clip/>'>]><fcpxml>&c;</fcpxml>", "day:1: declares entities"}}) {
        EXPECT_THAT(support::MessageOf<CsvError>([bytes = bytes] { ReadClipXml(bytes, "day"); }),
                    ::testing::HasSubstr(message));
    }
}

} // namespace
} // namespace zonstory
