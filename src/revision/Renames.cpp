#include "revision/Renames.h"

#include <algorithm>
#include <map>
#include <set>

namespace zonstoryparser {

namespace {

constexpr std::size_t kFewestScenes = 2;

bool IsLetter(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') ||
           (unit >= 0xc0 && unit != 0xd7 && unit != 0xf7 && (unit < 0x2000 || unit > 0x206f) && unit != 0x3000);
}

// "CAPTAIN ROTH" as prose writes it: "Captain Roth". Letters beyond Latin 1 stay as they are.
UString WithSmallLetters(const UString& name) {
    UString small = name;
    for (std::size_t index = 1; index < small.size(); ++index) {
        const char16_t unit = small[index];
        const bool isCapital = (unit >= u'A' && unit <= u'Z') || (unit >= 0xc0 && unit <= 0xde && unit != 0xd7);
        if (isCapital && IsLetter(small[index - 1])) {
            small[index] = static_cast<char16_t>(unit + 0x20);
        }
    }
    return small;
}

std::size_t EndOfWord(std::u16string_view text, std::size_t begin) {
    std::size_t end = begin;
    while (end < text.size() && IsLetter(text[end])) {
        ++end;
    }
    return end;
}

/// What became of each name in the scenes of both drafts.
class NameVotes {
public:
    void Add(const UString& from, const UString& to, std::size_t scene) { mVotes[from][to].insert(scene); }

    // Renames among them: `from` is gone, `to` is new, and nothing else came of `from`.
    void AppendTo(std::vector<Rename>& renames, Rename::Kind kind, const std::set<UString>& inOld,
                  const std::set<UString>& inNew) const {
        for (const auto& [from, votes] : mVotes) {
            const auto& [to, scenes] = *votes.begin();
            if (votes.size() == 1 && scenes.size() >= kFewestScenes && inNew.count(from) == 0 && inOld.count(to) == 0) {
                renames.push_back({kind, from, to, scenes.size()});
            }
        }
    }

private:
    std::map<UString, std::map<UString, std::set<std::size_t>>> mVotes;
};

std::set<UString> SpeakersOf(const std::vector<DraftScene>& draft) {
    std::set<UString> names;
    for (const DraftScene& scene : draft) {
        for (const DraftScene::Speech& speech : scene.speeches) {
            names.insert(speech.speaker);
        }
    }
    return names;
}

std::set<UString> PlacesOf(const std::vector<DraftScene>& draft) {
    std::set<UString> names;
    for (const DraftScene& scene : draft) {
        names.insert(scene.content.location);
    }
    return names;
}

// Speeches face each other where there are as many, else where they say the same. A name that is still there in the new
// scene has not been changed in it.
void VoteForSpeakers(const DraftScene& before, const DraftScene& after, std::size_t scene, NameVotes& votes) {
    const bool areAsMany = before.speeches.size() == after.speeches.size();
    std::map<Words, const UString*> saidBy;
    for (const DraftScene::Speech& speech : after.speeches) {
        saidBy.emplace(speech.words, &speech.speaker);
    }
    for (std::size_t index = 0; index < before.speeches.size(); ++index) {
        const DraftScene::Speech& speech = before.speeches[index];
        const auto found = saidBy.find(speech.words);
        const UString* const now = found != saidBy.end() ? found->second
                                   : areAsMany           ? &after.speeches[index].speaker
                                                         : nullptr;
        if (now != nullptr && *now != speech.speaker) {
            votes.Add(speech.speaker, *now, scene);
        }
    }
}

} // namespace

std::vector<Rename> FindRenames(const std::vector<DraftScene>& oldDraft, const std::vector<DraftScene>& newDraft,
                                const ScenePairs& pairs) {
    NameVotes speakers;
    NameVotes places;
    for (std::size_t oldIndex = 0; oldIndex < oldDraft.size(); ++oldIndex) {
        const std::size_t newIndex = pairs.newOf[oldIndex];
        if (newIndex == ScenePairs::kNone || newDraft[newIndex].isOmitted) {
            continue;
        }
        const DraftScene& before = oldDraft[oldIndex];
        const DraftScene& after = newDraft[newIndex];
        VoteForSpeakers(before, after, newIndex, speakers);
        if (before.content.location != after.content.location) {
            places.Add(before.content.location, after.content.location, newIndex);
        }
    }
    std::vector<Rename> renames;
    speakers.AppendTo(renames, Rename::Kind::Character, SpeakersOf(oldDraft), SpeakersOf(newDraft));
    places.AppendTo(renames, Rename::Kind::Place, PlacesOf(oldDraft), PlacesOf(newDraft));
    return renames;
}

Renaming::Renaming(const std::vector<Rename>& renames) {
    for (const Rename& rename : renames) {
        const Name asWritten{rename.from, rename.to};
        const Name inProse{WithSmallLetters(rename.from), WithSmallLetters(rename.to)};
        for (const Name& name : {asWritten, inProse}) {
            const std::size_t end = EndOfWord(name.from, 0);
            if (end > 0) {
                mByFirstWord[name.from.substr(0, end)].push_back(name);
            }
        }
    }
    for (auto& [word, names] : mByFirstWord) { // "ANN LEE" before "ANN"
        std::stable_sort(names.begin(), names.end(),
                         [](const Name& left, const Name& right) { return left.from.size() > right.from.size(); });
    }
}

UString Renaming::Apply(std::u16string_view text) const {
    UString renamed;
    std::size_t index = 0;
    while (index < text.size()) {
        const std::size_t end = EndOfWord(text, index);
        if (end == index) {
            renamed.push_back(text[index++]);
            continue;
        }
        const auto found = mByFirstWord.find(UString(text.substr(index, end - index)));
        const Name* fitting = nullptr;
        if (found != mByFirstWord.end()) {
            const auto fits = [&](const Name& name) {
                return text.compare(index, name.from.size(), name.from) == 0 &&
                       EndOfWord(text, index + name.from.size()) == index + name.from.size();
            };
            const auto name = std::find_if(found->second.begin(), found->second.end(), fits);
            fitting = name != found->second.end() ? &*name : nullptr;
        }
        renamed.append(fitting != nullptr ? std::u16string_view(fitting->to) : text.substr(index, end - index));
        index = fitting != nullptr ? index + fitting->from.size() : end;
    }
    return renamed;
}

} // namespace zonstoryparser
