// FDX and Fountain into the model, each beside its floor.
#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include <zonscreenplay/Screenplay.h>

#include "CountingParser.h"
#include "StoryGenerator.h"

namespace {

using bench::Form;

constexpr std::size_t kKilobyte = 1000;

const std::string& ScriptOf(Form form, std::int64_t kilobytes) {
    static std::map<std::pair<Form, std::int64_t>, std::string> scripts;
    std::string& script = scripts[{form, kilobytes}];
    if (script.empty()) {
        script = bench::StoryGenerator(form).OfSize(static_cast<std::size_t>(kilobytes) * kKilobyte);
    }
    return script;
}

// Expat counting for XML; for text, one look at every byte.
void Floor(benchmark::State& state, Form form) {
    const std::string& script = ScriptOf(form, state.range(0));
    for (auto _ : state) {
        if (form == Form::FDX) {
            benchmark::DoNotOptimize(bench::CountEvents(script));
        } else {
            benchmark::DoNotOptimize(std::count(script.begin(), script.end(), '\n'));
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(script.size()));
}

void Ours(benchmark::State& state, Form form) {
    const std::string& script = ScriptOf(form, state.range(0));
    zonscreenplay::ReadOptions options;
    options.format = form == Form::FDX ? zonscreenplay::Format::FDX : zonscreenplay::Format::Fountain;
    for (auto _ : state) {
        zonscreenplay::Screenplay read = zonscreenplay::ReadScreenplayFromMemory(script, "generated", options);
        state.PauseTiming(); // the floor builds nothing that would have to go again
        read = {};
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(script.size()));
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Floor, fdx, Form::FDX)->Name("fdx/floor/KB:")->Apply(&Sizes);
BENCHMARK_CAPTURE(Ours, fdx, Form::FDX)->Name("fdx/ours/KB:")->Apply(&Sizes);
BENCHMARK_CAPTURE(Floor, fountain, Form::Fountain)->Name("fountain/floor/KB:")->Apply(&Sizes);
BENCHMARK_CAPTURE(Ours, fountain, Form::Fountain)->Name("fountain/ours/KB:")->Apply(&Sizes);

} // namespace
