#pragma once

#include <iostream>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include <zonstoryparser/XMPToolkit.h>

#include "support/FailingAllocator.h"

namespace support {

enum class Outcome { Done, NotDone, OutOfMemory, ToolkitError };

template <typename Operate, typename Objects>
Outcome Try(Operate operate, Objects& objects) {
    try {
        return operate(objects) ? Outcome::Done : Outcome::NotDone;
    } catch (const std::bad_alloc&) {
        return Outcome::OutOfMemory;
    } catch (const XMP_Error&) {
        return Outcome::ToolkitError;
    }
}

/// Tries an operation once for each allocation that it makes, with that one failing, and again with all from that one
/// on. Each time: std::bad_alloc leaves it, nothing is lost once the objects are gone, and with memory back the same
/// operation on the same objects has the result that it has on fresh ones. A shortage inside the XMP toolkit may come
/// out as an error of the toolkit's, or as a call that says it failed, and the toolkit's own losses are not ours.
/// @param prepare  Makes the caller's objects.
/// @param operate  operate(objects) returns whether it claims to have done everything.
/// @param observe  observe(objects) tells the result as text.
template <typename Prepare, typename Operate, typename Observe>
void SweepShortage(Prepare prepare, Operate operate, Observe observe) {
    auto whole = prepare();
    ASSERT_TRUE(operate(whole));
    const std::string expected = observe(whole);
    long ours = 0;
    // Whether there was an allocation of this number.
    const auto strike = [&](long number, Shortage shortage) {
        SCOPED_TRACE("allocation " + std::to_string(number) + (shortage == Shortage::Once ? "" : " and all after"));
        std::streambuf* const errors = std::cerr.rdbuf();
        const long before = LiveAllocations();
        bool hasStruck = false;
        bool isInToolkit = false;
        {
            auto objects = prepare();
            Outcome outcome = Outcome::NotDone;
            {
                const MemoryShortage memory(number, shortage);
                outcome = Try(operate, objects);
                hasStruck = memory.HasStruck();
                isInToolkit = memory.HasStruckInToolkit();
            }
            EXPECT_EQ(std::cerr.rdbuf(), errors);
            EXPECT_TRUE(!hasStruck || isInToolkit || outcome == Outcome::OutOfMemory);
            if (outcome == Outcome::Done) {
                EXPECT_EQ(observe(objects), expected) << "though it claims success";
            }
            EXPECT_TRUE(operate(objects));
            EXPECT_EQ(observe(objects), expected) << "with memory back";
        }
        EXPECT_TRUE(isInToolkit || LiveAllocations() == before);
        ours += hasStruck && !isInToolkit ? 1 : 0;
        return hasStruck;
    };
    for (const Shortage shortage : {Shortage::Once, Shortage::FromThenOn}) {
        for (long number = 1; strike(number, shortage) && !::testing::Test::HasFailure(); ++number) {
        }
    }
    EXPECT_GT(ours, 0);
}

} // namespace support
