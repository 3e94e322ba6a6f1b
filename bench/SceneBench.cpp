#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <zonstoryparser/Story.h>

#include "DirectToolkit.h"
#include "GeneratedStory.h"

namespace {

const bench::GeneratedStory& Story() {
    static const bench::GeneratedStory story(1000);
    return story;
}

void PacketFloor(benchmark::State& state) {
    std::size_t scene = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::DirectPacket(Story().direct[scene++ % 1000]));
    }
}

void PacketOurs(benchmark::State& state) {
    std::size_t scene = 0;
    for (auto _ : state) {
        std::vector<zonstoryparser::ShotXMP> shots;
        zonstoryparser::GetSceneXMP(Story().story.root, Story().Scenes()[scene++ % 1000], 1, shots);
        benchmark::DoNotOptimize(shots);
    }
}

BENCHMARK(PacketFloor)->Name("GetSceneXMP/floor");
BENCHMARK(PacketOurs)->Name("GetSceneXMP/ours");

// Both write the same files, in a folder of their own; in memory where there is such a place, as a disk would be all that
// is measured.
std::filesystem::path FastFolder() {
    const std::filesystem::path memory = "/dev/shm";
    return ::access(memory.c_str(), W_OK) == 0 ? memory : std::filesystem::temp_directory_path();
}

class DumpFolder {
public:
    DumpFolder() : mPath(FastFolder() / ("zonstory-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directory(mPath);
        ::setenv("TMPDIR", mPath.c_str(), 1);
    }
    DumpFolder(const DumpFolder&) = delete;
    DumpFolder& operator=(const DumpFolder&) = delete;
    ~DumpFolder() {
        std::filesystem::remove_all(mPath);
        ::unsetenv("TMPDIR");
    }

    std::string Name(std::size_t scene) const { return mPath / ("floor_" + std::to_string(scene) + ".txt"); }

private:
    std::filesystem::path mPath;
};

void TraverseFloor(benchmark::State& state) {
    const bench::GeneratedStory story(static_cast<std::size_t>(state.range(0)));
    const DumpFolder folder;
    for (auto _ : state) {
        for (std::size_t scene = 0; scene < story.direct.size(); ++scene) {
            const std::string packet = bench::DirectPacket(story.direct[scene]);
            const std::string name = folder.Name(scene);
            std::remove(name.c_str());
            std::FILE* const file = std::fopen(name.c_str(), "w");
            std::fwrite(packet.data(), 1, packet.size(), file);
            std::fclose(file);
        }
    }
}

void TraverseOurs(benchmark::State& state) {
    const bench::GeneratedStory story(static_cast<std::size_t>(state.range(0)));
    const DumpFolder folder;
    for (auto _ : state) {
        zoncore::UString report;
        zonstoryparser::TraverseStory(story.story.root, report);
    }
}

BENCHMARK(TraverseFloor)
    ->Name("TraverseStory/floor/scenes:")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(TraverseOurs)
    ->Name("TraverseStory/ours/scenes:")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

} // namespace
