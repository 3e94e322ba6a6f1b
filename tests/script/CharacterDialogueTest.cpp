#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/Scenes.h"

namespace {

using namespace zonstoryparser;
using support::Lines;

TEST(CharacterDialogue, ClosesAPairOnlyWithASpeaker) {
    struct Row {
        UString character, dialogue, characterAfter, dialogueAfter;
        std::vector<std::string> appended;
    };
    const Row rows[] = {
        {u"", u"Hi", u"", u"Hi", {}},
        {u"BOB", u"", u"", u"", {}},
        {u"BOB", u"Hi", u"", u"", {"BOB: Hi"}},
    };
    for (const Row& row : rows) {
        UString character = row.character;
        UString dialogue = row.dialogue;
        std::vector<CharacterDialogue> list = {{u"ANN", u"First."}};
        PushCharacterDialogue(character, dialogue, list);
        EXPECT_EQ(character, row.characterAfter);
        EXPECT_EQ(dialogue, row.dialogueAfter);
        std::vector<std::string> expected = {"ANN: First."};
        expected.insert(expected.end(), row.appended.begin(), row.appended.end());
        EXPECT_EQ(Lines(list), expected);
    }
}

} // namespace
