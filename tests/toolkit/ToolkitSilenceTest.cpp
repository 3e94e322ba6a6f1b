#include <iostream>
#include <memory>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include <zonstoryparser/XMPToolkit.h>

#include "toolkit/ToolkitSilence.h"

namespace {

using zonstoryparser::ToolkitSilence;

TEST(ToolkitSilence, DropsOnlyTheToolkitsWordsAndLeavesNothingBehind) {
    std::ostringstream hostsOwn;
    std::streambuf* const usual = std::cerr.rdbuf(hostsOwn.rdbuf());
    std::thread host([] {
        for (int i = 0; i < 1000; ++i) {
            std::cerr << 'h';
        }
    });
    std::vector<std::thread> workers;
    for (int i = 0; i < 3; ++i) {
        workers.emplace_back([] {
            for (int k = 0; k < 300; ++k) {
                EXPECT_THROW(SXMPMeta("garbage", 7), XMP_Error);
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    host.join();
    EXPECT_EQ(std::cerr.rdbuf(), hostsOwn.rdbuf());
    std::cerr << std::flush;
    std::cerr.rdbuf(usual);
    EXPECT_EQ(hostsOwn.str(), std::string(1000, 'h'));
}

// A host that keeps what it took out: what rdbuf() gave it inside a call is put back after the call, and a call later.
TEST(ToolkitSilence, ABufferThatIsExchangedMeanwhileIsTheHostsChoice) {
    std::ostringstream first;
    std::streambuf* const usual = std::cerr.rdbuf(first.rdbuf());
    auto second = std::make_unique<std::ostringstream>();
    std::streambuf* takenOut = nullptr;
    {
        const ToolkitSilence silence;
        takenOut = std::cerr.rdbuf(second->rdbuf());
        std::thread([] {
            const ToolkitSilence another;
            std::cerr << "dropped";
        }).join();
        std::thread([] { std::cerr << "to the second"; }).join();
    }
    EXPECT_EQ(std::cerr.rdbuf(), second->rdbuf());
    EXPECT_EQ(second->str(), "to the second");
    std::cerr.rdbuf(takenOut);
    second.reset();
    std::cerr << "to the first";
    for (int call = 0; call < 2; ++call) {
        const ToolkitSilence silence;
        std::cerr << "dropped";
    }
    EXPECT_EQ(std::cerr.rdbuf(), first.rdbuf());
    std::cerr.rdbuf(usual);
    EXPECT_EQ(first.str(), "to the first");
}

TEST(ToolkitSilence, LeavesTheStreamsStateAndItsMissingBufferAlone) {
    std::ostringstream own;
    std::streambuf* const usual = std::cerr.rdbuf(nullptr);
    for (const std::ios::iostate state : {std::ios::badbit, std::ios::badbit | std::ios::eofbit}) {
        std::cerr.clear(state);
        EXPECT_THROW(SXMPMeta("garbage", 7), XMP_Error);
        std::thread([] { std::cerr << std::flush; }).join();
        EXPECT_EQ(std::cerr.rdbuf(), nullptr);
        EXPECT_EQ(std::cerr.rdstate() & ~std::ios::failbit, state);
    }
    std::cerr.rdbuf(own.rdbuf());
    for (const std::ios::iostate state : {std::ios::goodbit, std::ios::failbit, std::ios::badbit}) {
        std::cerr.clear(state);
        EXPECT_THROW(SXMPMeta("garbage", 7), XMP_Error);
        EXPECT_EQ(std::cerr.rdstate(), state);
    }
    std::cerr.rdbuf(usual);
    EXPECT_EQ(own.str(), "");
}

} // namespace
