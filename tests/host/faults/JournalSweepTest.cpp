#include <cerrno>
#include <fstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "host/clip/ClipSamples.h"
#include "host/commands/SampleStory.h"
#include "support/RunProgram.h"
#include "support/TemporaryFolder.h"

// Lets every call by which a run and its undo change files fail, one after the other, and holds what the journal tells
// against what became of the clip.
namespace {

namespace fs = std::filesystem;
using support::ProgramResult;

constexpr int kFaults[] = {0, ENOSPC, EIO}; // the first kills

class JournalSweep : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        support::WriteFile(mStory, support::kSampleStory);
        ASSERT_EQ(Run("write", "FAULT_LOG=" + (mAside / "write").native()).exitCode, 0);
        mNew = Bytes();
        ASSERT_EQ(Run("undo", "FAULT_LOG=" + (mAside / "undo").native()).exitCode, 0);
        ASSERT_TRUE(Bytes() == mOld && mOld != mNew);
    }

    ProgramResult Run(const std::string& verb, const std::string& fault = "FAULT_AT=0",
                      const std::string& error = "FAULT_ERROR=0") const {
        std::vector<std::string> words = {ZONSTORY, verb, mJournal.native()};
        if (verb == "write") {
            words = {ZONSTORY, verb, mStory.native(), mClip.native(), "--scene", "1", "--journal", mJournal.native()};
        }
        return support::RunProgram(words, {"LD_PRELOAD=" FAULT_SHIM, "XDG_STATE_HOME=" + mAside.Path().native(), fault,
                                           error, "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"});
    }

    // Of the file that the metadata goes into; none where it is not there.
    std::string Bytes() const { return fs::exists(mTarget) ? support::ReadFile(mTarget) : std::string(); }

    void Reset() const {
        fs::remove(mJournal);
        mOld.empty() ? static_cast<void>(fs::remove(mTarget)) : support::WriteFile(mTarget, mOld);
    }

    // What the journal says of the one run of `write`: nothing where it is no run that changed anything.
    std::string IsUndone() const {
        const ProgramResult told =
            support::RunProgram({ZONSTORY, "history", mJournal.native(), "--format", "csv", "--quiet"});
        const std::size_t run = told.output.find(",write,");
        const std::string line =
            run == std::string::npos ? "" : told.output.substr(run, told.output.find("\r\n", run) - run);
        return line.substr(line.rfind(',') == std::string::npos ? 0 : line.find(",1,") + 3);
    }

    void ExpectOldOrNew(const ProgramResult& result, const std::string& whenDone) const {
        const std::string now = Bytes();
        EXPECT_TRUE(now == mOld || now == mNew) << "damaged";
        EXPECT_TRUE(result.exitCode != 0 || now == whenDone) << "said to be done";
    }

    void ExpectUndone() const {
        const ProgramResult undone = Run("undo");
        EXPECT_TRUE(undone.exitCode == 0 || !fs::exists(mJournal)) << undone.output;
        EXPECT_TRUE(Bytes() == mOld) << undone.output;
    }

    void TryWrite(const std::string& fault, const std::string& error) const {
        Reset();
        ExpectOldOrNew(Run("write", fault, error), mNew);
        EXPECT_THAT(IsUndone(), testing::StartsWith(Bytes() == mNew ? "no" : ""));
        EXPECT_TRUE(Bytes() == mNew || IsUndone().empty());
        ExpectUndone();
    }

    void TryUndo(const std::string& fault, const std::string& error) const {
        Reset();
        ASSERT_EQ(Run("write").exitCode, 0);
        ExpectOldOrNew(Run("undo", fault, error), mOld);
        ExpectUndone();
        EXPECT_THAT(IsUndone(), testing::StartsWith("yes"));
    }

    template <typename Try>
    void Sweep(const char* verb, Try tryFault) const {
        std::ifstream log(mAside / verb);
        std::size_t position = 0;
        std::size_t tried = 0;
        bool isAfterRename = false;
        for (std::string call; std::getline(log, call) && !HasFailure();) {
            const bool isRename = call.starts_with("rename");
            ++position;
            for (std::size_t fault = 0; fault < std::size(kFaults); ++fault) {
                const bool isInShare = (position * std::size(kFaults) + fault) % FAULT_STRIDE == 0;
                if (isInShare || (fault == 0 && (isRename || isAfterRename))) {
                    SCOPED_TRACE(call + ", call " + std::to_string(position) + ", fault " + std::to_string(fault));
                    tryFault("FAULT_AT=" + std::to_string(position), "FAULT_ERROR=" + std::to_string(kFaults[fault]));
                    ++tried;
                }
            }
            isAfterRename = isRename;
        }
        EXPECT_GT(position, 20U);
        std::printf("%s: %zu calls, %zu faults tried\n", verb, position, tried);
    }

    support::TemporaryFolder mFolder;
    support::TemporaryFolder mAside;
    const fs::path mStory = mAside / "s.skrx";
    const fs::path mJournal = mFolder / "j.jsonl";
    const fs::path mClip = support::MakeClip(mFolder.Path(), support::SampleNamed(GetParam()));
    const fs::path mTarget =
        support::SampleNamed(GetParam()).isInside ? mClip : fs::path(mClip).replace_extension(".xmp");
    const std::string mOld = Bytes();
    std::string mNew;
};

TEST_P(JournalSweep, NoChangeIsWithoutItsRecordAndNoRecordLies) {
    Sweep("write", [this](const std::string& fault, const std::string& error) { TryWrite(fault, error); });
}

TEST_P(JournalSweep, AnUndoThatFailsCanBeRepeated) {
    Sweep("undo", [this](const std::string& fault, const std::string& error) { TryUndo(fault, error); });
}

INSTANTIATE_TEST_SUITE_P(FAULT_SHARE, JournalSweep, testing::Values("MovIndexInFront", "Mkv"),
                         [](const auto& sample) { return std::string(sample.param); });

} // namespace
