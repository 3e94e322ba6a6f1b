#include <thread>

#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;

// All that a host does with one scene, in metadata of its own.
std::string UseEverything(const boost::intrusive_ptr<Scene>& scene) {
    SXMPMeta xmp;
    std::vector<zonmetadata::Path> changed;
    std::vector<ShotXMP> shots;
    WriteSceneMetadataIntoXMP(scene, xmp, changed);
    GetSceneXMP(nullptr, scene, 1, shots);
    const SXMPMeta copy = xmp;
    ClearSceneMetadataFromXMP(xmp, changed);
    xmp = copy;
    std::string text = shots.at(0).xmpPacket;
    for (const std::string& line : support::Carried(xmp)) {
        text += line;
    }
    return text;
}

TEST(Threads, ShareAStoryAndHaveMetadataOfTheirOwn) {
    const auto scene = support::MakeScene({{kSceneHeading, u"INT. HOUSE - NIGHT"},
                                           {kAction, u"Rain on the roof."},
                                           {kCharacter, u"ANN"},
                                           {kDialog, u"Who is there?"}});
    const std::string alone = UseEverything(scene);
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                EXPECT_EQ(UseEverything(scene), alone);
                EXPECT_THROW(SXMPMeta("no packet", 9), XMP_Error);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
