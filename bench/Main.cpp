#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include <zonstoryparser/XMPToolkit.h>

namespace {

// Google Benchmark's own table, and behind it the ratio of each measurement to its floor. A pair is told by its names:
// "what/floor/size" and "what/ours/size".
class FloorReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") {
                continue;
            }
            Note(run.run_name.str(), run.GetAdjustedCPUTime());
        }
    }

    void Finalize() override {
        std::printf("\n%-44s %14s %14s %8s\n", "CPU time a run", "floor", "ours", "ratio");
        for (const std::string& name : mOrder) {
            const auto& [floor, ours] = mPairs.at(name);
            if (floor > 0 && ours > 0) {
                std::printf("%-44s %14.0f %14.0f %8.2f\n", name.c_str(), floor, ours, ours / floor);
            }
        }
    }

private:
    void Note(const std::string& name, double time) {
        for (const bool isFloor : {true, false}) {
            const std::string mark = isFloor ? "/floor" : "/ours";
            const std::size_t at = name.find(mark);
            if (at == std::string::npos) {
                continue;
            }
            const std::string pair = name.substr(0, at) + name.substr(at + mark.size());
            const auto [entry, isNew] = mPairs.try_emplace(pair);
            if (isNew) {
                mOrder.push_back(pair);
            }
            (isFloor ? entry->second.first : entry->second.second) = time;
        }
    }

    std::map<std::string, std::pair<double, double>> mPairs;
    std::vector<std::string> mOrder;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv) || !SXMPMeta::Initialize()) {
        return 2;
    }
    FloorReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    SXMPMeta::Terminate();
}
