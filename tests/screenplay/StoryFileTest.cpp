#include <zonscreenplay/Screenplay.h>

#include <filesystem>
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include <zonstoryparser/Story.h>

#include "screenplay/StoryText.h"
#include "support/TemporaryFolder.h"

namespace {

using support::WithAction;
using support::WithBody;
using zonscreenplay::ReadError;
using zonscreenplay::ReadOptions;
using zonscreenplay::ReadScreenplay;
using zonscreenplay::ReadScreenplayFromMemory;
using zonscreenplay::Screenplay;

const zonstoryparser::Scene& FirstScene(const Screenplay& story) {
    return *story.root->document->body->section->scenes.at(0);
}

zoncore::UString FirstText(const Screenplay& story) {
    zoncore::UString text;
    zonstoryparser::GetTextRuns(FirstScene(story).paragraphs.at(0), text);
    return text;
}

std::string InUTF16(const std::string& ascii, bool isBigEndian, bool hasMark) {
    std::string bytes = !hasMark ? "" : isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char byte : ascii) {
        bytes += isBigEndian ? std::string{'\0', byte} : std::string{byte, '\0'};
    }
    return bytes;
}

struct EncodingCase {
    const char* name;
    std::string bytes;
    zoncore::UString text;
};
void PrintTo(const EncodingCase& c, std::ostream* stream) {
    *stream << c.name;
}
class StoryEncoding : public ::testing::TestWithParam<EncodingCase> {};

// In pieces of one byte too: a character may be cut anywhere.
TEST_P(StoryEncoding, IsReadWholeAndInPieces) {
    for (const std::size_t pieceSize : {1U, 2U, 3U, 5U, 65536U}) {
        ReadOptions options;
        options.pieceSize = pieceSize;
        EXPECT_EQ(FirstText(ReadScreenplayFromMemory(GetParam().bytes, "s", options)), GetParam().text) << pieceSize;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Known, StoryEncoding,
    ::testing::Values(
        EncodingCase{"UTF8", WithAction("Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8E\xAC"), u"Grüß 🎬"},
        EncodingCase{"UTF8WithMark", "\xEF\xBB\xBF" + WithAction("\xC3\xA9"), u"é"},
        EncodingCase{"UTF16LittleWithMark", InUTF16(WithAction("caf\xE9"), false, true), u"café"},
        EncodingCase{"UTF16BigWithMark", InUTF16(WithAction("caf\xE9"), true, true), u"café"},
        EncodingCase{"UTF16LittleBare", InUTF16(WithAction("caf\xE9"), false, false), u"café"},
        EncodingCase{"UTF16BigBare", InUTF16(WithAction("caf\xE9"), true, false), u"café"},
        EncodingCase{"Latin1", WithAction("caf\xE9", "<?xml version='1.0' encoding='ISO-8859-1'?>"), u"café"},
        EncodingCase{"ASCII", WithAction("&#233;", "<?xml version='1.0' encoding='US-ASCII'?>"), u"é"},
        EncodingCase{"Windows1252", WithAction("\x93\x80\x94", "<?xml version='1.0' encoding='windows-1252'?>"),
                     u"“€”"},
        EncodingCase{"Koi8", WithAction("\xEE\xEF\xFE\xF8", "<?xml version='1.0' encoding='KOI8-R'?>"), u"НОЧЬ"},
        EncodingCase{"Latin2", WithAction("\xB3", "<?xml version='1.0' encoding='iso-8859-2'?>"), u"ł"},
        EncodingCase{"InternalEntity", WithAction("&who; &who;", "<!DOCTYPE t [<!ENTITY who 'ANN'>]>"), u"ANN ANN"},
        EncodingCase{"ExternalSubsetIsPassedOver", WithAction("x", "<!DOCTYPE t SYSTEM '/etc/passwd'>"), u"x"}),
    [](const auto& row) { return row.param.name; });

struct RefusedCase {
    const char* name;
    std::string bytes;
    std::size_t line, column;
    const char* message; ///< A part of it.
};
void PrintTo(const RefusedCase& c, std::ostream* stream) {
    *stream << c.name;
}
class RefusedStory : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedStory, SaysWhereAndWhy) {
    for (const std::size_t pieceSize : {1U, 65536U}) {
        ReadOptions options;
        options.pieceSize = pieceSize;
        try {
            ReadScreenplayFromMemory(GetParam().bytes, "film.skrx", options);
            FAIL() << "read without an error";
        } catch (const ReadError& error) {
            EXPECT_EQ(error.Where().line, GetParam().line);
            EXPECT_EQ(error.Where().column, GetParam().column);
            EXPECT_THAT(error.Message(), ::testing::HasSubstr(GetParam().message));
            EXPECT_EQ(error.what(), "film.skrx:" + std::to_string(GetParam().line) + ":" +
                                        std::to_string(GetParam().column) + ": " + error.Message());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedStory,
    ::testing::Values(
        RefusedCase{"Empty", "", 1, 1, "no element found"},
        RefusedCase{"MismatchedTag", "<Talewright version='1.0'>\n  <a></b>\n", 2, 8, "mismatched tag"},
        RefusedCase{"CutOff", "<Talewright version='1.0'>\n<document>", 2, 11, "no element found"},
        RefusedCase{"InvalidUTF8", "<Talewright version='1.0'>\n\xC3(", 2, 1, "not well-formed (invalid token)"},
        RefusedCase{"ColumnCountsCharacters", "<a>\xC3\xA4\xC3\xB6</b>", 1, 8, "mismatched tag"},
        RefusedCase{"StructuralAtStartTag", "<Talewright version='1.0'>\n <document/>\n  <document/></Talewright>", 3,
                    3, "We found a Document, but we already had one, are there two?"},
        RefusedCase{"StructuralAtEndTag",
                    "<Talewright version='1.0'><metaData>a</metaData>\n<metaData>b</metaData></Talewright>", 2, 12,
                    "Metadata already exists.  Are there two?"},
        RefusedCase{"Version", "\n<Talewright version='2.0'/>", 2, 1,
                    "Wrong Version.  The parser doesn't support version:  2.0"},
        RefusedCase{"OtherRoot", "<!-- -->\n<html></html>", 2, 1, "the file's root is <html>"},
        RefusedCase{"UnknownEncoding", "<?xml version='1.0' encoding='x-none'?><a/>", 1, 31, "'x-none' is not known"},
        RefusedCase{"SeveralBytesACharacter", "<?xml version='1.0' encoding='Shift_JIS'?><a/>", 1, 31,
                    "'Shift_JIS' is not known"},
        RefusedCase{"EntityOfExternalSubset", "<!DOCTYPE t SYSTEM 'x.dtd'>\n<Talewright version='1.0'>&e;</Talewright>",
                    2, 27, "the entity 'e' is not defined in the file"},
        RefusedCase{"Encoding8BitCalledUTF16", "<?xml version='1.0' encoding='UTF-16'?><a/>", 1, 31, "encoding"},
        RefusedCase{"EncodingNotLikeASCII", "<?xml version='1.0' encoding='EBCDIC-US'?><a/>", 1, 31,
                    "'EBCDIC-US' is not known"},
        RefusedCase{"NUL", std::string("<Talewright version='1.0'>\n\0", 28), 2, 1, "invalid token"},
        RefusedCase{"OverlongUTF8", "<a>\n\xC0\xAF</a>", 2, 1, "invalid token"},
        RefusedCase{"SurrogateInUTF8", "<a>\n\xED\xA0\x80</a>", 2, 1, "invalid token"},
        RefusedCase{"LoneSurrogateInUTF16",
                    InUTF16("<a>\n", false, true) + std::string("\0\xDC", 2) + InUTF16("x</a>", false, false), 2, 1,
                    "invalid token"},
        RefusedCase{"OddByteAtTheEndOfUTF16", InUTF16("<a>\n", false, true) + "<", 2, 1, "unclosed token"}),
    [](const auto& row) { return row.param.name; });

TEST(StoryReader, AttributesBelongToTheirElementAlone) {
    const Screenplay story =
        ReadScreenplayFromMemory(WithBody("<scene objID='a' sceneNumber='1'/><scene sceneNumber='2'/>"
                                          "<scene sceneNumber='3' objID='c'/><scene/><scene objID='e' x='y' "
                                          "sceneNumber=''/>"),
                                 "s");
    std::string seen;
    for (const auto& scene : story.root->document->body->section->scenes) {
        seen += zoncore::UTF16to8(scene->objectID.AsString() + u"/" + scene->sceneNumber + u" ");
    }
    EXPECT_EQ(seen, "a/1 /2 c/3 / e/ ");
}

// Nineteen names share the room of sixteen, and nest.
TEST(StoryReader, ManyUnknownElementsDoNotDisturb) {
    std::string opening;
    std::string closing;
    for (char letter = 'a'; letter < 't'; ++letter) {
        const std::string name = std::string("unknown-") + letter;
        opening += "<" + name + " version='" + letter + "'>";
        closing = "</" + name + ">" + closing;
    }
    const Screenplay story = ReadScreenplayFromMemory("<Talewright version='1.0'>" + opening + "<Tag label='in'/>" +
                                                          closing + "<Tag label='out'/></Talewright>",
                                                      "s");
    EXPECT_THAT(story.root->tagLabels, ::testing::ElementsAre(u"in", u"out"));
}

TEST(StoryReader, RecordsLinesOfWhatTheTreeHolds) {
    ReadOptions options;
    options.recordLines = true;
    const Screenplay story = ReadScreenplayFromMemory(
        "<Talewright version='1.0'><document>\n"
        "<stream name='elsewhere'><section><scene/></section></stream>\n"
        "<stream name='body'><section>\n"
        "<scene>\n<paragraph/>\n<paragraph/></scene>\n<paragraph/><scene/></section></stream>\n"
        "<commentStream><section><scene/></section></commentStream></document></Talewright>",
        "s", options);
    const auto& scenes = story.root->document->body->section->scenes;
    EXPECT_EQ(story.lines.Of(*scenes[0]), 4U);
    EXPECT_EQ(story.lines.Of(*scenes[0]->paragraphs[0]), 5U);
    EXPECT_EQ(story.lines.Of(*scenes[0]->paragraphs[1]), 6U);
    EXPECT_EQ(story.lines.Of(*scenes[1]), 7U);
    EXPECT_EQ(story.lines.Of(*story.root->document->commentStreams[0]->section->scenes[0]), 8U);
    EXPECT_EQ(ReadScreenplayFromMemory(WithAction("x"), "s").lines.Of(*scenes[0]), 0U);
}

TEST(StoryReader, NamesAFileThatCannotBeRead) {
    const support::TemporaryFolder folder;
    support::WriteFile(folder / "a.skrx", WithAction("x"));
    EXPECT_EQ(FirstText(ReadScreenplay(folder / "a.skrx")), u"x");
    for (const auto& [path, reason] :
         {std::pair(folder / "none.skrx", "No such file or directory"), std::pair(folder.Path(), "Is a directory")}) {
        try {
            ReadScreenplay(path);
            FAIL() << path;
        } catch (const ReadError& error) {
            EXPECT_EQ(error.what(), path.string() + ": " + reason);
            EXPECT_EQ(error.Where().line, 0U);
        }
    }
}

} // namespace
