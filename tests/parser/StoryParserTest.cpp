#include <algorithm>

#include <gtest/gtest.h>

#include <zonstoryparser/StoryParser.h>

#include "support/Events.h"

namespace {

using namespace zonstoryparser;
using support::Play;

const std::string kRoot = "+Talewright version=1.0";
const std::string kDocument = kRoot + ";+document version=2";
const std::string kBody = kDocument + ";+stream name=body";
const std::string kSection = kBody + ";+section objID=s";
const std::string kScene = kSection + ";+scene objID=c sceneNumber=7";
const std::string kParagraph = kScene + ";+paragraph objID=p element=Action";

// A parser that was given a document's events, behind another's that left all open.
struct ParserAfter : StoryParser {
    explicit ParserAfter(const std::string& events) {
        StartDocument();
        Play(*this, kParagraph + ";+textRun;left;+commentStream");
        StartDocument();
        Play(*this, events);
    }
};

// "(none)" while no error is recorded.
std::string ErrorAfter(const std::string& events) {
    const ParserAfter parser(events);
    return parser.HasParseError() ? zoncore::UTF16to8(parser.GetParseError()) : "(none)";
}

const Section& BodySection(const StoryParser& parser) {
    return *parser.GetStory()->document->body->section;
}

TEST(StoryParser, BuildsTheTreeFromEvents) {
    ParserAfter parser("+Talewright version=1.0.3 documentType=screenplay template=Feature;+metaData; raw ;-metaData;"
                       "+Tag label=Act1;-Tag;+Tag;-Tag;"
                       "+document version=2.5;"
                       "+stream objID=h name=header;+section;-section;-stream;"
                       "+stream objID=b name=body;+section objID=s;"
                       "+scene objID=c1 sceneNumber=12A;"
                       "+paragraph objID=p1 element=SceneHeading shotDuration=0:01:30;"
                       "+textRun objID=r1;INT. ;-textRun;\n  ;+textRun objID=r2;HOUSE;-textRun;-paragraph;"
                       "+paragraph objID=p2 element=Dialogue;-paragraph;-scene;"
                       "+scene;-scene;-section;-stream;"
                       "+stream name=footer;-stream;"
                       "+commentStream objID=k name=notes commentAuthor=Ana dependent=true commentAuthorID=9;"
                       "+section objID=ks;+scene objID=kc;-scene;-section;-commentStream;"
                       "-document;-Talewright");
    parser.EndDocument();

    ASSERT_FALSE(parser.HasParseError());
    const boost::intrusive_ptr<Talewright> story = parser.GetStory();
    EXPECT_EQ(story->version, u"1.0.3");
    EXPECT_EQ(story->documentType, u"screenplay");
    EXPECT_EQ(story->templateName, u"Feature");
    EXPECT_EQ(story->metaData, u" raw ");
    EXPECT_EQ(story->tagLabels, (std::vector<UString>{u"Act1", u""}));
    const Document& document = *story->document;
    EXPECT_EQ(document.version, u"2.5");
    EXPECT_EQ(document.header->objectID.AsString(), u"h");
    EXPECT_EQ(document.footer->name, u"footer");

    const Section& section = BodySection(parser);
    EXPECT_EQ(section.objectID.AsString(), u"s");
    ASSERT_EQ(section.scenes.size(), 2U);
    EXPECT_EQ(section.scenes[1]->sceneNumber, u"");
    const Scene& scene = *section.scenes[0];
    EXPECT_EQ(scene.objectID.AsString(), u"c1");
    EXPECT_EQ(scene.sceneNumber, u"12A");
    EXPECT_EQ(scene.shotDuration, u"0:01:30");
    ASSERT_EQ(scene.paragraphs.size(), 2U);
    EXPECT_EQ(scene.paragraphs[1]->element, kUnknownElement);
    const Paragraph& heading = *scene.paragraphs[0];
    EXPECT_EQ(heading.element, kSceneHeading);
    ASSERT_EQ(heading.textRuns.size(), 2U);
    EXPECT_EQ(heading.textRuns[0]->text, u"INT. ");
    EXPECT_EQ(heading.textRuns[1]->text, u"HOUSE");
    EXPECT_EQ(heading.textRuns[1]->objectID.AsString(), u"r2");

    ASSERT_EQ(document.commentStreams.size(), 1U);
    const CommentStream& comments = *document.commentStreams[0];
    EXPECT_EQ(comments.commentAuthor, u"Ana");
    EXPECT_EQ(comments.dependent, u"true");
    EXPECT_EQ(comments.commentAuthorID, u"9");
    EXPECT_EQ(comments.section->scenes.size(), 1U);
}

TEST(StoryParser, RecordsTheFirstStructuralError) {
    const std::string wrongVersion = "Wrong Version.  The parser doesn't support version:  ";
    const std::string secondStream = "We found a Stream, but we already found one.  Are there two?";
    const std::string secondDocument = "We found a Document, but we already had one, are there two?";
    const std::string lostSection = "We found a Section, but it's not part of a Stream or CommentStream?";
    const std::string secondMetaData = "Metadata already exists.  Are there two?";
    // clang-format off
    const std::pair<std::string, std::string> rows[] = {
        {"+Talewright", wrongVersion},
        {"+Talewright version=2.0;+document;+document", wrongVersion + "2.0"},
        {"+Talewright version=1.0.7", "(none)"},
        {"+document", secondDocument},
        {kDocument + ";+document", secondDocument},
        {kDocument + ";-document;+document", secondDocument},
        {kRoot + ";+stream name=body", secondStream},
        {kBody + ";+stream name=footer", secondStream},
        {kBody + ";-stream;+stream name=body", "We found a Stream, but it's not part of a BodyStream?"},
        {kDocument + ";+stream name=header;-stream;+stream name=header", "We found a Header, but it's not part of a HeaderStream?"},
        {kDocument + ";+stream name=footer;-stream;+stream name=footer", "We found a Footer, but it's not part of a FooterStream?"},
        {kDocument + ";+stream name=Body;-stream;+stream name=Body", "(none)"},
        {kDocument + ";+section", lostSection},
        {kSection + ";-section;+section", lostSection},
        {kSection + ";+section", lostSection},
        {kSection + ";-section;+commentStream;+section", "(none)"},
        {kSection + ";+commentStream;+section", lostSection},
        {kBody + ";+scene", "We founda a Scene, but it's not part of a Section?"},
        {kRoot + ";+commentStream", "We found a CommentStream, but it's not part of Document?"},
        {"+metaData;-metaData", secondMetaData},
        {kRoot + ";+metaData;a;-metaData;+metaData;-metaData", secondMetaData},
        {kRoot + ";+metaData;-metaData;+metaData;a;-metaData", "(none)"},
        {kSection + ";+paragraph;+textRun;lost;-textRun;-paragraph", "(none)"},
        {"+Tag label=early;-Tag;" + kRoot, "(none)"},
        {kRoot + ";+styles;+unknown;-unknown;-styles;+document", "(none)"},
    };
    // clang-format on
    for (const auto& [events, error] : rows) {
        EXPECT_EQ(ErrorAfter(events), error) << events;
    }
    for (const std::string version : {"1", "1.", "1.00", "01.0", "1..0", "2.0"}) {
        EXPECT_EQ(ErrorAfter("+Talewright version=" + version), wrongVersion + version);
    }
}

TEST(StoryParser, TellsTheKindOfAParagraph) {
    const StoryParser parser;
    const std::pair<UString, std::uint32_t> rows[] = {
        {u"SceneHeading", 200}, {u"Character", 201},     {u"Dialog", 202},     {u"Action", 203},
        {u"Shot", 204},         {u"Parenthetical", 205}, {u"Transition", 206}, {u"Dialogue", 207},
        {u"action", 207},       {u"Action ", 207},       {u"", 207},
    };
    for (const auto& [text, kind] : rows) {
        EXPECT_EQ(parser.GetElement({{u"element", text}}), kind) << zoncore::UTF16to8(text);
    }
    EXPECT_EQ(parser.GetElement({{u"Element", u"Action"}}), 207U);
}

TEST(StoryParser, AnErrorStopsBuildingUntilTheNextDocument) {
    ParserAfter parser(kScene);
    parser.SetParseError(u"disk on fire");
    Play(parser, "+paragraph element=Action;+scene;+document");
    EXPECT_EQ(parser.GetParseError(), u"disk on fire");
    EXPECT_TRUE(BodySection(parser).scenes[0]->paragraphs.empty());

    parser.SetParseError(u"and again");
    parser.StartDocument();
    EXPECT_FALSE(parser.HasParseError());
    EXPECT_EQ(parser.GetParseError(), u"and again");
    EXPECT_EQ(parser.GetStory(), nullptr);
    Play(parser, kScene);
    EXPECT_EQ(BodySection(parser).scenes.size(), 1U);
}

// Text comes in pieces of any size, and a long text is handed over rather than copied.
TEST(StoryParser, JoinsTextHoweverItIsCut) {
    UString text = u"Caf\u00E9 \U0001F3AC fermo.";
    for (const std::size_t size : {text.size(), std::size_t{1}, std::size_t{5000}}) {
        text.resize(std::max(text.size(), size), u'x');
        ParserAfter parser(kParagraph + ";+textRun");
        for (std::size_t i = 0; i < text.size(); i += size) {
            parser.Characters(text.substr(i, size));
        }
        parser.EndElement(u"textRun");
        Play(parser, "+textRun;next;-textRun");
        EXPECT_EQ(BodySection(parser).scenes[0]->paragraphs[0]->textRuns[0]->text, text) << size;
        EXPECT_EQ(BodySection(parser).scenes[0]->paragraphs[0]->textRuns[1]->text, u"next") << size;
    }
}

TEST(StoryParser, ARunKeepsItsFirstText) {
    ParserAfter parser(kParagraph + ";+textRun;one;-textRun;two;-textRun;+textRun;dropped;+b;kept;-b;-textRun");
    const Paragraph& paragraph = *BodySection(parser).scenes[0]->paragraphs[0];
    EXPECT_EQ(paragraph.textRuns[0]->text, u"one");
    EXPECT_EQ(paragraph.textRuns[1]->text, u"kept");
}

TEST(StoryParser, SecondRootReplacesTheFirst) {
    const ParserAfter parser(kRoot + ";+document;-document;" + kRoot);
    EXPECT_FALSE(parser.HasParseError());
    EXPECT_EQ(parser.GetStory()->document, nullptr);
}

TEST(StoryParser, EachHeadingSetsTheDurationAnew) {
    ParserAfter parser(kScene + ";+paragraph element=SceneHeading shotDuration=1:0;-paragraph;"
                                "+paragraph element=Action shotDuration=9:9;-paragraph");
    EXPECT_EQ(BodySection(parser).scenes[0]->shotDuration, u"1:0");
    Play(parser, "+paragraph element=SceneHeading");
    EXPECT_EQ(BodySection(parser).scenes[0]->shotDuration, u"");
}

TEST(StoryParser, ASceneOutlivesTheParserAndTheRoot) {
    const auto scene = BodySection(ParserAfter(kParagraph + ";+textRun;still here;-textRun")).scenes[0];
    EXPECT_EQ(scene->paragraphs[0]->textRuns[0]->text, u"still here");
}

} // namespace
