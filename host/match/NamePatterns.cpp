#include "match/NamePatterns.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "match/NamePattern.h"
#include "match/SceneText.h"

namespace zonstory {

namespace {

constexpr int kFoldersAbove = 3;        ///< Beyond the clip's own; further up are the production's and the machine's.
constexpr std::size_t kGoodFolder = 10; ///< Names of one pattern that make another one odd.

Statement StateName(Source source, std::string_view name, std::vector<SlateReading> readings) {
    Statement statement;
    statement.source = source;
    statement.text = name;
    statement.readings = std::move(readings);
    return statement;
}

// Cuts the last name off a path; empty when there is none left.
std::string_view TakeLastName(std::string_view& path) {
    const std::size_t end = path.find_last_not_of('/');
    path = path.substr(0, end == std::string_view::npos ? 0 : end + 1);
    const std::size_t slash = path.rfind('/');
    const std::string_view name = path.substr(slash + 1);
    path = path.substr(0, slash == std::string_view::npos ? 0 : slash);
    return name;
}

// The scene that metadata, a log or a folder gives without doubt.
std::optional<std::size_t> SceneOf(const std::vector<Statement>& statements, const SceneNumbers& story) {
    return statements.empty() ? std::nullopt : Decide(statements, story, Confidence::High).scene;
}

} // namespace

class NamePatterns::Reader {
public:
    Reader(std::span<const std::string> paths, std::span<const std::vector<Statement>> known, const SceneNumbers& story,
           const NameStyle& style)
        : mStory(story), mStyle(style.slates), mGiven(style.given) {
        mClips.reserve(paths.size());
        for (std::size_t clip = 0; clip < paths.size(); ++clip) {
            AddClip(paths[clip], known.empty() ? std::vector<Statement>() : known[clip]);
        }
        ReadNumberedFolders();
        FormPatterns();
        FindOddOnes();
    }

    std::vector<Statement> Statements(std::size_t at) const {
        const Clip& clip = mClips[at];
        const Folder& folder = mFolders[clip.folder];
        const NamePattern& pattern = mPatterns[clip.pattern].pattern;
        std::vector<SlateReading> readings = OfStyle(ReadByPattern(clip.pieces, pattern));
        if (mGiven) {
            const std::optional<SlateReading> given = mGiven->Read(WithoutMediaExtension(clip.name));
            readings = given ? std::vector{*given} : std::vector<SlateReading>();
        }
        if (clip.odd) {
            for (SlateReading& reading : readings) {
                reading.confidence = std::min(reading.confidence, Confidence::Low);
            }
        }
        std::vector<Statement> statements = {StateName(Source::FileName, clip.name, {})};
        for (const Statement& statement : folder.statements) {
            statements.push_back(statement);
        }
        if (!folder.scene || IsOwnScene(clip, pattern, readings, *folder.scene)) {
            statements.front().readings = std::move(readings);
        } else if (const std::string take = TakeBelowScene(clip.pieces, pattern); statements.size() > 1) {
            statements[1].take = take;
        }
        return statements;
    }

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const Group& group : mPatterns) {
            const NamePattern& pattern = group.pattern;
            const bool used = !mGiven && pattern.scene && pattern.names > 1 &&
                              pattern.Sureness(mClips[group.first].pieces) >= Confidence::Medium;
            if (!used) {
                continue;
            }
            const NamePieces& pieces = mClips[group.first].pieces;
            std::string parts;
            for (std::size_t number = 0; number < pieces.numbers.size(); ++number) {
                const bool scene = pattern.scene == number;
                parts += parts.empty() ? "" : ", ";
                parts += scene                                            ? group.lettered ? "scene, set-up" : "scene"
                         : pattern.take == number                         ? "take"
                         : pieces.numbers[number].word == SlateWord::Shot ? "shot"
                                                                          : "no scene";
            }
            lines.push_back(fmt::format("{} names like {}: {}", pattern.names,
                                        WithoutMediaExtension(mClips[group.first].name), parts));
        }
        return lines;
    }

    std::vector<std::size_t> OddOnes() const {
        std::vector<std::size_t> odd;
        for (std::size_t clip = 0; clip < mClips.size(); ++clip) {
            if (mClips[clip].odd) {
                odd.push_back(clip);
            }
        }
        return odd;
    }

private:
    struct Clip {
        std::string name;
        NamePieces pieces;
        std::optional<std::size_t> known;
        std::size_t folder = 0;
        std::size_t pattern = 0;
        bool odd = false;
    };

    struct Folder {
        std::string_view path;
        std::vector<Statement> statements; ///< The nearest first.
        std::optional<std::size_t> scene;  ///< That a word names.
        bool below = false;                ///< Is a shot's or a take's.
    };

    struct Group {
        NamePattern pattern;
        std::size_t first = 0; ///< A clip of it, for an example.
        bool lettered = false;
    };

    void AddClip(std::string_view path, const std::vector<Statement>& known) {
        Clip clip;
        std::string_view folder = path;
        clip.name = TakeLastName(folder);
        clip.pieces = CutName(WithoutMediaExtension(clip.name), &mStory);
        clip.folder = FindFolder(folder);
        clip.known = SceneOf(known, mStory);
        mClips.push_back(std::move(clip));
    }

    // ---- Folders ------------------------------------------------------------------------------------------------------

    std::size_t FindFolder(std::string_view path) {
        const auto [found, isNew] = mFolderPlaces.emplace(path, mFolders.size());
        if (isNew) {
            mFolders.push_back(ReadFolder(path));
        }
        return found->second;
    }

    // A scene that leads to its clips over folders for shots, cameras and cards: "Scene 12/A cam/A007/".
    Folder ReadFolder(std::string_view path) const {
        Folder folder;
        folder.path = path;
        for (int above = 0; above <= kFoldersAbove && !path.empty(); ++above) {
            const std::string_view name = TakeLastName(path);
            const NamePieces pieces = CutName(name, &mStory);
            const KnownName alone = {&pieces, std::nullopt, folder.below};
            const NamePattern pattern = ReadPattern({&alone, 1}, mStory);
            folder.below = folder.below || pieces.Has(SlateWord::Shot) || pieces.Has(SlateWord::Take);
            const bool words = pattern.rule == SlateRule::SceneWord || pattern.rule == SlateRule::SceneLetter;
            if (words && pattern.scene && pattern.Sureness(pieces) >= Confidence::Medium) {
                folder.statements.push_back(
                    StateName(Source::FolderName, name, OfStyle(ReadByPattern(pieces, pattern))));
            }
        }
        folder.scene =
            folder.statements.empty() ? std::nullopt : Decide(folder.statements, mStory, Confidence::Medium).scene;
        return folder;
    }

    // Folders that are called by numbers alone, 012, 014, 17A; 1, 2, 3 are cards and days.
    void ReadNumberedFolders() {
        std::unordered_map<std::string, std::vector<std::size_t>> siblings;
        std::vector<NamePieces> pieces;
        for (std::size_t at = 0; at < mFolders.size(); ++at) {
            std::string_view parent = mFolders[at].path;
            pieces.push_back(CutName(TakeLastName(parent), &mStory));
            const bool number = pieces.back().numbers.size() == 1 && !pieces.back().unknownWords &&
                                !pieces.back().noise && mFolders[at].statements.empty();
            if (number && mStyle == SlateStyle::Scene) {
                siblings[std::string(parent) + '/' + pieces.back().shape].push_back(at);
            }
        }
        for (const auto& [key, folders] : siblings) {
            std::vector<KnownName> names;
            for (const std::size_t at : folders) {
                names.push_back({&pieces[at], std::nullopt, false});
            }
            const NamePattern pattern = ReadPattern(names, mStory);
            for (const std::size_t at : folders) {
                std::vector<SlateReading> readings = ReadByPattern(pieces[at], pattern);
                if (folders.size() < 3 && !pattern.counting &&
                    (pieces[at].numbers.front().padded || pieces[at].numbers.front().value > 31)) {
                    readings.front().confidence = Confidence::Medium; // 013 is a scene, 13 may be a day
                }
                if (pattern.rule == SlateRule::NumberAlone) {
                    std::string_view path = mFolders[at].path;
                    mFolders[at].statements.push_back(
                        StateName(Source::FolderName, TakeLastName(path), std::move(readings)));
                }
            }
        }
    }

    // ---- Patterns -----------------------------------------------------------------------------------------------------

    void FormPatterns() {
        std::unordered_map<std::string, std::vector<std::size_t>> shapes;
        std::unordered_map<std::string, std::vector<std::size_t>> wordless;
        for (std::size_t clip = 0; clip < mClips.size(); ++clip) {
            shapes[mClips[clip].pieces.shape].push_back(clip);
        }
        for (const auto& [shape, clips] : shapes) {
            wordless[mClips[clips.front()].pieces.wordlessShape].insert(
                wordless[mClips[clips.front()].pieces.wordlessShape].end(), clips.begin(), clips.end());
        }
        for (const auto& [shape, clips] : wordless) {
            const NamePattern all = Read(clips);
            if (all.taught) {
                AddPattern(all, clips);
                continue;
            }
            std::unordered_map<std::string_view, std::vector<std::size_t>> ofWords;
            for (const std::size_t clip : clips) {
                ofWords[mClips[clip].pieces.shape].push_back(clip);
            }
            for (const auto& [words, some] : ofWords) {
                AddPattern(some.size() == clips.size() ? all : Read(some), some);
            }
        }
    }

    NamePattern Read(const std::vector<std::size_t>& clips) const {
        std::vector<KnownName> names;
        names.reserve(clips.size());
        for (const std::size_t clip : clips) {
            const Folder& folder = mFolders[mClips[clip].folder];
            names.push_back(
                {&mClips[clip].pieces, mClips[clip].known ? mClips[clip].known : folder.scene, folder.below});
        }
        return ReadPattern(names, mStory);
    }

    void AddPattern(const NamePattern& pattern, const std::vector<std::size_t>& clips) {
        Group group;
        group.pattern = pattern;
        group.first = *std::min_element(clips.begin(), clips.end());
        for (const std::size_t clip : clips) {
            mClips[clip].pattern = mPatterns.size();
            const std::vector<NamedNumber>& numbers = mClips[clip].pieces.numbers;
            if (pattern.scene && !numbers[*pattern.scene].letters.empty()) {
                group.lettered = true;
                group.first = numbers[*pattern.scene].letters.size() == 1 ? clip : group.first;
            }
        }
        mPatterns.push_back(group);
    }

    // Names that stand nearly alone beside many that bear one another out.
    void FindOddOnes() {
        struct Around {
            std::size_t good = 0, all = 0;
        };
        std::vector<Around> folders(mFolders.size());
        for (const Clip& clip : mClips) {
            const NamePattern& pattern = mPatterns[clip.pattern].pattern;
            folders[clip.folder].all += pattern.scene ? 1 : 0;
            folders[clip.folder].good += pattern.scene && pattern.proven ? 1 : 0;
        }
        for (Clip& clip : mClips) {
            const NamePattern& pattern = mPatterns[clip.pattern].pattern;
            const Around& around = folders[clip.folder];
            clip.odd = !mGiven && pattern.scene && !pattern.proven && pattern.names <= 2 &&
                       pattern.rule != SlateRule::SceneWord && around.good >= kGoodFolder &&
                       around.good * 10 >= around.all * 9 && pattern.Sureness(clip.pieces) >= Confidence::Medium;
        }
    }

    // ---- One clip -------------------------------------------------------------------------------------------------------

    std::vector<SlateReading> OfStyle(std::vector<SlateReading> readings) const {
        std::erase_if(readings, [this](const SlateReading& reading) {
            return mStyle == SlateStyle::Continuous && reading.rule != SlateRule::SceneWord;
        });
        return readings;
    }

    // Whether a name in the folder of a scene names a scene itself, and not a set-up or a slate below it.
    bool IsOwnScene(const Clip& clip, const NamePattern& pattern, const std::vector<SlateReading>& readings,
                    std::size_t folderScene) const {
        if (readings.empty()) {
            return false;
        }
        if (mGiven || pattern.rule == SlateRule::SceneWord || pattern.taught) {
            return true;
        }
        const SceneNumbers::Found found = mStory.Find(readings.front().scene);
        const bool same = clip.pieces.numbers[*pattern.scene].apart.empty() &&
                          std::find(found.scenes.begin(), found.scenes.end(), folderScene) != found.scenes.end();
        const bool slate = !clip.pieces.numbers[*pattern.scene].letters.empty() && pattern.take && !pattern.refuted;
        return same || (slate && pattern.names <= 2);
    }

    // "A-3", "01_T02", "213-4": what stands below the scene.
    static std::string TakeBelowScene(const NamePieces& pieces, const NamePattern& pattern) {
        if (pattern.take) {
            return pieces.numbers[*pattern.take].digits;
        }
        const NamedNumber* take = nullptr;
        std::size_t free = 0;
        for (const NamedNumber& number : pieces.numbers) {
            free += number.word == SlateWord::Unknown ? 1 : 0;
            if (number.word == SlateWord::Take) {
                return number.digits;
            }
            take = number.IsTake() && number.word == SlateWord::Unknown ? &number : take;
        }
        return take != nullptr && (free > 1 || !take->apart.empty()) ? take->digits : std::string();
    }

    const SceneNumbers& mStory;
    SlateStyle mStyle;
    std::optional<GivenPattern> mGiven;
    std::vector<Clip> mClips;
    std::vector<Folder> mFolders;
    std::unordered_map<std::string_view, std::size_t> mFolderPlaces;
    std::vector<Group> mPatterns;
};

NamePatterns::NamePatterns(std::span<const std::string> paths, std::span<const std::vector<Statement>> known,
                           const SceneNumbers& story, const NameStyle& style)
    : mReader(std::make_unique<const Reader>(paths, known, story, style)) {}

NamePatterns::~NamePatterns() = default;

std::vector<Statement> NamePatterns::Statements(std::size_t clip) const {
    return mReader->Statements(clip);
}

std::vector<std::string> NamePatterns::Lines() const {
    return mReader->Lines();
}

std::vector<std::size_t> NamePatterns::OddOnes() const {
    return mReader->OddOnes();
}

} // namespace zonstory
