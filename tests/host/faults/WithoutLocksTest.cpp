#include <csignal>

#include <gmock/gmock.h>

#include "host/clip/ClipSamples.h"
#include "host/faults/Faults.h"
#include "support/RunProgram.h"
#include "support/TemporaryFolder.h"

// Two runs on one clip where locks keep nobody out: one of them stops in the middle, and the other comes and goes.
namespace {

namespace fs = std::filesystem;

enum class Ending { GoesOn, Killed, Interrupted };

class WithoutLocks : public testing::Test {
protected:
    std::vector<std::string> Command(const std::string& value) const {
        return {CLIP_DRIVER, mClip.native(), "source", value + std::string(6000, 'x')};
    }

    static std::vector<std::string> Environment(const std::string& setting = "FAULT_AT=0") {
        return support::WithShim({"FAULT_NO_LOCKS=1", setting, "FAULT_ERROR=-1"});
    }

    std::string Result(const std::string& value) {
        support::WriteFile(mClip, mOld);
        EXPECT_EQ(support::RunProgram(Command(value), Environment()).exitCode, 0);
        return support::ReadFile(mClip);
    }

    // The names of a run's calls, from the first on.
    std::vector<std::string> Calls() {
        support::WriteFile(mClip, mOld);
        const fs::path log = mLogFolder / "calls";
        support::RunProgram(Command("a"), Environment("FAULT_LOG=" + log.native()));
        std::vector<std::string> names;
        for (const support::FileCall& call : support::CallsIn(log)) {
            names.push_back(call.name);
        }
        support::WriteFile(mClip, mOld);
        return names;
    }

    // The first run stops at a call, the second runs to its end, then the first one's ending comes.
    void Meet(std::size_t call, Ending ending) {
        support::WriteFile(mClip, mOld);
        support::RunningProgram first(Command("a"), Environment("FAULT_AT=" + std::to_string(call)));
        first.WaitUntilStopped();
        const support::ProgramResult second = support::RunProgram(Command("b"), Environment());
        EXPECT_LE(second.exitCode, 1) << second.output;
        if (ending != Ending::GoesOn) {
            first.Send(ending == Ending::Killed ? SIGKILL : SIGINT);
        }
        first.Send(SIGCONT);
        const support::ProgramResult last = first.Wait();
        const std::string now = support::ReadFile(mClip);
        EXPECT_TRUE(now == mOld || now == mA || now == mB) << "damaged";
        EXPECT_TRUE(now != mOld || (second.exitCode != 0 && last.exitCode != 0)) << "said to be written";
    }

    support::TemporaryFolder mFolder;
    support::TemporaryFolder mLogFolder;
    const fs::path mClip = support::MakeClip(mFolder.Path(), support::SampleNamed("MovIndexInFront"));
    const std::string mOld = support::ReadFile(mClip);
    const std::string mA = Result("a");
    const std::string mB = Result("b");
};

TEST_F(WithoutLocks, NoRunDamagesTheClip) {
    const std::vector<std::string> calls = Calls();
    const auto folderMade = std::find(calls.rbegin(), calls.rend(), "mkdirat"); // what other runs notice begins there
    ASSERT_NE(folderMade, calls.rend());
    constexpr std::size_t kStride = 7;
    for (auto call = static_cast<std::size_t>(calls.rend() - folderMade); call <= calls.size() && !HasFailure();
         call += kStride) {
        for (const Ending ending : {Ending::GoesOn, Ending::Killed, Ending::Interrupted}) {
            SCOPED_TRACE("call " + std::to_string(call) + ", ending " + std::to_string(static_cast<int>(ending)));
            Meet(call, ending);
        }
    }
}

TEST_F(WithoutLocks, SaysSoInOneLine) {
    const std::vector<std::string> calls = Calls();
    const auto before = std::find(calls.begin(), calls.end(), "flock") - calls.begin();
    auto environment = Environment("FAULT_AT=" + std::to_string(before + 1));
    environment.push_back("FAULT_ERROR=" + std::to_string(ENOLCK));
    EXPECT_EQ(support::RunProgram(Command("a"), environment).output,
              "cannot be locked, since its file system has no locks; --no-lock goes without\n");
    EXPECT_THAT(support::NamesIn(mFolder.Path()), testing::ElementsAre(mClip.filename().native()));
}

} // namespace
