#include <chrono>
#include <map>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleStory.h"
#include "Zonstory.h"
#include "host/clip/ClipSamples.h"

// Runs taken back: to the very bytes, or not at all.
namespace {

namespace fs = std::filesystem;
using support::Zonstory;
using support::ZonstoryResult;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;

using Files = std::map<std::string, std::string>;

Files FilesIn(const fs::path& folder) {
    Files files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        files[entry.path().filename()] = support::ReadFile(entry.path());
    }
    return files;
}

class UndoBase {
protected:
    UndoBase() {
        support::WriteFile(mZonstory / "s.skrx", support::kSampleStory);
        fs::create_directory(mZonstory / "in");
    }

    std::string Make(const support::ClipSample& sample) const {
        return "in/" + support::MakeClip(mZonstory / "in", sample).filename().native();
    }

    ZonstoryResult Write(const std::string& scene, std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"write", "s.skrx", "in", "--scene", scene});
        return mZonstory.Run(more);
    }

    Files InFolder() const { return FilesIn(mZonstory / "in"); }

    Zonstory mZonstory;
};

class UndoOfSample : public UndoBase, public ::testing::TestWithParam<support::ClipSample> {};

TEST_P(UndoOfSample, GivesEveryByteBackRunByRun) {
    Make(GetParam());
    std::vector<Files> states = {InFolder()};
    for (const std::vector<std::string>& run : std::vector<std::vector<std::string>>{
             {"write", "s.skrx", "in", "--scene", "1", "--hash", "md5"},
             {"write", "s.skrx", "in", "--scene", "12A/B", "--hash", "sha256", "--no-verify"},
             {"clear", "in"},
             {"write", "s.skrx", "in", "--scene", "1", "--sidecar"}}) {
        ASSERT_EQ(mZonstory.Run(run).exitCode, 0);
        states.push_back(InFolder());
    }
    while (states.size() > 1) {
        EXPECT_EQ(mZonstory.Run({"undo", "--dry-run"}).exitCode, 0);
        EXPECT_TRUE(InFolder() == states.back());
        states.pop_back();
        const ZonstoryResult undone = mZonstory.Run({"undo"});
        EXPECT_THAT(undone.err, EndsWith("\n1 restored, 0 unchanged, 0 failed\n"));
        EXPECT_TRUE(InFolder() == states.back()) << states.size();
    }
    EXPECT_THAT(mZonstory.Run({"undo"}).err, EndsWith(": has no run that could be undone\n"));
}

INSTANTIATE_TEST_SUITE_P(All, UndoOfSample, testing::ValuesIn(support::ClipSamples()),
                         [](const auto& sample) { return sample.param.name; });

class Undo : public UndoBase, public ::testing::Test {
protected:
    const std::string mWav = Make(support::SampleNamed("Wav"));
    const std::string mMkv = Make(support::SampleNamed("Mkv"));
    const Files mBefore = InFolder();
};

TEST_F(Undo, LeavesAloneWhatWasChangedSinceAndCanBeRepeated) {
    const std::string avi = Make(support::SampleNamed("Avi"));
    const Files before = InFolder();
    Write("1");
    const Files written = InFolder();
    support::WriteFile(mZonstory / mWav, written.at("clip.wav") + '\0');
    fs::rename(mZonstory / avi, mZonstory / "moved.avi");
    const ZonstoryResult first = mZonstory.Run({"undo"});
    EXPECT_EQ(first.exitCode, 1);
    EXPECT_THAT(first.err, AllOf(HasSubstr("/clip.wav: was changed since, "), HasSubstr("/clip.avi: is not there any"),
                                 EndsWith("\n1 restored, 0 unchanged, 2 failed\n")));
    EXPECT_FALSE(fs::exists(mZonstory / "in/clip.xmp"));
    EXPECT_THAT(mZonstory.Run({"history"}).out, HasSubstr("partly"));

    std::string other = written.at("clip.wav");
    other[other.size() / 2] ^= 1; // of the same size, in the middle of the sound
    support::WriteFile(mZonstory / mWav, other);
    EXPECT_EQ(mZonstory.Run({"undo", "--dry-run"}).exitCode, 1);
    EXPECT_THAT(mZonstory.Run({"undo"}).err, HasSubstr("/clip.wav: was changed since, "));
    EXPECT_TRUE(support::ReadFile(mZonstory / mWav) == other);

    support::WriteFile(mZonstory / mWav, before.at("clip.wav")); // as from a backup
    fs::rename(mZonstory / "moved.avi", mZonstory / avi);
    EXPECT_THAT(mZonstory.Run({"undo"}).err, EndsWith("\n1 restored, 1 unchanged, 0 failed\n"));
    EXPECT_TRUE(InFolder() == before);
    EXPECT_THAT(mZonstory.Run({"undo"}).err, EndsWith(": has no run that could be undone\n"));
}

TEST_F(Undo, WorksOnAnotherMachineByAJournalBesideTheFootage) {
    const std::string journal = "in/j.jsonl";
    Write("1", {"--journal", journal});
    Write("12A/B", {"--journal", journal});
    const std::string lines = support::ReadFile(mZonstory / journal);
    support::WriteFile(mZonstory / journal, lines + "{\"journal\":1,\"record\":\"cha"); // of a run that was killed
    Write("#4", {"--journal", journal});
    EXPECT_THAT(mZonstory.Run({"undo"}).err, EndsWith(": has no run that could be undone\n")); // not its journal
    fs::rename(mZonstory / "in", mZonstory / "mnt");
    const auto torn = std::count(lines.begin(), lines.end(), '\n') + 1;
    for (int run = 0; run < 3; ++run) {
        const ZonstoryResult undone = mZonstory.Run({"undo", "mnt/j.jsonl"});
        EXPECT_THAT(undone.err, AllOf(HasSubstr("mnt/j.jsonl:" + std::to_string(torn) + ": is no whole record"),
                                      EndsWith("\n2 restored, 0 unchanged, 0 failed\n")));
    }
    Files now = FilesIn(mZonstory / "mnt");
    now.erase("j.jsonl");
    EXPECT_TRUE(now == mBefore);
}

TEST_F(Undo, BelievesAStrangersJournalOnlyBeneathItsFolder) {
    fs::create_directory(mZonstory / "journals");
    Write("1", {"--journal", "journals"});
    const Files written = InFolder();
    const ZonstoryResult refused = mZonstory.Run({"undo", "journals"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("does not lie beneath the folder of the journal"));
    EXPECT_TRUE(InFolder() == written);
    const fs::path file = fs::directory_iterator(mZonstory / "journals")->path();
    EXPECT_EQ(mZonstory.Run({"undo", "journals", "--outside"}).exitCode, 0);
    EXPECT_TRUE(InFolder() == mBefore);
}

// What a journal may say of a clip, and what comes of it.
TEST_F(Undo, NeverFollowsARecordThatContradictsItself) {
    fs::remove(mZonstory / mMkv);
    Write("1", {"--journal", "in/j.jsonl"});
    const Files written = InFolder();
    std::istringstream journal(written.at("j.jsonl"));
    std::string lines[3]; // the run, its change, that it was made
    for (std::string& line : lines) {
        std::getline(journal, line);
    }
    const auto change = nlohmann::json::parse(lines[1]);
    const nlohmann::json middle = {{"offset", written.at("clip.wav").size() / 2}, {"length", 1}, {"was", "AA=="}};
    const std::pair<const char*, nlohmann::json> lies[] = {
        {"sizeBefore", 17},
        {"checksumBefore", change["checksumAfter"]},
        {"checksumBefore", "md5:00"},
        {"edits", nlohmann::json::array({middle})},
        {"edits", {{{"offset", 1ULL << 63}, {"length", 1ULL << 63}, {"was", ""}}}},
        {"file", "../in/../../etc/passwd"},
        {"file", "j.jsonl"},
    };
    for (const auto& [member, value] : lies) {
        nlohmann::json lie = change;
        lie[member] = value;
        support::WriteFile(mZonstory / "in/j.jsonl", lie.dump() + '\n' + lines[2] + '\n');
        const Files before = InFolder();
        const ZonstoryResult undone = mZonstory.Run({"undo", "in/j.jsonl", "--no-lock"});
        EXPECT_THAT(undone.out, "") << member << value;
        Files after = InFolder();
        EXPECT_TRUE(after.at("clip.wav") == before.at("clip.wav")) << member << value << undone.err;
        EXPECT_EQ(after.size(), before.size()) << member << value;
    }
}

TEST_F(Undo, ARunThatWasKilledIsTakenBackAsFarAsItCame) {
    for (int number = 100; number < 160; ++number) {
        fs::copy_file(mZonstory / mWav, mZonstory / ("in/" + std::to_string(number) + ".wav"));
    }
    const Files before = InFolder();
    support::RunningProgram program = mZonstory.Start({"write", "s.skrx", "in", "--scene", "1", "--report", "r.json"});
    while (fs::file_size(mZonstory / "in/105.wav") == before.at("105.wav").size() && !program.HasEnded()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    program.Send(SIGKILL);
    EXPECT_EQ(mZonstory.Wait(std::move(program)).signal, SIGKILL);
    const auto report = nlohmann::json::parse(support::ReadFile(mZonstory / "r.json"))["clips"];
    EXPECT_GT(report.size(), 0U);
    mZonstory.Run({"recover", "in"});
    EXPECT_FALSE(InFolder() == before);
    const ZonstoryResult undone = mZonstory.Run({"undo"});
    EXPECT_EQ(undone.exitCode, 0) << undone.err;
    EXPECT_TRUE(InFolder() == before);
}

TEST_F(Undo, HistoryTellsRunsAndTheValuesOfAClip) {
    Write("1");
    Write("1"); // changes nothing, and is no run
    Write("12A/B");
    mZonstory.Run({"undo"});
    const auto runs = nlohmann::json::parse(mZonstory.Run({"history", "--format", "json"}).out)["runs"];
    std::string told;
    for (const auto& run : runs) {
        told += run["verb"].get<std::string>() + ' ' + run["story"].get<std::string>() + ' ' + run["changes"].dump() +
                ' ' + run["undone"].get<std::string>() + '\n';
    }
    EXPECT_EQ(told, "write s.skrx 2 no\nwrite s.skrx 2 yes\nundo  2 no\n");
    EXPECT_THAT(mZonstory.Run({"history", "--clip", mMkv}).out,
                AllOf(HasSubstr("write, s.skrx, scene 12A/B, sidecar "),
                      HasSubstr("\n  xmpDM:scene: \"1\" -> \"12A/B\"\n"),
                      HasSubstr("\n  xmpScript:dialogSequence[2]/xmpScript:character: \"小明\" -> none\n")));
}

TEST_F(Undo, WithoutAJournalNoClipIsTouched) {
    for (const std::string journal : {"/dev/full", "in/none/j.jsonl", "s.skrx/j.jsonl"}) {
        const ZonstoryResult result = Write("1", {"--journal", journal});
        EXPECT_EQ(result.exitCode, 6) << journal;
        EXPECT_THAT(result.err, testing::MatchesRegex(journal + ": [^\n]*\n"));
        EXPECT_TRUE(InFolder() == mBefore);
    }
    EXPECT_EQ(Write("1", {"--report", "none/r.csv"}).exitCode, 1);
    EXPECT_TRUE(InFolder() == mBefore);
    EXPECT_EQ(mZonstory.Run({"undo", "none.jsonl"}).exitCode, 6);
    EXPECT_EQ(mZonstory.Run({"undo", "--run", "xyz"}).exitCode, 2);
}

} // namespace
