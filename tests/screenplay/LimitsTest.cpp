#include <zonscreenplay/Limits.h>

#include <fstream>

#include <gmock/gmock.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "screenplay/StoryText.h"
#include "support/TemporaryFolder.h"
#include <zonscreenplay/Screenplay.h>

namespace {

using support::Repeated;
using support::WithAction;
using support::WithBody;
using zonscreenplay::Limits;
using zonscreenplay::ReadError;
using zonscreenplay::ReadOptions;
using zonscreenplay::ReadScreenplayFromMemory;

// While it lives, the process may take 300 MB more. A sanitizer takes more room than anyone can foresee.
class MemoryCap {
public:
    MemoryCap() {
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        ::getrlimit(RLIMIT_AS, &mUsual);
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        rlimit capped = mUsual;
        capped.rlim_cur = pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) + 300'000'000;
        ::setrlimit(RLIMIT_AS, &capped);
#endif
    }
    MemoryCap(const MemoryCap&) = delete;
    MemoryCap& operator=(const MemoryCap&) = delete;
    ~MemoryCap() {
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        ::setrlimit(RLIMIT_AS, &mUsual);
#endif
    }

private:
    rlimit mUsual{};
};

// What is made of each number from `first` to before `end`.
template <typename Make>
std::string ForEach(int first, int end, Make make) {
    std::string all;
    for (int number = first; number < end; ++number) {
        all += make(number);
    }
    return all;
}

std::string Entity(int number, const std::string& value) {
    return "<!ENTITY a" + std::to_string(number) + " '" + value + "'>";
}

// Each of `copies` of the one before.
std::string Chain(int length, std::size_t copies = 1) {
    const auto link = [&](int number) {
        return Entity(number, Repeated("&a" + std::to_string(number - 1) + ";", copies));
    };
    return "<!DOCTYPE t [" + Entity(0, "ha") + ForEach(1, length, link) + "]>";
}

std::string DefaultAttributes(int count, const std::string& value) {
    return "<!DOCTYPE t [" +
           ForEach(
               0, count,
               [&](int number) { return "<!ATTLIST scene a" + std::to_string(number) + " CDATA '" + value + "'>"; }) +
           "]>";
}

std::string Nested(std::size_t depth) {
    return "<Talewright version='1.0'>" + Repeated("<a>", depth - 1) + Repeated("</a>", depth - 1) + "</Talewright>";
}

// The message for a story, or "read".
std::string Refusal(const std::string& bytes, const Limits& limits = {}) {
    ReadOptions options;
    options.limits = limits;
    const MemoryCap cap;
    try {
        ReadScreenplayFromMemory(bytes, "s", options);
        return "read";
    } catch (const ReadError& error) {
        EXPECT_GT(error.Where().line, 0U);
        return error.Message();
    }
}

TEST(Limits, AttacksEndInBoundedMemoryWithAMessage) {
    const std::string amplification = "limit on input amplification";
    const std::string text = "the story's text is longer than 134217728 characters";
    const std::string items = "the story has more than 8388608 elements and attributes";
    const std::string entities = "the file declares more than 1000 entities";
    const std::string markup = "a tag, comment or declaration is longer than 1048576 bytes";
    const std::string large(3'000'000, 'x');
    const struct {
        std::string bytes, message;
    } rows[] = {
        {WithAction("&a9;", Chain(10, 10)), amplification}, // ten times ten times ... of itself, as attackers send it
        {WithAction(Repeated("&a0;", 3000), "<!DOCTYPE t [" + Entity(0, large.substr(0, 100'000)) + "]>"),
         amplification},
        {WithAction("&a99999;", Chain(100'000)), entities}, // the XML parser would run out of stack
        {WithBody("<scene objID='&a99999;'/>", Chain(100'000)), entities},
        {WithBody(Repeated("<scene/>", 3000), DefaultAttributes(1, large.substr(0, 60'000))), text},
        {WithBody(Repeated("<scene/>", 1000), DefaultAttributes(10'000, "")), items},
        {WithBody("<scene" + ForEach(0, 1'000'000, [](int n) { return " a" + std::to_string(n) + "=''"; }) + "/>"),
         markup},
        {WithBody("<scene sceneNumber='" + large + "'/>"), markup},
        {WithBody("<" + large + "/>"), markup},
        {WithBody("<!--" + large + "-->"), markup},
        {WithAction("x", "<!DOCTYPE t [" + Entity(0, large) + "]>"), markup},
        {WithAction(std::string(17'000'000, 'x')), "a text is longer than 16777216 characters"},
        {Nested(1'000'000), "elements are nested more than 1000 deep"},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(Refusal(row.bytes), ::testing::HasSubstr(row.message)) << row.bytes.substr(0, 100);
    }
}

TEST(Limits, EachMayBeReachedAndNotPassed) {
    const std::string story = WithAction("ten chars.", "<!DOCTYPE t [" + Entity(1, "x") + Entity(2, "y") + "]>");
    const struct {
        std::size_t Limits::*limit;
        std::size_t reached;
        std::string message;
    } rows[] = {
        {&Limits::size, story.size(), "the file is longer than"},
        {&Limits::items, 13, "more than 12 elements and attributes"},
        {&Limits::scenes, 1, "more than 0 scenes"},
        {&Limits::depth, 7, "nested more than 6 deep"},
        {&Limits::text, 10, "longer than 9 characters"},
        {&Limits::entities, 2, "more than 1 entities"},
    };
    for (const auto& row : rows) {
        Limits limits;
        limits.*row.limit = row.reached;
        EXPECT_EQ(Refusal(story, limits), "read");
        limits.*row.limit = row.reached - 1;
        EXPECT_THAT(Refusal(story, limits), ::testing::HasSubstr(row.message));
    }
}

// The longest chain that is let through, on the smallest stack that the usual systems give a thread.
TEST(Limits, AChainOfEntitiesFitsTheStackOfAThread) {
    pthread_attr_t small;
    ::pthread_attr_init(&small);
    ::pthread_attr_setstacksize(&small, 512 * 1024);
    pthread_t thread;
    const auto read = [](void*) -> void* {
        EXPECT_EQ(Refusal(WithAction("&a999;", Chain(1000))), "read");
        EXPECT_EQ(Refusal(WithBody("<scene objID='&a999;'/>", Chain(1000))), "read");
        return nullptr;
    };
    ASSERT_EQ(::pthread_create(&thread, &small, read, nullptr), 0);
    ::pthread_join(thread, nullptr);
    ::pthread_attr_destroy(&small);
}

// A pipe that is opened blocks the test, and the file's text would be seen.
TEST(Limits, NothingOutsideTheFileIsOpened) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    support::WriteFile(folder / "file", "<!ENTITY e 'seen'>");
    for (const char* const name : {"pipe", "file"}) {
        const std::string outside = "SYSTEM '" + (folder / name).string() + "'";
        const std::string parameter = "[<!ENTITY % p " + outside + "> %p;]>";
        const std::string general = "<!DOCTYPE t [<!ENTITY e " + outside + ">]>";
        const struct {
            std::string bytes, message;
        } rows[] = {
            {WithAction("x", "<!DOCTYPE t " + outside + ">"), "read"},
            {WithAction("x", "<!DOCTYPE t " + outside + " " + parameter), "read"},
            {WithAction("&e;", "<!DOCTYPE t " + parameter), "the entity 'e' is not defined in the file"},
            {WithAction("x", general), "read"},
            {WithAction("&e;", general),
             "the text of an external entity '" + (folder / name).string() + "' is asked for"},
            {WithBody("<scene objID='&e;'/>", general), "reference to external entity in attribute"},
        };
        for (const auto& row : rows) {
            EXPECT_THAT(Refusal(row.bytes), ::testing::HasSubstr(row.message)) << row.bytes;
        }
    }
}

} // namespace
