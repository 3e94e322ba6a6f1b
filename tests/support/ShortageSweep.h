#pragma once

#include <iostream>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include <zonstoryparser/XMPToolkit.h>

#include "support/FailingAllocator.h"

namespace support {

enum class Outcome { Done, NotDone, OutOfMemory, ToolkitError };

/// Tries an operation once for each allocation that it makes, with that one failing, and again with all from that one
/// on. Each time: std::bad_alloc leaves it, nothing is lost once the objects are gone, and with memory back the same
/// operation on the same objects has the result that it has on fresh ones. A shortage inside the XMP toolkit may come
/// out as an error of the toolkit's, or as a call that says it failed, and the toolkit's own losses are not ours.
/// @param prepare  Makes the caller's objects.
/// @param operate  operate(objects) returns whether it claims to have done everything.
/// @param observe  observe(objects) tells the result as text.
template <typename Prepare, typename Operate, typename Observe>
class ShortageSweep {
public:
    ShortageSweep(Prepare prepare, Operate operate, Observe observe)
        : mPrepare(prepare), mOperate(operate), mObserve(observe) {}

    void Run() {
        auto objects = mPrepare();
        ASSERT_TRUE(mOperate(objects));
        mExpected = mObserve(objects);
        for (const Shortage shortage : {Shortage::Once, Shortage::FromThenOn}) {
            for (long number = 1; Strike(number, shortage) && !::testing::Test::HasFailure(); ++number) {
            }
        }
        ::testing::Test::RecordProperty("ours", static_cast<int>(mOurs));
        ::testing::Test::RecordProperty("toolkits", static_cast<int>(mToolkits));
        EXPECT_GT(mOurs, 0);
    }

private:
    // Returns whether there was an allocation of this number.
    bool Strike(long number, Shortage shortage) {
        SCOPED_TRACE("allocation " + std::to_string(number) + (shortage == Shortage::Once ? "" : " and all after"));
        std::streambuf* const errors = std::cerr.rdbuf();
        const long before = LiveAllocations();
        bool hasStruck = false;
        bool isInToolkit = false;
        {
            auto objects = mPrepare();
            Outcome outcome = Outcome::NotDone;
            {
                const MemoryShortage memory(number, shortage);
                outcome = Try(objects);
                hasStruck = memory.HasStruck();
                isInToolkit = memory.HasStruckInToolkit();
            }
            EXPECT_EQ(std::cerr.rdbuf(), errors);
            EXPECT_TRUE(!hasStruck || isInToolkit || outcome == Outcome::OutOfMemory);
            if (outcome == Outcome::Done) {
                EXPECT_EQ(mObserve(objects), mExpected) << "though it claims success";
            }
            EXPECT_TRUE(mOperate(objects));
            EXPECT_EQ(mObserve(objects), mExpected) << "with memory back";
        }
        if (!isInToolkit) {
            EXPECT_EQ(LiveAllocations(), before);
        }
        (isInToolkit ? mToolkits : mOurs) += hasStruck ? 1 : 0;
        return hasStruck;
    }

    template <typename Objects>
    Outcome Try(Objects& objects) {
        try {
            return mOperate(objects) ? Outcome::Done : Outcome::NotDone;
        } catch (const std::bad_alloc&) {
            return Outcome::OutOfMemory;
        } catch (const XMP_Error&) {
            return Outcome::ToolkitError;
        }
    }

    Prepare mPrepare;
    Operate mOperate;
    Observe mObserve;
    std::string mExpected;
    long mOurs = 0;
    long mToolkits = 0;
};

} // namespace support
