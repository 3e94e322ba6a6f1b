#include <cerrno>

#include <gmock/gmock.h>

#include "host/clip/ClipSamples.h"
#include "host/faults/Faults.h"
#include "support/RunProgram.h"
#include "support/TemporaryFolder.h"

// Lets every call by which a write changes files fail, one after the other, and looks at what is left.
namespace {

namespace fs = std::filesystem;
using support::ClipSample;
using Call = support::FileCall;
using support::ProgramResult;

constexpr int kKilled = 0;
constexpr int kFaults[] = {kKilled, ENOSPC, EIO};

class FaultSweep : public testing::TestWithParam<ClipSample> {
protected:
    void SetUp() override {
        mOriginal = support::ReadFile(mClip);
        RunDriver("first");
        mOld = support::ReadFile(mTarget);
        ASSERT_EQ(RunDriver("second", {"FAULT_LOG=" + Log().native()}).exitCode, 0);
        mNew = support::ReadFile(mTarget);
        mDigest = support::DecodedDigest(mClip);
        ASSERT_THAT(mDigest, testing::StartsWith("MD5="));
        ASSERT_EQ(support::ExifToolValue(mTarget, "XMP-dc:Source"), Value("second"));
        mCalls = support::CallsIn(Log());
        ASSERT_GT(mCalls.size(), 8U);
    }

    // Longer than what the toolkit leaves room for, so that the file has to grow each time.
    static std::string Value(const std::string& name) { return name + std::string(name == "second" ? 6000 : 10, 'x'); }

    ProgramResult RunDriver(const std::string& value, const std::vector<std::string>& settings = {}) const {
        return support::RunProgram({CLIP_DRIVER, mClip.native(), "source", Value(value)}, support::WithShim(settings));
    }

    void PutBack() const { support::WriteFile(mTarget, mOld); }

    void TryFault(std::size_t position, int error) {
        const Call& call = mCalls[position];
        SCOPED_TRACE(call.name + call.subject + ", call " + std::to_string(position + 1) + ", error " +
                     std::to_string(error));
        PutBack();
        const ProgramResult result =
            RunDriver("second", {"FAULT_AT=" + std::to_string(position + 1), "FAULT_ERROR=" + std::to_string(error)});
        ASSERT_TRUE(error == kKilled ? result.signal == SIGKILL : result.exitCode == 0 || result.exitCode == 1)
            << result.output;
        ExpectOldOrNew(result);
        const bool isCleaningUp = call.name == "unlinkat" || call.name == "unlink";
        if (error != kKilled && !isCleaningUp) {
            ExpectNothingLeft();
        }
        const ProgramResult next = RunDriver("second");
        EXPECT_EQ(next.exitCode, 0) << next.output;
        EXPECT_TRUE(support::ReadFile(mTarget) == mNew) << "after the next run";
        ExpectNothingLeft();
    }

    // To the byte, so that what was checked once of both, that they play, holds here too.
    void ExpectOldOrNew(const ProgramResult& result) const {
        const std::string now = support::ReadFile(mTarget);
        EXPECT_TRUE((result.exitCode != 0 && now == mOld) || (result.exitCode != 1 && now == mNew)) << result.output;
        if (result.exitCode == 1) {
            EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1) << result.output;
        }
        if (!GetParam().isInside) {
            EXPECT_TRUE(support::ReadFile(mClip) == mOriginal);
        }
    }

    void ExpectNothingLeft() const {
        EXPECT_EQ(support::NamesIn(mFolder.Path()).size(), GetParam().isInside ? 1U : 2U)
            << testing::PrintToString(support::NamesIn(mFolder.Path()));
    }

    bool IsReplacing(const Call& call) const {
        return call.name.starts_with("rename") && call.subject.ends_with(mTarget.filename().native());
    }

    // The last moment at which the next run finds the old clip, and the first at which it finds the new one, with all that
    // a run makes left lying beside it.
    bool IsAroundReplacing(std::size_t position) const {
        return IsReplacing(mCalls[position]) || (position > 0 && IsReplacing(mCalls[position - 1]));
    }

    fs::path Log() const { return mLogFolder / "calls"; }

    support::TemporaryFolder mFolder;
    support::TemporaryFolder mLogFolder;
    const fs::path mClip = support::MakeClip(mFolder.Path(), GetParam());
    const fs::path mTarget = GetParam().isInside ? mClip : fs::path(mClip).replace_extension(".xmp");
    std::string mOriginal, mOld, mNew, mDigest;
    std::vector<Call> mCalls;
};

TEST_P(FaultSweep, LeavesTheOldClipOrTheNewOne) {
    std::size_t tried = 0;
    for (std::size_t position = 0; position < mCalls.size() && !HasFailure(); ++position) {
        for (std::size_t fault = 0; fault < std::size(kFaults); ++fault) {
            const bool isInShare = (position * std::size(kFaults) + fault) % FAULT_STRIDE == 0;
            if (isInShare || (kFaults[fault] == kKilled && IsAroundReplacing(position))) {
                TryFault(position, kFaults[fault]);
                ++tried;
            }
        }
    }
    EXPECT_EQ(support::DecodedDigest(mClip), mDigest);
    std::printf("%s: %zu calls, %zu faults tried\n", GetParam().name, mCalls.size(), tried);
}

// What a power cut leaves cannot be tried here, but the order that makes it safe can be seen: all is on the disk before
// the name changes, and the change of name is brought there as well.
TEST_P(FaultSweep, FlushesBeforeAndAfterTheNameChanges) {
    std::vector<std::string> order;
    for (const Call& call : mCalls) {
        const bool isFlush = call.name == "fsync";
        const bool isWrite = call.name.find("write") != std::string::npos || call.name.starts_with("copy_file") ||
                             call.name.starts_with("ftrunc");
        const char* const step = IsReplacing(call) ? "rename" : isFlush ? "flush" : isWrite ? "write" : "";
        if (*step != '\0' && (order.empty() || order.back() != step)) {
            order.emplace_back(step);
        }
    }
    EXPECT_THAT(order, testing::ElementsAre("write", "flush", "rename", "flush"));
}

INSTANTIATE_TEST_SUITE_P(FAULT_SHARE, FaultSweep, testing::ValuesIn(support::ClipSamples()),
                         [](const auto& sample) { return sample.param.name; });

} // namespace
