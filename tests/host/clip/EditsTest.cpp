// What lists of edits do to files, on files and lists of any kind.
#include <fcntl.h>

#include <gmock/gmock.h>

#include "clip/Clip.h"
#include "clip/CopyFile.h"
#include "clip/EditPlaces.h"
#include "clip/SameBytes.h"
#include "host/clip/Edits.h"
#include "support/MessageOf.h"
#include "support/TemporaryFolder.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

namespace {

using zonstory::ByteReader;
using zonstory::EditList;
using zonstory::FileDescriptor;

// Bytes that tell where they stood. Long enough for more than one piece and block.
std::string AnyBytes() {
    std::string bytes;
    for (int left = *rc::gen::element<int>(0, 1, 100, 9000, 600'000); left > 0; --left) {
        bytes += static_cast<char>(left * 31 / 7);
    }
    return bytes;
}

EditList AnyEdits(std::uint64_t size) {
    EditList edits;
    std::uint64_t at = *rc::gen::inRange<std::uint64_t>(0, size / 4 + 1);
    for (int count = *rc::gen::inRange(0, 5); count > 0 && at <= size; --count) {
        const std::uint64_t taken =
            std::min<std::uint64_t>(size - at, static_cast<std::uint64_t>(*rc::gen::element(0, 3, 5000)));
        const std::size_t put = *rc::gen::elementOf(std::vector<std::size_t>{taken, taken, 0, 7, taken + 4096});
        edits.push_back({at, taken, std::string(put, 'p')});
        at += taken + *rc::gen::inRange<std::uint64_t>(1, size / 3 + 2);
    }
    return edits;
}

class FileOf {
public:
    explicit FileOf(const support::TemporaryFolder& folder, const char* name, const std::string& bytes)
        : mSize(bytes.size()) {
        support::WriteFile(folder / name, bytes);
        mFile = FileDescriptor(::open((folder / name).c_str(), O_RDWR | O_CLOEXEC));
    }

    const FileDescriptor& File() const { return mFile; }
    ByteReader Reader() const { return {mFile, mSize}; }

private:
    std::uint64_t mSize;
    FileDescriptor mFile;
};

RC_GTEST_PROP(Edits, MakeTheNewVersionWhichIsProvenAndTheOldAgain, ()) {
    const support::TemporaryFolder folder;
    const std::string old = AnyBytes();
    const EditList edits = AnyEdits(old.size());
    RC_ASSERT(zonstory::AreInOrder(edits, old.size()));
    const FileOf before(folder, "old", old);
    const FileOf empty(folder, "new", "");
    const FileDescriptor around(::open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    zonstory::CopyEdited(before.File(), old.size(), edits, empty.File(), around);
    std::string made = support::ReadFile(folder / "new");
    RC_ASSERT(made == support::Applied(old, edits));
    RC_ASSERT(made.size() == zonstory::SizeAfter(edits, old.size()));

    const EditList inverse = zonstory::InverseOf(edits, before.Reader());
    RC_ASSERT(support::Applied(made, inverse) == old);

    const ByteReader reader = before.Reader();
    zonstory::RequireEdited(reader, edits, FileOf(folder, "same", made).Reader(), {});
    if (!made.empty()) {
        const std::size_t at = *rc::gen::inRange<std::size_t>(0, made.size());
        made[at] ^= 1;
        RC_ASSERT_THROWS_AS(zonstory::RequireEdited(reader, edits, FileOf(folder, "other", made).Reader(), {}),
                            zonstory::ClipError);
    }
    RC_ASSERT_THROWS_AS(zonstory::RequireEdited(reader, edits, FileOf(folder, "long", made + "x").Reader(), {}),
                        zonstory::ClipError);
}

// A byte is followed by giving each a value of its own.
TEST(Edits, TellWhereAByteIsAfterwards) {
    const std::string old = "abcdefghij";
    const EditList edits = {{1, 2, ""}, {4, 1, "E"}, {6, 0, "...."}, {9, 1, "J!"}};
    const std::string made = support::Applied(old, edits);
    const zonstory::NewPlaces places(edits);
    for (std::size_t at = 0; at <= old.size(); ++at) {
        const auto place = places.Of(at);
        const bool isGone = at == 1 || at == 2 || at == 9;
        ASSERT_EQ(place.has_value(), !isGone) << at;
        if (place && at != 4) {
            EXPECT_EQ(made.substr(*place, 1), old.substr(at, 1)) << at;
        }
    }
}

TEST(Edits, WhatIsLeftOutIsNotRead) {
    const support::TemporaryFolder folder;
    const FileOf old(folder, "old", "head" + std::string(1'000'000, 'm') + "tail");
    const EditList edits = {{2, 0, "+"}};
    const auto require = [&](const std::string& made) {
        zonstory::RequireEdited(old.Reader(), edits, FileOf(folder, "new", made).Reader(), {{4, 1'000'000}});
    };
    EXPECT_NO_THROW(require("he+ad" + std::string(1'000'000, 'x') + "tail"));
    EXPECT_THROW(require("he+aX" + std::string(1'000'000, 'm') + "tail"), zonstory::ClipError);
    EXPECT_THROW(require("he+ad" + std::string(1'000'000, 'm') + "Xail"), zonstory::ClipError);
}

TEST(FreeSpace, IsAskedForBeforeAnythingIsCopied) {
    const support::TemporaryFolder folder;
    const FileDescriptor around(::open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    EXPECT_THAT(support::MessageOf<zonstory::FileError>([&] { zonstory::RequireFreeSpace(around, 1ULL << 60); }),
                testing::MatchesRegex("needs [0-9.]+ GB of free space in its folder, which has .*"));
}

} // namespace
