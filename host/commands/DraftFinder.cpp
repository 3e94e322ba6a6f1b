#include "commands/DraftFinder.h"

#include "commands/SceneMatching.h"
#include "match/SceneField.h"

namespace zonstory {

using zonstoryparser::CarriedScene;
using zonstoryparser::SceneComparison;

const char* DraftStateWord(DraftState state) {
    switch (state) {
    case DraftState::Current:
        return "current";
    case DraftState::Outdated:
        return "outdated";
    case DraftState::Other:
        return "other";
    case DraftState::None:
        return "none";
    case DraftState::Unknown:
        break;
    }
    return "unknown";
}

DraftFinder::Draft::Draft(const zonstoryparser::Talewright& story)
    : scenes(SceneSelection(story).All()), slates(NumbersOf(SceneSelection(story))), texts(scenes.size()) {
    for (std::size_t index = 0; index < scenes.size(); ++index) {
        numbers.push_back(zoncore::UTF16to8(NumberToWrite(scenes[index])));
        byNumber[numbers.back()].push_back(index);
    }
}

const CarriedScene& DraftFinder::Draft::TextOf(std::size_t index) {
    if (!texts[index]) {
        texts[index] = zonstoryparser::SceneToCarry(scenes[index].scene);
    }
    return *texts[index];
}

std::vector<std::size_t> DraftFinder::Draft::Named(const std::string& number) const {
    const auto found = byNumber.find(number);
    return found == byNumber.end() ? ScenesNamed(number, slates) : found->second;
}

std::optional<std::size_t> DraftFinder::Draft::Find(const std::string& number, const CarriedScene& carried) {
    for (const std::size_t index : Named(number)) {
        if (TextOf(index) == carried) {
            return index;
        }
    }
    return std::nullopt;
}

DraftFinder::DraftFinder(const zonstoryparser::Talewright* oldDraft, const zonstoryparser::Talewright& newDraft,
                         const zonstoryparser::StoryComparison& comparison)
    : mNew(newDraft) {
    if (oldDraft != nullptr) {
        mOld.emplace(*oldDraft);
    }
    for (const SceneComparison& scene : comparison.scenes) {
        if (scene.oldPosition && scene.newPosition) {
            mNewOfOld.emplace(*scene.oldPosition - 1, *scene.newPosition - 1);
        }
    }
}

DraftAnswer DraftFinder::Find(const std::string& number, const CarriedScene& carried, bool isOfAnotherDraft) {
    if (carried.IsEmpty()) {
        return {DraftState::None, std::nullopt, number};
    }
    if (const auto index = mNew.Find(number, carried)) {
        return Answer(DraftState::Current, *index);
    }
    if (const auto index = mOld ? mOld->Find(number, carried) : std::nullopt) { // the number may mean another scene now
        const auto pair = mNewOfOld.find(*index);
        return pair == mNewOfOld.end() ? DraftAnswer{DraftState::Unknown, std::nullopt, number}
                                       : Answer(DraftState::Outdated, pair->second);
    }
    const std::vector<std::size_t> named = mNew.Named(number);
    return named.empty() ? DraftAnswer{DraftState::Unknown, std::nullopt, number}
                         : Answer(!mOld && isOfAnotherDraft ? DraftState::Outdated : DraftState::Other, named.front());
}

DraftAnswer DraftFinder::Answer(DraftState state, std::size_t newIndex) const {
    return {state, newIndex + 1, mNew.numbers[newIndex]};
}

} // namespace zonstory
