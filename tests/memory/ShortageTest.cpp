#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include <zoncore/Localizer.h>
#include <zonstoryparser/Story.h>
#include <zonstoryparser/StoryParser.h>

#include "support/Events.h"
#include "support/Scenes.h"
#include "support/ShortageSweep.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace zonstoryparser;
using support::DumpFolder;
using support::MakeScene;
using support::ShortageSweep;
using support::ValueOf;

// Long enough that no text fits into a string object itself.
boost::intrusive_ptr<Scene> LongScene() {
    return MakeScene({{kSceneHeading, u"EXT. THE LONG PIER BEHIND THE HARBOUR OFFICE - LATE AT NIGHT"},
                      {kAction, u"Rain on the planks, and on the lamps beside the ferry."},
                      {kCharacter, u"THE HARBOUR MASTER OF ALTENFELD"},
                      {kDialog, u"Nobody crosses tonight, and nobody comes back either."},
                      {kCharacter, u"A PASSENGER WITHOUT A TICKET"},
                      {kDialog, u"Then who is that \U0001F3AC out there with the lantern?"}},
                     u"a scene number of its own");
}

std::string Describe(SXMPMeta& xmp) {
    std::string text;
    for (const auto read : {GetSceneSettingFromXMP, GetShotLocationFromXMP, GetSceneTimeOfDayFromXMP,
                            GetSceneNumberFromXMP, GetShotNameFromXMP, GetShotDurationValueFromXMP, GetActionFromXMP}) {
        text += ValueOf(read, xmp) + '\n';
    }
    for (const std::string& line : support::DialogueOf(xmp)) {
        text += line + '\n';
    }
    std::string packet;
    xmp.SerializeToBuffer(&packet, 0, 0, "", "", 0);
    SXMPMeta parsed(packet.data(), packet.size());
    return text;
}

struct Clip {
    SXMPMeta xmp;
    std::vector<zonmetadata::Path> changed;
};

Clip ClipOf(const boost::intrusive_ptr<Scene>& scene) {
    Clip clip;
    WriteSceneMetadataIntoXMP(scene, clip.xmp, clip.changed);
    return clip;
}

std::string DescribeClip(Clip& clip) {
    return Describe(clip.xmp);
}

// Keeps events, to deliver them without asking for memory itself.
class Events : public zoncore::AbstractParseHandler {
public:
    explicit Events(const std::string& text) { support::Play(*this, text); }

    void StartElement(const UString& name, const zoncore::AttributeMap& attributes) override {
        mSteps.push_back([=](StoryParser& parser) { parser.StartElement(name, attributes); });
    }
    void EndElement(const UString& name) override {
        mSteps.push_back([=](StoryParser& parser) { parser.EndElement(name); });
    }
    void Characters(const UString& text) override {
        mSteps.push_back([=](StoryParser& parser) { parser.Characters(text); });
    }

    void Deliver(StoryParser& parser) const {
        parser.StartDocument();
        for (const auto& step : mSteps) {
            step(parser);
        }
        parser.EndDocument();
    }

private:
    std::vector<std::function<void(StoryParser&)>> mSteps;
};

TEST(MemoryShortage, Parsing) {
    const DumpFolder folder;
    const Events events("+Talewright version=1.0 documentType=a-screenplay template=the-feature-film;"
                        "+metaData;text that is longer than a string object;-metaData;"
                        "+Tag label=a-label-of-some-length;-Tag;+document version=1.0;"
                        "+stream name=header;-stream;+stream objID=a-stream-identity name=body;"
                        "+section objID=a-section-identity;+scene objID=a-scene-identity sceneNumber=12A-and-12B;"
                        "+paragraph objID=a-paragraph-identity element=SceneHeading shotDuration=00:01:30;"
                        "+textRun objID=a-text-run-identity;INT. A HOUSE - NIGHT;-textRun;-paragraph;-scene;"
                        "-section;-stream;+commentStream name=a-comment-stream commentAuthor=A-Comment-Author;"
                        "-commentStream;-document;-Talewright");
    ShortageSweep([] { return std::make_unique<StoryParser>(); },
                  [&](auto& parser) {
                      try {
                          events.Deliver(*parser);
                      } catch (const std::bad_alloc&) {
                          UString report;
                          TraverseStory(parser->GetStory(), report); // what was built until then is whole
                          throw;
                      }
                      return !parser->HasParseError();
                  },
                  [](auto& parser) {
                      const auto story = parser->GetStory();
                      const Scene& scene = *story->document->body->section->scenes.at(0);
                      UString text = story->metaData + story->tagLabels.at(0) + scene.sceneNumber;
                      GetTextRuns(scene.paragraphs.at(0), text);
                      return zoncore::UTF16to8(text);
                  })
        .Run();
}

TEST(MemoryShortage, Packets) {
    const auto scene = LongScene();
    ShortageSweep([] { return std::vector<ShotXMP>(); },
                  [&](auto& shots) {
                      shots.clear();
                      return GetSceneXMP(nullptr, scene, 1, shots);
                  },
                  [](auto& shots) { return shots.at(0).xmpPacket; })
        .Run();
}

TEST(MemoryShortage, Dumps) {
    const DumpFolder folder;
    boost::intrusive_ptr<Talewright> story(new Talewright);
    story->document = new Document;
    story->document->body = new Stream;
    story->document->body->section = support::MakeSection({LongScene(), LongScene()});
    ShortageSweep(
        [&] {
            std::filesystem::remove_all(folder.Path());
            std::filesystem::create_directory(folder.Path());
            return UString();
        },
        [&](auto& report) { return TraverseStory(story, report); },
        [&](auto& report) {
            std::string text = zoncore::UTF16to8(report);
            for (const std::string& name : support::NamesIn(folder.Path())) {
                text += name + support::ReadFile(folder / name);
            }
            return text;
        })
        .Run();
}

TEST(MemoryShortage, WritingAScene) {
    const auto scene = LongScene();
    const auto old =
        MakeScene({{kCharacter, u"SOMEBODY OF THE EARLIER SCENE"}, {kDialog, u"Words that must not stay."}});
    ShortageSweep([&] { return ClipOf(old); },
                  [&](Clip& clip) { return WriteSceneMetadataIntoXMP(scene, clip.xmp, clip.changed).empty(); },
                  DescribeClip)
        .Run();
}

TEST(MemoryShortage, ClearingAScene) {
    const auto scene = LongScene();
    ShortageSweep([&] { return ClipOf(scene); },
                  [](Clip& clip) { return ClearSceneMetadataFromXMP(clip.xmp, clip.changed).empty(); }, DescribeClip)
        .Run();
}

TEST(MemoryShortage, Accessors) {
    const std::vector<CharacterDialogue> dialogue = {{u"A PASSENGER", u"Who is that?"}, {u"THE MASTER", u"Nobody."}};
    ShortageSweep(
        [] { return SXMPMeta(); },
        [&](SXMPMeta& xmp) {
            std::vector<CharacterDialogue> read;
            std::string value;
            return WriteSceneHeadingToXMP(u"EXTERIOR OF SOMETHING", u"A LONG LOCATION", u"LATE AT NIGHT", xmp) &&
                   WriteSceneNumberToXMP(u"a scene number of its own", xmp) &&
                   WriteShotNameToXMP(u"a shot's name of its own", xmp) &&
                   WriteShotDurationToXMP(u"0000001:0000030:000009", xmp) &&
                   WriteActionToXMP(u"Rain on the planks.", xmp) && DeleteCharacterDialogueFromXMP(xmp) &&
                   WriteCharacterDialogueToXMP(dialogue, xmp) && GetCharacterDialogueFromXMP(xmp, nullptr, read) &&
                   read.size() == 2 && GetActionFromXMP(xmp, nullptr, &value) && HasAnyStoryRelatedMetadata(xmp);
        },
        Describe)
        .Run();
}

TEST(MemoryShortage, Copies) {
    struct Copies {
        SXMPMeta xmp;
        std::vector<zonmetadata::Path> paths;
        std::string message;
    };
    const Clip clip = ClipOf(LongScene());
    ShortageSweep(
        [] { return Copies(); },
        [&](Copies& copies) {
            copies.xmp = clip.xmp;
            copies.paths = clip.changed;
            for (const zonmetadata::Path& path : clip.changed) {
                for (zonmetadata::Path& leaf :
                     DescendantLeafPaths(zonmetadata::CreatePathFromArrayItem(path, 1234567890))) {
                    copies.paths.push_back(std::move(leaf));
                }
            }
            zoncore::Localizer::Get().SetTranslations({{"$$$/host/AKeyOfSomeLength", u"A text of some length"}});
            copies.message =
                zoncore::UTF16to8(zoncore::Localizer::Get().GetLocalizedString("$$$/host/AKeyOfSomeLength=x"));
            zoncore::Localizer::Get().SetTranslations({});
            return true;
        },
        [](Copies& copies) {
            std::string text = Describe(copies.xmp) + copies.message;
            for (const zonmetadata::Path& path : copies.paths) {
                text += path.SchemaNamespace() + path.PropertyPath();
            }
            return text;
        })
        .Run();
}

} // namespace
