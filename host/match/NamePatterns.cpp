#include "match/NamePatterns.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "match/PatternReading.h"

namespace zonstory {

namespace {

constexpr std::size_t kGoodFolder = 10; ///< Names of one pattern that make another one odd.

// "A-3", "01_T02", "213-4": what stands below the scene.
std::string TakeBelowScene(const NamePieces& pieces, const NamePattern& pattern) {
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

std::string DescribeParts(const NamePieces& pieces, const NamePattern& pattern, bool lettered) {
    std::string parts;
    for (std::size_t number = 0; number < pieces.numbers.size(); ++number) {
        parts += parts.empty() ? "" : ", ";
        parts += pattern.scene == number                          ? lettered ? "scene, set-up" : "scene"
                 : pattern.take == number                         ? "take"
                 : pieces.numbers[number].word == SlateWord::Shot ? "shot"
                                                                  : "no scene";
    }
    return parts;
}

} // namespace

NamePatterns::NamePatterns(std::span<const std::string> paths, std::span<const std::vector<Statement>> known,
                           const SceneNumbers& story, const NameStyle& style)
    : mStory(story), mStyle(style), mFolders(story, style.slates) {
    mClips.resize(paths.size());
    for (std::size_t at = 0; at < paths.size(); ++at) {
        Clip& clip = mClips[at];
        std::string_view folder = paths[at];
        clip.name = TakeLastName(folder);
        clip.pieces = CutName(WithoutMediaExtension(clip.name), &mStory);
        clip.folder = mFolders.Find(folder);
        if (!known.empty()) {
            clip.known = Decide(known[at], mStory, Confidence::High).scene;
        }
    }
    mFolders.ReadNumbered();
    FormPatterns();
    FindOddOnes();
}

// Names of the same words are one pattern; where known scenes bear it out, whatever words they have.
void NamePatterns::FormPatterns() {
    std::unordered_map<std::string, Clips> shapes;
    std::unordered_map<std::string, Clips> wordless;
    for (std::size_t clip = 0; clip < mClips.size(); ++clip) {
        shapes[mClips[clip].pieces.shape].push_back(clip);
    }
    for (const auto& [shape, clips] : shapes) {
        Clips& alike = wordless[mClips[clips.front()].pieces.wordlessShape];
        alike.insert(alike.end(), clips.begin(), clips.end());
    }
    for (const auto& [shape, clips] : wordless) {
        const NamePattern all = Read(clips);
        if (all.taught) {
            AddPattern(all, clips);
            continue;
        }
        std::unordered_map<std::string_view, Clips> ofWords;
        for (const std::size_t clip : clips) {
            ofWords[mClips[clip].pieces.shape].push_back(clip);
        }
        for (const auto& [words, some] : ofWords) {
            AddPattern(some.size() == clips.size() ? all : Read(some), some);
        }
    }
}

NamePattern NamePatterns::Read(const Clips& clips) const {
    std::vector<KnownName> names;
    names.reserve(clips.size());
    for (const std::size_t at : clips) {
        const Clip& clip = mClips[at];
        const NameFolder& folder = mFolders[clip.folder];
        names.push_back({&clip.pieces, clip.known ? clip.known : folder.scene, folder.below});
    }
    return ReadPattern(names, mStory);
}

void NamePatterns::AddPattern(const NamePattern& pattern, const Clips& clips) {
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
void NamePatterns::FindOddOnes() {
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
        clip.odd = !mStyle.given && pattern.scene && !pattern.proven && pattern.names <= 2 &&
                   pattern.rule != SlateRule::SceneWord && around.good >= kGoodFolder &&
                   around.good * 10 >= around.all * 9 && Sureness(clip.pieces, pattern) >= Confidence::Medium;
    }
}

std::vector<Statement> NamePatterns::Statements(std::size_t at) const {
    const Clip& clip = mClips[at];
    const NameFolder& folder = mFolders[clip.folder];
    std::vector<Statement> statements = {StateName(Source::FileName, clip.name, {})};
    statements.insert(statements.end(), folder.statements.begin(), folder.statements.end());
    std::vector<SlateReading> readings = Readings(clip);
    if (!readings.empty() && (!folder.scene || IsOwnScene(clip, readings))) {
        statements.front().readings = std::move(readings);
    } else if (const std::string take = TakeBelowScene(clip.pieces, mPatterns[clip.pattern].pattern);
               statements.size() > 1) {
        statements[1].take = take;
    }
    return statements;
}

std::vector<SlateReading> NamePatterns::Readings(const Clip& clip) const {
    if (mStyle.given) {
        const std::optional<SlateReading> given = mStyle.given->Read(WithoutMediaExtension(clip.name));
        return given ? std::vector{*given} : std::vector<SlateReading>();
    }
    std::vector<SlateReading> readings =
        OfStyle(ReadByPattern(clip.pieces, mPatterns[clip.pattern].pattern), mStyle.slates);
    for (SlateReading& reading : readings) {
        reading.confidence = clip.odd ? std::min(reading.confidence, Confidence::Low) : reading.confidence;
    }
    return readings;
}

// Whether a name in the folder of a scene names a scene itself, and not a set-up or a slate below it.
bool NamePatterns::IsOwnScene(const Clip& clip, const std::vector<SlateReading>& readings) const {
    const NamePattern& pattern = mPatterns[clip.pattern].pattern;
    if (readings.empty() || mStyle.given || pattern.rule == SlateRule::SceneWord || pattern.taught) {
        return !readings.empty();
    }
    const std::vector<std::size_t> scenes = mStory.Find(readings.front().scene).scenes;
    const NamedNumber& number = clip.pieces.numbers[*pattern.scene];
    const bool same = number.apart.empty() && std::count(scenes.begin(), scenes.end(), mFolders[clip.folder].scene) > 0;
    const bool slate = !number.letters.empty() && pattern.take && !pattern.refuted;
    return same || (slate && pattern.names <= 2);
}

std::vector<std::string> NamePatterns::Lines() const {
    std::vector<std::string> lines;
    for (const auto& [pattern, first, lettered] : mPatterns) {
        const Clip& clip = mClips[first];
        if (!mStyle.given && pattern.scene && pattern.names > 1 &&
            Sureness(clip.pieces, pattern) >= Confidence::Medium) {
            lines.push_back(fmt::format("{} names like {}: {}", pattern.names, WithoutMediaExtension(clip.name),
                                        DescribeParts(clip.pieces, pattern, lettered)));
        }
    }
    return lines;
}

std::vector<std::size_t> NamePatterns::OddOnes() const {
    std::vector<std::size_t> odd;
    for (std::size_t clip = 0; clip < mClips.size(); ++clip) {
        if (mClips[clip].odd) {
            odd.push_back(clip);
        }
    }
    return odd;
}

} // namespace zonstory
