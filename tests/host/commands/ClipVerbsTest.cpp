#include <chrono>
#include <thread>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleStory.h"
#include "Zonstory.h"
#include "host/clip/ClipSamples.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using support::ExifToolValue;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class ClipVerbs : public ::testing::Test {
protected:
    ClipVerbs() { support::WriteFile(mZonstory / "s.skrx", support::kSampleStory); }

    std::string Make(const char* sample) const {
        return support::MakeClip(mZonstory.Folder(), support::SampleNamed(sample)).filename();
    }

    ZonstoryResult Write(const std::string& scene, const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {"write", "s.skrx", "--scene", scene};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return mZonstory.Run(arguments);
    }

    json Show(const std::string& clip) const {
        return json::parse(mZonstory.Run({"show", "--format", "json", clip}).out)["clips"][0];
    }

    // What `show` tells of a clip, fields parted by bars.
    std::string Said(const std::string& clip) const {
        const json shown = Show(clip);
        std::string said = shown["target"];
        for (const char* const field : {"scene", "setting", "location", "timeOfDay", "action"}) {
            said += '|' + shown[field].get<std::string>();
        }
        for (const json& speech : shown["dialogue"]) {
            said += '|' + speech["character"].get<std::string>() + ": " + speech["dialogue"].get<std::string>();
        }
        return said;
    }

    std::string Sidecar() const { return fs::path(mMkv).replace_extension(".xmp"); }

    Zonstory mZonstory;
    const std::string mMov = Make("MovIndexAtEnd"); // carries its metadata inside
    const std::string mMkv = Make("Mkv");           // has a sidecar
};

TEST_F(ClipVerbs, WriteShowAndClear) {
    const std::string before = mZonstory.Run({"show", mMov, mMkv}).out;
    EXPECT_EQ(before, mMov + "\n  no script data\n" + mMkv + ", sidecar " + Sidecar() + "\n  no script data\n");

    const ZonstoryResult written = Write("1", {mMov, mMkv, "--paths"});
    EXPECT_EQ(written.exitCode, 0);
    EXPECT_THAT(written.err, AllOf(HasSubstr(mMkv + ": not written inside, since "),
                                   EndsWith("\n2 written, 0 unchanged, 0 failed\n")));
    const std::string paths = "  xmpScript:sceneSetting\n  xmpDM:shotLocation\n  xmpScript:sceneTimeOfDay\n"
                              "  xmpScript:action\n  xmpScript:dialogSequence\n"
                              "  xmpScript:dialogSequence[1]/xmpScript:character\n"
                              "  xmpScript:dialogSequence[1]/xmpScript:dialog\n"
                              "  xmpScript:dialogSequence[2]/xmpScript:character\n"
                              "  xmpScript:dialogSequence[2]/xmpScript:dialog\n  xmpDM:scene\n  xmpMM:Ingredients\n";
    EXPECT_EQ(written.out,
              mMov + ": written, scene 1\n" + paths + mMkv + ": written, scene 1, sidecar " + Sidecar() + "\n" + paths);
    for (const std::string& file : {mMov, Sidecar()}) {
        EXPECT_EQ(ExifToolValue(mZonstory / file, "XMP-xmpDM:Scene"), "1");
        EXPECT_EQ(ExifToolValue(mZonstory / file, "XMP-xmpDM:ShotLocation"), "KÜCHE");
        EXPECT_EQ(ExifToolValue(mZonstory / file, "XMP-xmpDM:ShotName"), "");
    }
    EXPECT_EQ(Said(mMkv), "sidecar|1|INT|KÜCHE|NIGHT|Rain on glass.|ANN (V.O.): Hi there.|小明: 你好");

    const auto bytes = support::ReadFile(mZonstory / mMov);
    EXPECT_EQ(Write("1", {mMov, mMkv}).err, "0 written, 2 unchanged, 0 failed\n");
    EXPECT_EQ(support::ReadFile(mZonstory / mMov), bytes);

    const ZonstoryResult cleared = mZonstory.Run({"clear", mMov, mMkv});
    EXPECT_EQ(cleared.err, "2 cleared, 0 unchanged, 0 failed\n");
    EXPECT_EQ(mZonstory.Run({"show", mMov, mMkv}).out, before);
    EXPECT_EQ(mZonstory.Run({"clear", mMov, mMkv}).err, "0 cleared, 2 unchanged, 0 failed\n");
}

TEST_F(ClipVerbs, AnotherSceneLeavesNothingOfTheFirst) {
    Write("1", {mMov});
    EXPECT_THAT(Write("12A/B", {mMov, "--paths"}).out, HasSubstr("  xmpScript:sceneTimeOfDay\n"));
    EXPECT_EQ(Said(mMov), "inside|12A/B|EXT|PIER||");

    EXPECT_THAT(Write("#4", {mMov, "--paths"}).out, HasSubstr("  xmpDM:shotLocation\n"));
    EXPECT_EQ(Said(mMov), "inside|004||||Nothing.|ANN: No. Never.|ANN (O.S.): Yes.");
    EXPECT_EQ(Write("#4", {mMov}).err, "0 written, 1 unchanged, 0 failed\n");
}

TEST_F(ClipVerbs, ADryRunChangesNothing) {
    const auto names = support::NamesIn(mZonstory.Folder());
    const auto bytes = support::ReadFile(mZonstory / mMov);
    const ZonstoryResult result = Write("1", {mMov, mMkv, "--dry-run"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, mMov + ": would be written, scene 1\n" + mMkv + ": would be written, scene 1, sidecar " +
                              Sidecar() + "\n");
    EXPECT_THAT(result.err, EndsWith("\n2 would be written, 0 unchanged, 0 failed\n"));
    EXPECT_EQ(support::NamesIn(mZonstory.Folder()), names);
    EXPECT_EQ(support::ReadFile(mZonstory / mMov), bytes);
}

TEST_F(ClipVerbs, OneFailureDoesNotStopTheOthersAndIsReported) {
    support::WriteFile(mZonstory / "a.mov", "this is no clip");
    fs::copy_file(mZonstory / mMkv, mZonstory / "b.mkv");
    fs::copy_file(mZonstory / mMkv, mZonstory / "b.ts");
    for (const char* const report : {"r.json", "r.csv"}) {
        mZonstory.Run({"clear", mMov});
        const ZonstoryResult result =
            Write("1", {"none.mov", mMov, "b.mkv", "b.ts", "--report", report, "--jobs", "3", "--quiet"});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out, mMov + ": written, scene 1\n");
        EXPECT_EQ(result.err, "none.mov: No such file or directory\n"
                              "b.mkv: would share the sidecar b.xmp with b.ts\n"
                              "b.ts: would share the sidecar b.xmp with b.mkv\n");
    }
    const json clips = json::parse(support::ReadFile(mZonstory / "r.json"))["clips"];
    ASSERT_EQ(clips.size(), 4U);
    EXPECT_EQ(clips[0]["result"], "failed");
    EXPECT_EQ(clips[1]["result"], "written");
    EXPECT_EQ(clips[1]["changedPaths"].size(), 11U);
    EXPECT_THAT(support::ReadFile(mZonstory / "r.csv"),
                AllOf(HasSubstr("clip,scene,target,file,result,reason,notes,changed_paths\r\n"
                                "none.mov,1,,,failed,No such file or directory,"),
                      HasSubstr("\r\n" + mMov + ",1,inside," + (mZonstory / mMov).string() + ",written,,,xmpScript:")));
}

TEST_F(ClipVerbs, AMapNamesTheScenes) {
    fs::create_directory(mZonstory / "day1");
    fs::rename(mZonstory / mMov, mZonstory / "day1" / mMov);
    support::WriteFile(mZonstory / "day1/map.csv", "\xEF\xBB\xBFtake;Scene; CLIP\r\n1; 12A/B ;" + mMov +
                                                       "\r\n2;;x.mov\r\n3;#4;" + mMkv + "\r\n4;#4;./" + mMkv + "\r\n");
    const ZonstoryResult result = mZonstory.Run({"write", "s.skrx", "--map", "day1/map.csv"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "day1/" + mMov + ": written, scene 12A/B\n" + mMkv + ": written, scene 004, sidecar " + Sidecar() + "\n");
    EXPECT_THAT(result.err, AllOf(StartsWith("day1/map.csv: rows without a scene, passed over: 1\n"),
                                  EndsWith("\n2 written, 0 unchanged, 0 failed\n")));
}

TEST_F(ClipVerbs, NamesAreTakenAsTheyAre) {
    const std::string names[] = {
        "-x.mov",
        "[a,b]/[c]",
        "f\n\xFF/two\nlines.mov",
        "two\nlines.mov",
        "caf\xE9.mov",
        "write",
        "#4.mov",
        "a b'\"`$z`.mov",
        "-e/clip." + std::string(200, 'e'),
        mZonstory / "absolute.mov",
        std::string(255, 'f') + '/' + std::string(251, 'c') + ".mov", // which leaves no room for a name made of it
    };
    for (const std::string& name : names) {
        fs::create_directories((mZonstory / name).parent_path());
        fs::copy_file(mZonstory / mMov, mZonstory / name);
        const ZonstoryResult result = mZonstory.Run({"write", "s.skrx", "--scene", "1", "--", name});
        EXPECT_EQ(result.exitCode, 0) << name << result.err;
        EXPECT_EQ(ExifToolValue(mZonstory / name, "XMP-xmpDM:Scene"), "1") << name;
        EXPECT_FALSE(fs::exists((mZonstory / name).parent_path() / ".zonstory-work")) << name;
    }
    const ZonstoryResult text = mZonstory.Run({"show", "two\nlines.mov", "caf\xE9.mov"});
    EXPECT_THAT(text.out, AllOf(HasSubstr("two\\nlines.mov\n"), HasSubstr("caf\\xe9.mov\n")));
    EXPECT_EQ(Show("caf\xE9.mov")["clip"], "caf\\xe9.mov");
    support::WriteFile(mZonstory / "map.csv", "clip,scene\ncaf\xE9.mov,1\n");
    EXPECT_EQ(mZonstory.Run({"write", "s.skrx", "--map", "map.csv"}).err, "0 written, 1 unchanged, 0 failed\n");
    EXPECT_THAT(mZonstory.Run({"show", "--format", "csv", "caf\xE9.mov"}).out, HasSubstr("caf\xE9.mov,inside,"));
}

// Waits for the first clip to be replaced, so that the run is known to be in the middle of its work.
TEST_F(ClipVerbs, SignalsStopBetweenClips) {
    constexpr int kClips = 100;
    const auto size = fs::file_size(mZonstory / mMov);
    for (const int signal : {SIGINT, SIGHUP, SIGQUIT}) {
        fs::remove_all(mZonstory / "in");
        fs::create_directories(mZonstory / "in/card");
        for (int number = 0; number < kClips; ++number) {
            fs::copy_file(mZonstory / mMov, mZonstory / ("in/card/" + std::to_string(1000 + number) + ".mov"));
        }
        support::RunningProgram program =
            mZonstory.Start({"write", "s.skrx", "--scene", "1", "-r", "in", "--report", "r.json"});
        while (fs::file_size(mZonstory / "in/card/1000.mov") == size && !program.HasEnded()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        program.Send(signal);
        const ZonstoryResult result = mZonstory.Wait(std::move(program));
        EXPECT_EQ(result.signal, signal);
        EXPECT_THAT(result.err, AllOf(HasSubstr(" written, 0 unchanged, 0 failed, "), HasSubstr(" not done\n")));
        EXPECT_EQ(support::NamesIn(mZonstory / "in/card").size(), static_cast<std::size_t>(kClips));
        const json clips = json::parse(support::ReadFile(mZonstory / "r.json"))["clips"];
        EXPECT_EQ(clips.size(), static_cast<std::size_t>(kClips));
        EXPECT_EQ(clips[0]["result"], "written");
        EXPECT_EQ(clips[kClips - 1]["result"], "not done");
    }
    EXPECT_EQ(Write("1", {"in/card", "-j", "2"}).exitCode, 0);
    EXPECT_EQ(Write("1", {"in"}).err, "0 written, 0 unchanged, 0 failed\n");
}

TEST_F(ClipVerbs, RecoverRemovesWhatKilledRunsLeft) {
    const fs::path left = mZonstory / "day1/.zonstory-work/0123456789abcdef.00.mov";
    support::WriteFile(left, "12345");
    const std::string name = fs::relative(left, mZonstory.Folder()).native();
    EXPECT_EQ(mZonstory.Run({"recover", "-n", "day1"}).out, name + ": would be removed, 5 bytes\n");
    EXPECT_TRUE(fs::exists(left));
    const ZonstoryResult result = mZonstory.Run({"recover", "."});
    EXPECT_EQ(result.out, "./" + name + ": removed, 5 bytes\n");
    EXPECT_EQ(result.err, "1 removed, 0 in work, 0 failed\n");
    EXPECT_THAT(support::NamesIn(mZonstory / "day1"), testing::ElementsAre());
    EXPECT_EQ(mZonstory.Run({"recover", "none"}).exitCode, 1);
}

TEST_F(ClipVerbs, QuietLeavesOutNotesButNotWhatWasLost) {
    fs::create_hard_link(mZonstory / mMov, mZonstory / "other");
    const std::string old = support::ReadFile(mZonstory / mMov);
    EXPECT_THAT(mZonstory.Run({"write", "s.skrx", "--scene", "1", mMov, "--quiet"}).err,
                testing::MatchesRegex("[^\n]*1 other hard link[^\n]*\n"));
    EXPECT_TRUE(support::ReadFile(mZonstory / "other") == old);
}

} // namespace
