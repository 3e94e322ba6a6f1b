#include <zonscreenplay/Screenplay.h>

#include <filesystem>

#include <gmock/gmock.h>

#include <zonstoryparser/Story.h>

#include "screenplay/StoryText.h"
#include "support/MessageOf.h"
#include "support/TemporaryFolder.h"
#include "support/Utf16.h"

namespace {

using support::InUTF16;
using support::WithAction;
using support::WithBody;
using zonscreenplay::ReadError;
using zonscreenplay::ReadOptions;
using zonscreenplay::ReadScreenplay;
using zonscreenplay::ReadScreenplayFromMemory;
using zonscreenplay::Screenplay;

zoncore::UString FirstText(const Screenplay& story) {
    zoncore::UString text;
    zonstoryparser::GetTextRuns(story.root->document->body->section->scenes.at(0)->paragraphs.at(0), text);
    return text;
}

Screenplay ReadInPieces(const std::string& bytes, std::size_t pieceSize) {
    ReadOptions options;
    options.pieceSize = pieceSize;
    return ReadScreenplayFromMemory(bytes, "film.skrx", options);
}

struct EncodingCase {
    const char* name;
    std::string bytes;
    zoncore::UString text;
};

const EncodingCase kEncodingCases[] = {
    {"UTF8", WithAction("Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8E\xAC"), u"Grüß 🎬"},
    {"UTF8WithMark", "\xEF\xBB\xBF" + WithAction("\xC3\xA9"), u"é"},
    {"UTF16LittleWithMark", InUTF16(WithAction("café"), false, true), u"café"},
    {"UTF16BigWithMark", InUTF16(WithAction("café"), true, true), u"café"},
    {"UTF16LittleBare", InUTF16(WithAction("café"), false, false), u"café"},
    {"UTF16BigBare", InUTF16(WithAction("café"), true, false), u"café"},
    {"Latin1", WithAction("caf\xE9", "<?xml version='1.0' encoding='ISO-8859-1'?>"), u"café"},
    {"ASCII", WithAction("&#233;", "<?xml version='1.0' encoding='US-ASCII'?>"), u"é"},
    {"Windows1252", WithAction("\x93\x80\x94", "<?xml version='1.0' encoding='windows-1252'?>"), u"“€”"},
    {"Koi8", WithAction("\xEE\xEF\xFE\xF8", "<?xml version='1.0' encoding='KOI8-R'?>"), u"НОЧЬ"},
    {"Latin2", WithAction("\xB3", "<?xml version='1.0' encoding='iso-8859-2'?>"), u"ł"},
    {"InternalEntity", WithAction("&who; &who;", "<!DOCTYPE t [<!ENTITY who 'ANN'>]>"), u"ANN ANN"},
    {"ExternalSubsetIsPassedOver", WithAction("x", "<!DOCTYPE t SYSTEM '/etc/passwd'>"), u"x"},
};

// In pieces of one byte too: a character may be cut anywhere.
TEST(StoryEncoding, IsReadWholeAndInPieces) {
    for (const EncodingCase& c : kEncodingCases) {
        SCOPED_TRACE(c.name);
        for (const std::size_t pieceSize : {1U, 2U, 3U, 5U, 65536U}) {
            EXPECT_EQ(FirstText(ReadInPieces(c.bytes, pieceSize)), c.text) << pieceSize;
        }
    }
}

struct RefusedCase {
    const char* name;
    std::string bytes;
    std::size_t line, column;
    const char* message; ///< A part of it.
};

const RefusedCase kRefusedCases[] = {
    {"Empty", "", 1, 1, "no element found"},
    {"MismatchedTag", "<Talewright version='1.0'>\n  <a></b>\n", 2, 8, "mismatched tag"},
    {"CutOff", "<Talewright version='1.0'>\n<document>", 2, 11, "no element found"},
    {"InvalidUTF8", "<Talewright version='1.0'>\n\xC3(", 2, 1, "not well-formed (invalid token)"},
    {"ColumnCountsCharacters", "<a>\xC3\xA4\xC3\xB6</b>", 1, 8, "mismatched tag"},
    {"StructuralAtStartTag", "<Talewright version='1.0'>\n <document/>\n  <document/></Talewright>", 3, 3,
     "We found a Document, but we already had one, are there two?"},
    {"StructuralAtEndTag", "<Talewright version='1.0'><metaData>a</metaData>\n<metaData>b</metaData></Talewright>", 2,
     12, "Metadata already exists.  Are there two?"},
    {"Version", "\n<Talewright version='2.0'/>", 2, 1, "Wrong Version.  The parser doesn't support version:  2.0"},
    {"OtherRoot", "<!-- -->\n<html></html>", 2, 1, "the file's root is <html>"},
    {"UnknownEncoding", "<?xml version='1.0' encoding='x-none'?><a/>", 1, 31, "'x-none' is not known"},
    {"SeveralBytesACharacter", "<?xml version='1.0' encoding='Shift_JIS'?><a/>", 1, 31, "'Shift_JIS' is not known"},
    {"EntityOfExternalSubset", "<!DOCTYPE t SYSTEM 'x.dtd'>\n<Talewright version='1.0'>&e;</Talewright>", 2, 27,
     "the entity 'e' is not defined in the file"},
    {"Encoding8BitCalledUTF16", "<?xml version='1.0' encoding='UTF-16'?><a/>", 1, 31, "encoding"},
    {"EncodingNotLikeASCII", "<?xml version='1.0' encoding='EBCDIC-US'?><a/>", 1, 31, "'EBCDIC-US' is not known"},
    {"NUL", std::string("<Talewright version='1.0'>\n\0", 28), 2, 1, "invalid token"},
    {"OverlongUTF8", "<a>\n\xC0\xAF</a>", 2, 1, "invalid token"},
    {"SurrogateInUTF8", "<a>\n\xED\xA0\x80</a>", 2, 1, "invalid token"},
    {"LoneSurrogateInUTF16", InUTF16("<a>\n", false, true) + std::string("\0\xDC", 2) + InUTF16("x</a>", false, false),
     2, 1, "invalid token"},
    {"OddByteAtTheEndOfUTF16", InUTF16("<a>\n", false, true) + "<", 2, 1, "unclosed token"},
};

TEST(RefusedStory, SaysWhereAndWhy) {
    for (const RefusedCase& c : kRefusedCases) {
        SCOPED_TRACE(c.name);
        const std::string where = "film.skrx:" + std::to_string(c.line) + ":" + std::to_string(c.column) + ": ";
        for (const std::size_t pieceSize : {1U, 65536U}) {
            EXPECT_THAT(support::MessageOf<ReadError>([&] { ReadInPieces(c.bytes, pieceSize); }),
                        ::testing::AllOf(::testing::StartsWith(where), ::testing::HasSubstr(c.message)));
        }
    }
}

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
    const auto problem = [](const std::string& path) {
        return support::MessageOf<ReadError>([&] { ReadScreenplay(path); });
    };
    EXPECT_EQ(problem(folder / "none.skrx"), (folder / "none.skrx").string() + ": No such file or directory");
    EXPECT_EQ(problem(folder.Path()), folder.Path().string() + ": Is a directory");
}

} // namespace
