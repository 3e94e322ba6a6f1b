#include <memory>

#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>
#include <zonstoryparser/StoryParser.h>

#include "support/Scenes.h"
#include "support/ShortageSweep.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace zonstoryparser;
using support::SweepShortage;

// Long enough that no text fits into a string object itself.
const UString kText = u"Rain on the planks \U0001F3AC, and on the lamps beside the ferry.";
const zoncore::AttributeMap kAttributes = {
    {u"version", u"1.0.a-longer-version"}, {u"objID", u"an-identity-of-its-own"},  {u"name", u"body"},
    {u"label", u"a-label-of-some-length"}, {u"sceneNumber", u"12A-and-12B-and-C"}, {u"element", u"SceneHeading"},
    {u"shotDuration", u"0000:0001:000030"}};
const UString kElements[] = {u"Talewright", u"metaData", u"Tag",       u"document", u"stream",
                             u"section",    u"scene",    u"paragraph", u"textRun"};

boost::intrusive_ptr<Scene> LongScene() {
    return support::MakeScene({{kSceneHeading, u"EXT. THE LONG PIER BEHIND THE HARBOUR OFFICE - LATE AT NIGHT"},
                               {kAction, kText},
                               {kCharacter, u"THE HARBOUR MASTER OF ALTENFELD"},
                               {kDialog, u"Nobody crosses tonight, and nobody comes back either."},
                               {kCharacter, u"A PASSENGER WITHOUT A TICKET"},
                               {kDialog, u"Then who is that out there with the lantern?"}},
                              u"a scene number of its own");
}

std::string Packet(const SXMPMeta& xmp) {
    std::string packet;
    xmp.SerializeToBuffer(&packet, 0, 0, "", "", 0);
    return packet;
}

TEST(MemoryShortage, ParsingAndDumping) {
    const support::DumpFolder folder;
    const UString textRun = u"textRun";
    const UString metaData = u"metaData";
    SweepShortage([] { return std::make_unique<StoryParser>(); },
                  [&](auto& parser) {
                      UString report;
                      try {
                          parser->StartDocument();
                          for (const UString& element : kElements) {
                              parser->StartElement(element, kAttributes);
                              parser->Characters(kText);
                              if (element == metaData || element == textRun) {
                                  parser->EndElement(element);
                              }
                          }
                          parser->EndDocument();
                      } catch (const std::bad_alloc&) {
                          TraverseStory(parser->GetStory(), report); // what was built until then is whole
                          throw;
                      }
                      return TraverseStory(parser->GetStory(), report) && !parser->HasParseError();
                  },
                  [&](auto& parser) {
                      const auto story = parser->GetStory();
                      const Scene& scene = *story->document->body->section->scenes.at(0);
                      UString text = story->metaData + story->tagLabels.at(0) + scene.sceneNumber;
                      GetTextRuns(scene.paragraphs.at(0), text);
                      return zoncore::UTF16to8(text) +
                             support::ReadFile(folder / support::NamesIn(folder.Path()).at(0));
                  });
}

TEST(MemoryShortage, Packets) {
    const auto scene = LongScene();
    SweepShortage([] { return std::vector<ShotXMP>(); },
                  [&](auto& shots) {
                      shots.clear();
                      return GetSceneXMP(nullptr, scene, 1, shots);
                  },
                  [](auto& shots) { return shots.at(0).xmpPacket; });
}

// Also what a clip carried before, a copy of it, and what is read back.
TEST(MemoryShortage, Clips) {
    const auto scene = LongScene();
    std::vector<zonmetadata::Path> changed;
    SweepShortage(
        [&] {
            SXMPMeta xmp;
            WriteCharacterDialogueToXMP({{u"SOMEBODY OF THE EARLIER SCENE", u"Words that must not stay."}}, xmp);
            return xmp;
        },
        [&](SXMPMeta& xmp) {
            changed.clear();
            std::vector<CharacterDialogue> read;
            if (!WriteSceneMetadataIntoXMP(scene, xmp, changed).empty() || !HasAnyStoryRelatedMetadata(xmp) ||
                !GetCharacterDialogueFromXMP(xmp, nullptr, read) || read.size() != 2) {
                return false;
            }
            SXMPMeta copy = xmp;
            return ClearSceneMetadataFromXMP(copy, changed).empty() && !HasAnyStoryRelatedMetadata(copy);
        },
        Packet);
}

} // namespace
