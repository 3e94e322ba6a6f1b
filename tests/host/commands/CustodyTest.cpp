#include <gmock/gmock.h>

#include "SampleStory.h"
#include "Zonstory.h"
#include "host/clip/ClipSamples.h"
#include "host/clip/MadeChunks.h"

// One place for what a clip says, and clips that somebody sealed or wrote into before.
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using support::ExifToolValue;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::HasSubstr;

constexpr const char* kForeignPacket = R"(<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF
 xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><rdf:Description rdf:about=""
 xmlns:xmpDM="http://ns.adobe.com/xmp/1.0/DynamicMedia/" xmlns:dc="http://purl.org/dc/elements/1.1/"
 dc:source="lab"@/></rdf:RDF></x:xmpmeta>)";

class Custody : public ::testing::Test {
protected:
    Custody() {
        support::WriteFile(mZonstory / "s.skrx", support::kSampleStory);
        fs::rename(support::MakeClip(mZonstory.Folder(), support::SampleNamed("Wav")), mZonstory / "a.wav");
        mBytes = support::ReadFile(mZonstory / "a.wav");
    }

    ZonstoryResult Run(std::vector<std::string> words) const {
        if (words.front() == "write") {
            words.insert(words.begin() + 1, "s.skrx");
        }
        words.emplace_back("a.wav");
        return mZonstory.Run(words);
    }

    // What another program says in a place.
    static std::string Packet(const std::string& more) {
        std::string bytes = kForeignPacket;
        return bytes.replace(bytes.find('@'), 1, more);
    }
    void SaySidecar(const std::string& more) const { support::WriteFile(mZonstory / "a.xmp", Packet(more)); }
    void SayInside(const std::string& scene) const {
        std::string bytes = mBytes + support::Chunk("_PMX", Packet(" xmpDM:scene=\"" + scene + "\""));
        support::WriteFile(mZonstory / "a.wav", bytes.replace(4, 4, support::Little(bytes.size() - 8)));
    }

    std::string Inside() const { return ExifToolValue(mZonstory / "a.wav", "XMP-xmpDM:Scene"); }
    std::string Sidecar() const { return ExifToolValue(mZonstory / "a.xmp", "XMP-xmpDM:Scene"); }
    bool IsUntouched() const { return support::ReadFile(mZonstory / "a.wav") == mBytes; }
    std::string Shown() const { return Run({"show"}).out; }

    Zonstory mZonstory;
    std::string mBytes;
};

struct SealCase {
    const char* list;
    const char* make;
    const char* check; ///< Neither sums of other kinds nor MHL have a program here that checks them.
};

const SealCase kSeals[] = {{"x.md5", "md5sum a.wav", "md5sum --status -c x.md5"},
                           {"x.sha1", "sha1sum --tag a.wav", "sha1sum --status -c x.sha1"},
                           {"x.xxh64", "xxhsum -H64 a.wav", "xxhsum --quiet -c x.xxh64"}};

TEST_F(Custody, ASealHoldsUnlessInsideIsInsistedOn) {
    const auto shell = [&](const std::string& command) {
        return support::RunProgram({"sh", "-c", "cd \"$0\" && " + command, mZonstory.Folder()}).exitCode;
    };
    for (const SealCase& seal : kSeals) {
        if (shell("command -v " + std::string(seal.check).substr(0, std::string(seal.check).find(' '))) != 0) {
            continue;
        }
        ASSERT_EQ(shell(std::string(seal.make) + " > " + seal.list), 0);
        const ZonstoryResult written = Run({"write", "--scene", "1"});
        EXPECT_THAT(written.err, HasSubstr("not written inside, since the hash list "s + seal.list + " names it"));
        EXPECT_EQ(shell(seal.check), 0) << seal.list;
        EXPECT_EQ(Sidecar(), "1");
        EXPECT_THAT(Run({"write", "--scene", "#4", "--place", "inside"}).err,
                    AllOf(HasSubstr("no longer holds for it; 'zonstory undo'"), HasSubstr("its sidecar said")));
        EXPECT_NE(shell(seal.check), 0) << seal.list;
        EXPECT_FALSE(fs::exists(mZonstory / "a.xmp"));
        const std::string inside = support::ReadFile(mZonstory / "a.wav");
        for (const std::vector<std::string>& refused : {std::vector<std::string>{"write", "--scene", "1"}, {"clear"}}) {
            EXPECT_THAT(Run(refused).err, HasSubstr("; '--place inside' changes it all the same"));
        }
        EXPECT_EQ(Run({"write", "--scene", "#4"}).err, "0 written, 1 unchanged, 0 failed\n");
        EXPECT_TRUE(support::ReadFile(mZonstory / "a.wav") == inside);
        EXPECT_EQ(Run({"clear", "--place", "inside"}).exitCode, 0);
        EXPECT_TRUE(IsUntouched());
        fs::remove(mZonstory / seal.list);
    }
}

TEST_F(Custody, WhatASidecarSaysIsReadChangedAndClearedThere) {
    Run({"write", "--scene", "1", "--sidecar"});
    EXPECT_THAT(Shown(), HasSubstr("a.wav, sidecar a.xmp\n  scene        1\n"));
    Run({"write", "--scene", "12A/B"});
    EXPECT_EQ(Sidecar(), "12A/B");
    EXPECT_THAT(Run({"coverage", "s.skrx"}).out, HasSubstr("a.wav"));
    EXPECT_EQ(Run({"clear"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(mZonstory / "a.xmp"));
    EXPECT_TRUE(IsUntouched());
}

TEST_F(Custody, TwoPlacesComeToSayTheSame) {
    Run({"write", "--scene", "1"});
    SaySidecar("");
    EXPECT_THAT(Shown(), HasSubstr("a.wav\n  scene        1\n")); // a sidecar without a scene does not count
    EXPECT_EQ(Run({"write", "--scene", "#4", "--sidecar"}).exitCode, 1);
    SaySidecar(" xmpDM:scene=\"7\"");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"show"},
                                                  {"coverage", "s.skrx"},
                                                  {"match", "s.skrx"},
                                                  {"diff", "s.skrx", "s.skrx"}}) {
        EXPECT_THAT(Run(words).err, HasSubstr("a.wav: says scene 1 inside and scene 7 in its sidecar\n"));
    }
    EXPECT_THAT(Run({"write", "--scene", "#4"}).err, HasSubstr("what it said inside is taken out"));
    EXPECT_EQ(Inside() + '|' + Sidecar(), "|004");
    EXPECT_EQ(Run({"show"}).err, "");
    EXPECT_TRUE(IsUntouched());
    EXPECT_EQ(Run({"clear"}).exitCode, 0);
    EXPECT_EQ(ExifToolValue(mZonstory / "a.xmp", "XMP-dc:Source"), "lab");
    EXPECT_EQ(Sidecar(), "");
}

// Another clip's sidecar is not taken for this one's.
TEST_F(Custody, ANeighboursSidecarIsItsOwn) {
    fs::rename(support::MakeClip(mZonstory.Folder(), support::SampleNamed("Mkv")), mZonstory / "a.mkv");
    EXPECT_EQ(mZonstory.Run({"write", "s.skrx", "--scene", "1", "a.mkv"}).exitCode, 0);
    EXPECT_THAT(Shown(), HasSubstr("no script data"));
    Run({"write", "--scene", "#4"});
    EXPECT_EQ(Inside() + '|' + Sidecar(), "004|1");
}

struct SlateCase {
    const char* inside;
    std::vector<std::string> words;
    int exitCode;
    const char* after;
    const char* note;
    const char* cleared; ///< What `clear` leaves.
};

TEST_F(Custody, ASlateStaysAndAnotherSceneIsReplacedOnRequest) {
    const SlateCase cases[] = {
        {"1B", {"write", "--scene", "1"}, 0, "1B", "keeps the slate 1B, which names scene 1", "1B"},
        {"Sc 1", {"write", "--scene", "1"}, 0, "Sc 1", "keeps the slate", "Sc 1"},
        {"7", {"write", "--scene", "1"}, 0, "1", "said scene 7 before", ""},
        {"7", {"write", "--match", "--log", "log.csv"}, 4, "7", "says scene 7 already", "7"},
        {"7", {"write", "--match", "--log", "log.csv", "--replace"}, 0, "1", "said scene 7 before", ""},
        {"1C", {"write", "--match", "--log", "log.csv"}, 0, "1C", "keeps the slate", "1C"},
        {"7", {"write", "--scene", "1", "--only-empty"}, 0, "7", "says scene 7 already", "7"},
    };
    support::WriteFile(mZonstory / "log.csv", "clip,scene\na.wav,1\n");
    for (const SlateCase& c : cases) {
        SayInside(c.inside);
        const ZonstoryResult result = Run(c.words);
        EXPECT_EQ(result.exitCode, c.exitCode) << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.note));
        EXPECT_EQ(Inside(), c.after) << c.note;
        EXPECT_EQ(Run({"clear"}).exitCode, 0);
        EXPECT_EQ(Inside(), c.cleared) << c.note;
    }
}

TEST_F(Custody, AMapSkipsAndClears) {
    support::WriteFile(mZonstory / "b.wav", mBytes);
    Run({"write", "--scene", "1"});
    support::WriteFile(mZonstory / "map.csv", "clip,scene\na.wav,Clear\nb.wav,SKIP\n");
    const ZonstoryResult result = mZonstory.Run({"write", "s.skrx", "--map", "map.csv"});
    EXPECT_EQ(result.out, "a.wav: cleared\nb.wav: skipped\n");
    EXPECT_EQ(result.err, "0 written, 0 unchanged, 0 failed, 1 cleared, 1 skipped\n");
    EXPECT_TRUE(IsUntouched());
}

TEST_F(Custody, AStandingChoiceCountsLessThanTheCommandLine) {
    struct {
        const char* file;
        const char* variable;
        std::vector<std::string> words;
        const char* place;
    } const cases[] = {{"place = \"sidecar\"\n", "", {}, "sidecar"},
                       {"[write]\nplace = sidecar\n[show]\nplace = inside\n", "", {}, "sidecar"},
                       {"place = sidecar\n", "inside", {}, "inside"},
                       {"place = sidecar\n", "sidecar", {"--place", "inside"}, "inside"},
                       {"place = inside\n", "inside", {"--sidecar"}, "sidecar"}};
    for (const auto& c : cases) {
        support::WriteFile(mZonstory / "zonstory.toml", c.file);
        ::setenv("ZONSTORY_PLACE", c.variable, 1);
        std::vector<std::string> words = {"write", "--scene", "1"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        EXPECT_EQ(Run(words).exitCode, 0);
        EXPECT_EQ(IsUntouched() ? "sidecar" : "inside", std::string(c.place)) << c.file;
        EXPECT_EQ(fs::remove(mZonstory / "a.xmp"), IsUntouched());
        support::WriteFile(mZonstory / "a.wav", mBytes);
    }
    ::unsetenv("ZONSTORY_PLACE");
    for (const auto& [bytes, error] : {std::pair{"\nplaces = x\n", ":2: 'places' is nothing"},
                                       {"place = x", ":1: --place: x"},
                                       {"[scenes]\nplace = inside\n", ":2: 'scenes.place'"}}) {
        support::WriteFile(mZonstory / "own.toml", bytes);
        const ZonstoryResult result = Run({"show", "--config", "own.toml"});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err, HasSubstr("own.toml"s + error));
    }
}

} // namespace
