#include <zonstoryparser/StoryComparison.h>

#include <algorithm>
#include <map>
#include <memory>

#include "revision/DraftScene.h"
#include "revision/Renames.h"
#include "revision/ScenePairing.h"

namespace zonstoryparser {

namespace {

constexpr std::size_t kNone = ScenePairs::kNone;

// Two drafts with their words numbered alike, and the old one once more with the names that the new one has.
class DraftComparison {
public:
    DraftComparison(const Talewright& oldStory, const Talewright& newStory)
        : mOld(ReadDraft(oldStory, mNumbers)), mNew(ReadDraft(newStory, mNumbers)) {
        mPairs = PairScenes(mOld, mNew, mNumbers.Count());
        mRenames = FindRenames(mOld, mNew, mPairs);
        const Renaming renaming(mRenames);
        if (!renaming.IsEmpty()) { // names count for likeness, too
            Rename(renaming);
            mPairs = PairScenes(mRenamed, mNew, mNumbers.Count());
        }
    }

    StoryComparison Result() {
        StoryComparison result;
        const std::vector<std::size_t> moved = FindMoved(mPairs);
        const std::multimap<std::size_t, std::size_t> gone = FindGone();
        AppendGone(gone, kNone, result.scenes);
        for (std::size_t newIndex = 0; newIndex < mNew.size(); ++newIndex) {
            const std::size_t oldIndex = mPairs.oldOf[newIndex];
            if (oldIndex == kNone) {
                result.scenes.push_back(Unpaired(std::nullopt, newIndex + 1));
            } else {
                const bool isMoved = std::binary_search(moved.begin(), moved.end(), oldIndex);
                result.scenes.push_back(Compare(oldIndex, newIndex, isMoved));
            }
            AppendGone(gone, newIndex, result.scenes);
        }
        result.ties = std::move(mPairs.ties);
        result.renames = std::move(mRenames);
        return result;
    }

private:
    // The old scenes with new names; the very same where nothing was renamed.
    const std::vector<DraftScene>& Renamed() const { return mRenamed.empty() ? mOld : mRenamed; }

    void Rename(const Renaming& renaming) {
        mRenamed = mOld;
        for (DraftScene& scene : mRenamed) {
            SceneContent& content = scene.content;
            for (UString* text : {&content.heading, &content.location, &content.action}) {
                *text = renaming.Apply(*text);
            }
            for (CharacterDialogue& dialogue : content.dialogues) {
                dialogue.character = renaming.Apply(dialogue.character);
                dialogue.dialogue = renaming.Apply(dialogue.dialogue);
            }
        }
        for (DraftScene& scene : mRenamed) {
            scene.CutWords(mNumbers);
        }
    }

    // Old scenes without a pair, by the new scene that their nearest paired predecessor became.
    std::multimap<std::size_t, std::size_t> FindGone() const {
        std::multimap<std::size_t, std::size_t> gone;
        std::size_t behind = kNone;
        for (std::size_t oldIndex = 0; oldIndex < mOld.size(); ++oldIndex) {
            if (mPairs.newOf[oldIndex] == kNone) {
                gone.emplace(behind, oldIndex);
            } else {
                behind = mPairs.newOf[oldIndex];
            }
        }
        return gone;
    }

    static SceneComparison Unpaired(std::optional<std::size_t> oldPosition, std::optional<std::size_t> newPosition) {
        SceneComparison scene;
        scene.oldPosition = oldPosition;
        scene.newPosition = newPosition;
        scene.state = newPosition ? SceneState::Added : SceneState::Removed;
        return scene;
    }

    static void AppendGone(const std::multimap<std::size_t, std::size_t>& gone, std::size_t behind,
                           std::vector<SceneComparison>& scenes) {
        const auto [first, last] = gone.equal_range(behind);
        std::for_each(first, last,
                      [&](const auto& entry) { scenes.push_back(Unpaired(entry.second + 1, std::nullopt)); });
    }

    SceneComparison Compare(std::size_t oldIndex, std::size_t newIndex, bool isMoved) const {
        const DraftScene& after = mNew[newIndex];
        SceneComparison scene;
        scene.oldPosition = oldIndex + 1;
        scene.newPosition = newIndex + 1;
        scene.isMoved = isMoved;
        for (const DraftScene* before :
             {&mOld[oldIndex], &Renamed()[oldIndex]}) { // a name may have stayed in the prose
            const bool isFirst = before == &mOld[oldIndex];
            scene.headingChanged = (isFirst || scene.headingChanged) && before->heading != after.heading;
            scene.actionChanged = (isFirst || scene.actionChanged) && before->action != after.action;
        }
        scene.durationChanged = mOld[oldIndex].duration != after.duration;
        if (scene.actionChanged) {
            scene.action = CountChanges(Renamed()[oldIndex].action, after.action);
        }
        CompareDialogue(oldIndex, after, scene);
        scene.state = StateOf(mOld[oldIndex], after, scene);
        return scene;
    }

    static SceneState StateOf(const DraftScene& before, const DraftScene& after, const SceneComparison& scene) {
        if (after.isOmitted && !before.isOmitted) {
            return SceneState::Omitted;
        }
        if (!before.number.empty() && !after.number.empty() && before.number != after.number) {
            return SceneState::Renumbered;
        }
        if (scene.HasChanges()) {
            return SceneState::Changed;
        }
        return scene.isMoved ? SceneState::Moved : SceneState::Same;
    }

    struct Said {
        Words before; // with the new names
        Words asItStood;
        Words after;
    };

    void CompareDialogue(std::size_t oldIndex, const DraftScene& after, SceneComparison& scene) const {
        const DraftScene& before = Renamed()[oldIndex];
        if (before.speakers == after.speakers && (before.SaysSame(after) || mOld[oldIndex].SaysSame(after))) {
            return;
        }
        scene.dialogueChanged = true;
        std::vector<UString> order;
        std::map<UString, Said> said;
        const auto add = [&](const DraftScene& draft, const DraftScene& names, Words Said::*side) {
            for (std::size_t index = 0; index < draft.speeches.size(); ++index) {
                const auto [entry, isNew] = said.try_emplace(names.speeches[index].speaker);
                if (isNew) {
                    order.push_back(entry->first);
                }
                const Words& words = draft.speeches[index].words;
                (entry->second.*side).insert((entry->second.*side).end(), words.begin(), words.end());
            }
        };
        add(after, after, &Said::after);
        add(before, before, &Said::before);
        add(mOld[oldIndex], before, &Said::asItStood);
        for (const UString& speaker : order) {
            const Said& words = said[speaker];
            const WordCounts counts =
                words.asItStood == words.after ? WordCounts() : CountChanges(words.before, words.after);
            if (counts.in + counts.out > 0) {
                scene.dialogue.push_back({speaker, counts});
            }
        }
    }

    WordNumbers mNumbers;
    std::vector<DraftScene> mOld;
    std::vector<DraftScene> mNew;
    std::vector<DraftScene> mRenamed;
    ScenePairs mPairs;
    std::vector<zonstoryparser::Rename> mRenames;
};

} // namespace

bool StoryComparison::HasDifferences() const {
    return !renames.empty() || std::any_of(scenes.begin(), scenes.end(), [](const SceneComparison& scene) {
        return scene.state != SceneState::Same;
    });
}

StoryComparison CompareStories(const Talewright& oldStory, const Talewright& newStory) {
    return DraftComparison(oldStory, newStory).Result();
}

} // namespace zonstoryparser
