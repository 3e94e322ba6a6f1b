// Two drafts compared: how fast, and how often rightly.
#include <cstdint>

#include <benchmark/benchmark.h>

#include <zonstoryparser/SceneContent.h>
#include <zonstoryparser/StoryComparison.h>

#include "DraftGenerator.h"

namespace {

using bench::Revision;
using bench::RevisionPlan;

// Scenes, numbered, renumbered, rewritten and how many of their words, added, removed, omitted, moved, split, characters and
// places renamed.
constexpr RevisionPlan kRewritten{100, true, false, 60, 33};
constexpr RevisionPlan kEverything{100, true, false, 20, 33, 6, 6, 6, 4, 4, 2, 2};
constexpr RevisionPlan kWhollyRewritten{100, true, false, 30, 90, 6, 6};
constexpr RevisionPlan kNumberedAfresh{100, true, true, 0, 0, 6, 6};
constexpr RevisionPlan kNumberedAfreshRewritten{100, true, true, 30, 33, 5, 5};
constexpr RevisionPlan kUnnumberedRewritten{100, false, false, 60, 33};
constexpr RevisionPlan kUnnumberedEverything{100, false, false, 20, 33, 6, 6, 0, 4, 4, 2, 2};

// How many scenes of forty pairs of drafts are told wrong. Nothing was tuned on these seeds.
void Mistakes(benchmark::State& state, const RevisionPlan& plan) {
    std::size_t scenes = 0;
    std::size_t mistakes = 0;
    for (auto _ : state) {
        for (std::uint32_t seed = 5001; seed <= 5040; ++seed) {
            const Revision revision = bench::MakeRevision(plan, seed);
            scenes += revision.key.size();
            mistakes +=
                bench::CountMistakes(revision, zonstoryparser::CompareStories(*revision.before, *revision.after));
        }
    }
    state.counters["scenes"] = static_cast<double>(scenes);
    state.counters["wrong"] = static_cast<double>(mistakes);
}

void Once(benchmark::internal::Benchmark* benchmark) {
    benchmark->Iterations(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Mistakes, numbered_rewritten, kRewritten)->Apply(&Once);
BENCHMARK_CAPTURE(Mistakes, numbered_everything, kEverything)->Apply(&Once);
BENCHMARK_CAPTURE(Mistakes, numbered_wholly_rewritten, kWhollyRewritten)->Apply(&Once);
BENCHMARK_CAPTURE(Mistakes, numbered_afresh_in_and_out, kNumberedAfresh)->Apply(&Once);
BENCHMARK_CAPTURE(Mistakes, numbered_afresh_rewritten, kNumberedAfreshRewritten)->Apply(&Once);
BENCHMARK_CAPTURE(Mistakes, unnumbered_rewritten, kUnnumberedRewritten)->Apply(&Once);
BENCHMARK_CAPTURE(Mistakes, unnumbered_everything, kUnnumberedEverything)->Apply(&Once);

Revision DraftsOf(const benchmark::State& state) {
    RevisionPlan plan = kEverything;
    plan.scenes = static_cast<std::size_t>(state.range(0));
    return bench::MakeRevision(plan, 1);
}

void GatherAll(const zonstoryparser::Talewright& story) {
    for (const auto& scene : story.document->body->section->scenes) {
        benchmark::DoNotOptimize(zonstoryparser::GatherSceneContent(*scene));
    }
}

// What both drafts say, gathered once.
void Floor(benchmark::State& state) {
    const Revision revision = DraftsOf(state);
    for (auto _ : state) {
        GatherAll(*revision.before);
        GatherAll(*revision.after);
    }
}

void Ours(benchmark::State& state) {
    const Revision revision = DraftsOf(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(zonstoryparser::CompareStories(*revision.before, *revision.after));
    }
}

BENCHMARK(Floor)->Name("comparison/floor/scenes:")->Arg(200)->Arg(2000)->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Ours)->Name("comparison/ours/scenes:")->Arg(200)->Arg(2000)->Arg(20'000)->Unit(benchmark::kMillisecond);

} // namespace
