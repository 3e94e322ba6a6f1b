#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include <benchmark/benchmark.h>

#include "Allocations.h"
#include "CountingParser.h"
#include "StoryGenerator.h"
#include <zonscreenplay/Screenplay.h>

namespace {

constexpr std::size_t kMegabyte = 1'000'000;

// 0 stands for the sample; other sizes are generated once each.
const std::string& StoryOf(std::int64_t megabytes) {
    static std::map<std::int64_t, std::string> stories;
    std::string& story = stories[megabytes];
    if (story.empty() && megabytes == 0) {
        std::ifstream file(SAMPLE_STORY, std::ios::binary);
        story.assign(std::istreambuf_iterator<char>(file), {});
    } else if (story.empty()) {
        story = bench::StoryGenerator().OfSize(static_cast<std::size_t>(megabytes) * kMegabyte);
    }
    return story;
}

void ParseFloor(benchmark::State& state) {
    const std::string& story = StoryOf(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::CountEvents(story));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(story.size()));
}

void ParseOurs(benchmark::State& state) {
    const std::string& story = StoryOf(state.range(0));
    const double elements = static_cast<double>(bench::CountEvents(story).elements);
    zonscreenplay::Screenplay parsed;
    const bench::Allocations allocations =
        bench::Allocations::During([&] { parsed = zonscreenplay::ReadScreenplayFromMemory(story, "generated"); });
    state.counters["allocs/element"] = static_cast<double>(allocations.calls) / elements;
    state.counters["tree bytes/byte"] = static_cast<double>(allocations.bytesLeft) / static_cast<double>(story.size());
    parsed = {};
    for (auto _ : state) {
        parsed = zonscreenplay::ReadScreenplayFromMemory(story, "generated");
        state.PauseTiming(); // the floor builds nothing that would have to go again
        parsed = {};
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(story.size()));
}

BENCHMARK(ParseFloor)->Name("parse/floor/MB:")->Arg(0)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseOurs)->Name("parse/ours/MB:")->Arg(0)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace
