#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;

TEST(CharacterDialogue, ClosesAPairOnlyWithASpeaker) {
    const std::tuple<UString, UString, UString, std::vector<std::string>> rows[] = {
        {u"", u"Hi", u"Hi", {"ANN: First."}},
        {u"BOB", u"", u"", {"ANN: First."}},
        {u"BOB", u"Hi", u"", {"ANN: First.", "BOB: Hi"}},
    };
    for (const auto& [speaker, speech, speechAfter, listAfter] : rows) {
        UString character = speaker;
        UString dialogue = speech;
        std::vector<CharacterDialogue> list = {{u"ANN", u"First."}};
        PushCharacterDialogue(character, dialogue, list);
        EXPECT_EQ(character, u"");
        EXPECT_EQ(dialogue, speechAfter);
        EXPECT_EQ(support::Lines(list), listAfter);
    }
}

} // namespace
