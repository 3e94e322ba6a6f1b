#include "commands/Packets.h"

#include <filesystem>

#include <fmt/format.h>

#include <zonstoryparser/Story.h>

#include "commands/PacketNames.h"
#include "commands/Toolkit.h"
#include "files/AtomicFile.h"
#include "files/SystemError.h"
#include "output/ExitCode.h"
#include "story/PacketRule.h"
#include "story/SceneSelection.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

constexpr char kStandardOutput[] = "-";

std::vector<SelectedScene> Select(const SceneSelection& selection, const std::vector<std::string>& names) {
    if (names.empty()) {
        return selection.All();
    }
    std::vector<SelectedScene> scenes;
    scenes.reserve(names.size());
    for (const std::string& name : names) {
        scenes.push_back(selection.Find(name));
    }
    return scenes;
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder)) {
        throw OutputError(folder.string() + ": " + (error ? SystemErrorText(error.value()) : "is not a folder"));
    }
}

/// Where packets go.
class PacketSink {
public:
    PacketSink(const std::string& target, Output& output) : mTarget(target), mOutput(output) {
        if (mTarget != kStandardOutput) {
            MakeFolder(mTarget);
        }
    }

    void Put(const std::string& number, const std::string& packet) {
        if (mTarget == kStandardOutput) {
            return mOutput.Result(packet + '\n');
        }
        const fs::path path = mTarget / mNames.NameFor(number);
        WriteFileAtomically(path, packet);
        mOutput.Result(path.string() + '\n');
    }

private:
    fs::path mTarget;
    Output& mOutput;
    PacketNames mNames;
};

} // namespace

int RunPackets(const PacketsOptions& options, Output& output) {
    const Story story = ReadStory(options.story);
    const std::vector<SelectedScene> scenes = Select(SceneSelection(*story.root), options.scenes);
    const Toolkit toolkit;
    PacketSink sink(options.target, output);
    std::size_t done = 0;
    for (const SelectedScene& selected : scenes) {
        std::vector<zonstoryparser::ShotXMP> shots;
        zonstoryparser::GetSceneXMP(story.root, selected.scene, static_cast<std::int32_t>(selected.position), shots);
        for (const zonstoryparser::ShotXMP& shot : shots) {
            sink.Put(zoncore::UTF16to8(NumberToWrite(selected)), shot.xmpPacket);
        }
        if (shots.empty()) {
            output.Note(fmt::format("scene #{} yields no packet: {}", selected.position,
                                    ReasonForNoPacket(*selected.scene).value_or("the library makes none")));
        }
        output.Progress(fmt::format("{} of {} scenes", ++done, scenes.size()));
    }
    return kDone;
}

} // namespace zonstory
