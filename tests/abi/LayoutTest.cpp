#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

#include <zoncore/FileSupport.h>
#include <zoncore/Localizer.h>
#include <zoncore/Tokenizer.h>
#include <zonstoryparser/SceneContent.h>
#include <zonstoryparser/StoryParser.h>
#include <zonstoryparser/XMPFiles.h>

namespace {

using namespace zonstoryparser;
using Handler = zoncore::AbstractParseHandler;
using Counted = zoncore::RefCountedInterface;

// A pointer to a virtual function holds the place of its slot: in bytes, the lowest bit aside. A destructor has two.
template <typename Function>
std::size_t Slot(Function function) {
    std::size_t place = 0;
    std::memcpy(&place, &function, sizeof place);
    return place / sizeof(void*);
}

template <typename Object, typename Member>
std::size_t Offset(const Object& object, const Member& member) {
    return static_cast<std::size_t>(reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&object));
}

template <typename Object, typename... Members>
std::vector<std::size_t> Layout(Members Object::*... members) {
    const Object object{};
    return {Offset(object, object.*members)..., sizeof(Object)};
}

template <typename Member, typename Object>
const Member& At(const Object& object, std::size_t offset) {
    return *reinterpret_cast<const Member*>(reinterpret_cast<const char*>(&object) + offset);
}

using Bytes = std::vector<std::size_t>;

// Programs that were compiled against an earlier release of the same SO version count on every number here.
TEST(Layout, VirtualOperationsKeepTheirSlots) {
    EXPECT_EQ(
        (Bytes{Slot(&Handler::StartDocument), Slot(&Handler::StartElement), Slot(&Handler::StartElementWithNamespace),
               Slot(&Handler::EndElement), Slot(&Handler::EndElementWithNamespace), Slot(&Handler::StartCDATA),
               Slot(&Handler::EndCDATA), Slot(&Handler::Characters), Slot(&Handler::Comment),
               Slot(&Handler::EndDocument), Slot(&Handler::StartPrefixMapping), Slot(&Handler::EndPrefixMapping)}),
        (Bytes{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    EXPECT_EQ((Bytes{Slot(&Counted::AddRefCount), Slot(&Counted::ReleaseRefCount)}), (Bytes{0, 1}));
    EXPECT_EQ(Slot(&zoncore::Localizer::GetLocalizedString), 2U);
    EXPECT_EQ(Slot(&XMP_Error::what), 2U);
}

TEST(Layout, PublicMembersKeepTheirPlacesAndClassesTheirSizes) {
    EXPECT_EQ(Layout(&CharacterDialogue::character, &CharacterDialogue::dialogue), (Bytes{0, 32, 64}));
    EXPECT_EQ(Layout(&ShotXMP::shotID, &ShotXMP::xmpPacket), (Bytes{0, 32, 64}));
    EXPECT_EQ(Layout(&SceneContent::firstParagraphID, &SceneContent::heading, &SceneContent::setting,
                     &SceneContent::location, &SceneContent::timeOfDay, &SceneContent::action,
                     &SceneContent::dialogues),
              (Bytes{0, 32, 64, 96, 128, 160, 192, 216}));
    EXPECT_EQ(Layout(&TextRun::objectID, &TextRun::text), (Bytes{16, 48, 80}));
    EXPECT_EQ(Layout(&Paragraph::objectID, &Paragraph::element, &Paragraph::textRuns), (Bytes{16, 48, 56, 80}));
    EXPECT_EQ(Layout(&Scene::objectID, &Scene::sceneNumber, &Scene::shotDuration, &Scene::paragraphs),
              (Bytes{16, 48, 80, 112, 136}));
    EXPECT_EQ(Layout(&Section::objectID, &Section::scenes), (Bytes{16, 48, 72}));
    EXPECT_EQ(Layout(&Stream::objectID, &Stream::name, &Stream::section), (Bytes{16, 48, 80, 88}));
    EXPECT_EQ(Layout(&CommentStream::objectID, &CommentStream::name, &CommentStream::commentAuthor,
                     &CommentStream::dependent, &CommentStream::commentAuthorID, &CommentStream::section),
              (Bytes{16, 48, 80, 112, 144, 176, 184}));
    EXPECT_EQ(
        Layout(&Document::header, &Document::body, &Document::footer, &Document::version, &Document::commentStreams),
        (Bytes{16, 24, 32, 40, 72, 96}));
    EXPECT_EQ(Layout(&Talewright::document, &Talewright::version, &Talewright::documentType, &Talewright::templateName,
                     &Talewright::metaData, &Talewright::tagLabels),
              (Bytes{16, 24, 56, 88, 120, 152, 176}));
    EXPECT_EQ((Bytes{sizeof(StoryParser), sizeof(ObjectID), sizeof(zonmetadata::Path), sizeof(SXMPMeta),
                     sizeof(SXMPFiles), sizeof(XMP_Error), sizeof(zoncore::Tokenizer), sizeof(zoncore::Dir),
                     sizeof(zoncore::File), sizeof(Counted), sizeof(zoncore::RefCountedObject)}),
              (Bytes{152, 32, 48, 8, 8, 32, 80, 32, 32, 8, 16}));
}

TEST(Layout, InlineFunctionsReadWhereTheyAlwaysRead) {
    const auto path = zonmetadata::PathForSchemaNameAndPropertyName("urn:x", "name");
    EXPECT_EQ(Offset(path, path.PropertyPath()), 16U);
    StoryParser parser;
    parser.StartElement(u"Talewright", {{u"version", u"1.0"}});
    EXPECT_EQ((At<Talewright*>(parser, 88)), parser.GetStory().get());
    EXPECT_FALSE(At<bool>(parser, 48));
    parser.SetParseError(u"a text that no string object holds in itself");
    EXPECT_TRUE(At<bool>(parser, 48));
    EXPECT_EQ(At<UString>(parser, 56), parser.GetParseError());
}

} // namespace
