#include "commands/PacketNames.h"

#include <gmock/gmock.h>

namespace {

using zonstory::PacketNames;

TEST(PacketNames, AreSafeAndDistinct) {
    PacketNames names;
    EXPECT_EQ(names.NameFor("12A"), "scene-12A.xmp");
    EXPECT_EQ(names.NameFor("12a"), "scene-12a_2.xmp"); // one file where case does not count
    EXPECT_EQ(names.NameFor("12A"), "scene-12A_3.xmp");
    EXPECT_EQ(names.NameFor("../../etc/passwd"), "scene-..-..-etc-passwd.xmp");
    EXPECT_EQ(names.NameFor("a\nb\\c:d*e?f\"g<h>i|j k"), "scene-a-b-c-d-e-f-g-h-i-j-k.xmp");
    EXPECT_EQ(names.NameFor("第三場"), "scene-第三場.xmp");
    EXPECT_EQ(names.NameFor("1_2"), "scene-1_2.xmp");
    EXPECT_EQ(names.NameFor("1"), "scene-1.xmp");
    EXPECT_EQ(names.NameFor("1"), "scene-1_3.xmp"); // "_2" is another scene's
}

TEST(PacketNames, AreCutBetweenCharacters) {
    PacketNames names;
    std::string number(99, 'x');
    number += "é and more";
    EXPECT_EQ(names.NameFor(number), "scene-" + std::string(99, 'x') + ".xmp");
    EXPECT_EQ(names.NameFor(number), "scene-" + std::string(99, 'x') + "_2.xmp");
}

} // namespace
