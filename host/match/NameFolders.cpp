#include "match/NameFolders.h"

#include <string>
#include <utility>

#include "match/NameRuns.h"
#include "match/PatternReading.h"

namespace zonstory {

namespace {

constexpr int kFoldersAbove = 3; ///< Beyond the clip's own; further up are the production's and the machine's.

bool IsNumberAlone(const NamePieces& pieces) {
    return pieces.numbers.size() == 1 && !pieces.unknownWords && !pieces.noise;
}

// SEQ12, and not S12, which may be a season.
bool IsSpelledSequence(std::string_view name, const NamePieces& pieces) {
    return IsNumberAlone(pieces) && pieces.Has(SlateWord::Sequence) && NameRuns(name).Text(0).size() > 1;
}

} // namespace

std::size_t NameFolders::Find(std::string_view path) {
    const auto [found, isNew] = mPlaces.emplace(path, mFolders.size());
    if (isNew) {
        mFolders.push_back(Read(path));
    }
    return found->second;
}

// A scene that leads to its clips over folders for shots, cameras and cards: "Scene 12/A cam/A007/".
NameFolder NameFolders::Read(std::string_view path) const {
    NameFolder folder;
    folder.path = path;
    for (int above = 0; above <= kFoldersAbove && !path.empty(); ++above) {
        const std::string_view name = TakeLastName(path);
        const NamePieces pieces = CutName(name, &mStory);
        const KnownName alone = {&pieces, std::nullopt, folder.below || IsSpelledSequence(name, pieces)};
        const NamePattern pattern = ReadPattern({&alone, 1}, mStory);
        folder.below = folder.below || pieces.Has(SlateWord::Shot) || pieces.Has(SlateWord::Take);
        const bool words = pattern.rule == SlateRule::SceneWord || pattern.rule == SlateRule::SceneLetter;
        if (words && pattern.scene && Sureness(pieces, pattern) >= Confidence::Medium) {
            folder.statements.push_back(
                StateName(Source::FolderName, name, OfStyle(ReadByPattern(pieces, pattern), mStyle)));
        }
    }
    folder.scene = Decide(folder.statements, mStory, Confidence::Medium).scene;
    return folder;
}

void NameFolders::ReadNumbered() {
    std::unordered_map<std::string, std::vector<std::size_t>> siblings;
    std::vector<NamePieces> pieces;
    for (std::size_t at = 0; at < mFolders.size(); ++at) {
        std::string_view parent = mFolders[at].path;
        pieces.push_back(CutName(TakeLastName(parent), &mStory));
        if (!pieces[at].numbers.empty() && pieces[at].numbers.front().place == 0 && pieces[at].numbers.front().padded) {
            pieces[at].unknownWords = false; // "012 - Kitchen"
        }
        if (IsNumberAlone(pieces[at]) && mFolders[at].statements.empty() && mStyle == SlateStyle::Scene) {
            siblings[std::string(parent) + '/' + pieces[at].shape].push_back(at);
        }
    }
    for (const auto& [key, folders] : siblings) {
        std::vector<KnownName> names;
        for (const std::size_t at : folders) {
            names.push_back({&pieces[at], std::nullopt, false});
        }
        const NamePattern pattern = ReadPattern(names, mStory);
        if (pattern.rule != SlateRule::NumberAlone) {
            continue;
        }
        for (const std::size_t at : folders) {
            std::vector<SlateReading> readings = ReadByPattern(pieces[at], pattern);
            const NamedNumber& number = pieces[at].numbers.front();
            if (folders.size() < 3 && !pattern.counting && (number.padded || number.value > 31)) {
                readings.front().confidence = Confidence::Medium; // 013 is a scene, 13 may be a day
            }
            std::string_view path = mFolders[at].path;
            mFolders[at].statements.push_back(StateName(Source::FolderName, TakeLastName(path), std::move(readings)));
        }
    }
}

std::string_view TakeLastName(std::string_view& path) {
    path = path.substr(0, path.find_last_not_of('/') + 1);
    const std::size_t begin = path.rfind('/') + 1;
    const std::string_view name = path.substr(begin);
    path = path.substr(0, begin == 0 ? 0 : begin - 1);
    return name;
}

std::vector<SlateReading> OfStyle(std::vector<SlateReading> readings, SlateStyle style) {
    std::erase_if(readings, [style](const SlateReading& reading) {
        return style == SlateStyle::Continuous && reading.rule != SlateRule::SceneWord;
    });
    return readings;
}

} // namespace zonstory
