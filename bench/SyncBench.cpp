#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include <zonstoryparser/Story.h>

#include "DirectToolkit.h"
#include "GeneratedStory.h"

namespace {

using Dialogue = std::vector<std::pair<std::string, std::string>>;

const bench::GeneratedStory& Story() {
    static const bench::GeneratedStory story(1);
    return story;
}

Dialogue DirectDialogue(std::int64_t items) {
    return Dialogue(static_cast<std::size_t>(items), {"ANNA", "Nobody asks why the train leaves without them."});
}

std::vector<zonstoryparser::CharacterDialogue> LibraryDialogue(std::int64_t items) {
    return std::vector<zonstoryparser::CharacterDialogue>(static_cast<std::size_t>(items),
                                                          {u"ANNA", u"Nobody asks why the train leaves without them."});
}

void FreshFloor(benchmark::State& state) {
    for (auto _ : state) {
        bench::DirectMetadata xmp;
        xmp.WriteClipProperties(Story().direct[0]);
    }
}

// What the caller is owed beside the metadata: the number of items that were there, and a path for each of their fields.
std::vector<std::string> DialoguePaths(std::size_t items) {
    std::vector<std::string> paths;
    for (std::size_t item = 1; item <= items; ++item) {
        for (const char* const field : {"character", "dialog"}) {
            paths.push_back("dialogSequence[" + std::to_string(item) + "]/xmpScript:" + field);
        }
    }
    return paths;
}

void FreshListedFloor(benchmark::State& state) {
    for (auto _ : state) {
        bench::DirectMetadata xmp;
        benchmark::DoNotOptimize(xmp.CountDialogue());
        xmp.WriteClipProperties(Story().direct[0]);
        benchmark::DoNotOptimize(DialoguePaths(Story().direct[0].dialogue.size()));
    }
}

void FreshOurs(benchmark::State& state) {
    for (auto _ : state) {
        SXMPMeta xmp;
        std::vector<zonmetadata::Path> changed;
        benchmark::DoNotOptimize(zonstoryparser::WriteSceneMetadataIntoXMP(Story().Scenes()[0], xmp, changed));
    }
}

// The clip holds 200 items each time; putting them there is not measured.
template <typename Write>
void OverDialogue(benchmark::State& state, Write write) {
    bench::DirectMetadata xmp;
    for (auto _ : state) {
        state.PauseTiming();
        xmp.DeleteDialogue();
        xmp.AppendDialogue(DirectDialogue(200));
        state.ResumeTiming();
        write(xmp);
    }
}

void OverDialogueFloor(benchmark::State& state) {
    OverDialogue(state, [](bench::DirectMetadata& xmp) { xmp.WriteClipProperties(Story().direct[0]); });
}

void OverDialogueListedFloor(benchmark::State& state) {
    OverDialogue(state, [](bench::DirectMetadata& xmp) {
        const std::size_t items = xmp.CountDialogue();
        xmp.WriteClipProperties(Story().direct[0]);
        benchmark::DoNotOptimize(DialoguePaths(items));
    });
}

void OverDialogueOurs(benchmark::State& state) {
    SXMPMeta xmp;
    std::vector<zonmetadata::Path> changed;
    for (auto _ : state) {
        state.PauseTiming();
        changed.clear();
        zonstoryparser::DeleteCharacterDialogueFromXMP(xmp);
        zonstoryparser::WriteCharacterDialogueToXMP(LibraryDialogue(200), xmp);
        state.ResumeTiming();
        benchmark::DoNotOptimize(zonstoryparser::WriteSceneMetadataIntoXMP(Story().Scenes()[0], xmp, changed));
    }
}

BENCHMARK(FreshFloor)->Name("WriteSceneMetadata/floor/fresh");
BENCHMARK(FreshOurs)->Name("WriteSceneMetadata/ours/fresh");
BENCHMARK(FreshListedFloor)->Name("WriteSceneMetadata/floor/fresh, counted and listed");
BENCHMARK(FreshOurs)->Name("WriteSceneMetadata/ours/fresh, counted and listed");
BENCHMARK(OverDialogueFloor)->Name("WriteSceneMetadata/floor/over 200 items");
BENCHMARK(OverDialogueOurs)->Name("WriteSceneMetadata/ours/over 200 items");
BENCHMARK(OverDialogueListedFloor)->Name("WriteSceneMetadata/floor/over 200 items, counted and listed");
BENCHMARK(OverDialogueOurs)->Name("WriteSceneMetadata/ours/over 200 items, counted and listed");

void DialogueFloor(benchmark::State& state) {
    const Dialogue dialogue = DirectDialogue(state.range(0));
    for (auto _ : state) {
        bench::DirectMetadata xmp;
        xmp.AppendDialogue(dialogue);
        benchmark::DoNotOptimize(xmp.ReadDialogue(dialogue.size()));
        xmp.DeleteDialogue();
    }
    state.SetComplexityN(state.range(0));
}

void DialogueOurs(benchmark::State& state) {
    const auto dialogue = LibraryDialogue(state.range(0));
    for (auto _ : state) {
        SXMPMeta xmp;
        std::vector<zonstoryparser::CharacterDialogue> read;
        zonstoryparser::WriteCharacterDialogueToXMP(dialogue, xmp);
        zonstoryparser::GetCharacterDialogueFromXMP(xmp, nullptr, read); // counts, too
        zonstoryparser::DeleteCharacterDialogueFromXMP(xmp);
        benchmark::DoNotOptimize(read);
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(DialogueFloor)->Name("dialogue array/floor/items:")->RangeMultiplier(10)->Range(10, 100'000);
BENCHMARK(DialogueOurs)
    ->Name("dialogue array/ours/items:")
    ->RangeMultiplier(10)
    ->Range(10, 100'000)
    ->Complexity(benchmark::oN);

} // namespace
