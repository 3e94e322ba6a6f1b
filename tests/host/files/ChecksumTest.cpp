#include <gmock/gmock.h>

#include "files/Checksum.h"

namespace {

// As md5sum, sha1sum, sha256sum and xxhsum tell them of "abc".
TEST(Checksum, IsWhatOtherProgramsSay) {
    for (const std::string wanted :
         {"md5:900150983cd24fb0d6963f7d28e17f72", "sha1:a9993e364706816aba3e25717850c26c9cd0d89d",
          "sha256:ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad", "xxh64:44bc2cf5ad770999",
          "xxh128:06b05ab6733a618578af5f94892f3950"}) {
        zonstory::Hasher hasher(zonstory::KindOfChecksum(wanted).value());
        hasher.Add("ab");
        hasher.Add("");
        hasher.Add("c");
        EXPECT_EQ(hasher.Finish(), wanted);
    }
    EXPECT_FALSE(zonstory::KindOfChecksum("md4:00"));
}

} // namespace
