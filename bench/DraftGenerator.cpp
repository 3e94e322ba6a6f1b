#include "DraftGenerator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace bench {

namespace {

using namespace zonstoryparser;

constexpr std::size_t kCharacters = 14;
constexpr std::size_t kWordsOfALanguage = 6000;

// A linear congruence, so that drafts do not depend on the standard library's generators.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : mState(seed * 2654435761U + 1) {}

    std::size_t Below(std::size_t bound) {
        mState = mState * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::size_t>((mState >> 33) % bound);
    }
    bool Percent(unsigned percent) { return Below(100) < percent; }
    // Few words are used often and most seldom, as in every language.
    std::size_t WordRank() {
        const double share = static_cast<double>(Below(1U << 20U)) / (1U << 20U);
        return static_cast<std::size_t>(std::pow(static_cast<double>(kWordsOfALanguage), share)) - 1;
    }

private:
    std::uint64_t mState;
};

UString Name(std::size_t rank, bool inCapitals) {
    constexpr std::u16string_view kSyllables = u"balecidofugemihonujakepilorasetivu";
    UString word;
    for (std::size_t rest = rank + 7; rest > 0; rest /= kSyllables.size() / 2) {
        word += kSyllables.substr(rest % (kSyllables.size() / 2) * 2, 2);
    }
    if (inCapitals) {
        std::transform(word.begin(), word.end(), word.begin(),
                       [](char16_t unit) { return static_cast<char16_t>(unit - 32); });
    }
    return word;
}

using Text = std::vector<UString>;

struct MadeScene {
    std::optional<std::size_t> source; ///< The old scene that it comes from.
    SceneState state = SceneState::Same;
    bool isMoved = false;
    UString number;
    std::size_t place = 0;
    bool isNight = false;
    bool isOmitted = false;
    Text action;
    std::vector<std::pair<std::size_t, Text>> speeches; ///< Character and what he says.
};

using MadeDraft = std::vector<MadeScene>;
/// What characters and places are called in a draft; the others by their own number.
struct Names {
    std::map<std::size_t, std::size_t> characters;
    std::map<std::size_t, std::size_t> places;
};

class Writer {
public:
    Writer(const RevisionPlan& plan, std::uint32_t seed) : mPlan(plan), mDice(seed) {}

    Revision Write() {
        MadeDraft before;
        for (std::size_t index = 0; index < mPlan.scenes; ++index) {
            before.push_back(NewScene());
            before.back().source = index;
            before.back().number = Number(index + 1);
        }
        const MadeDraft after = Revise(before);
        Names renamed;
        Rename(mPlan.renamedCharacters, kCharacters, renamed.characters);
        Rename(mPlan.renamedPlaces, Places(), renamed.places);
        KeepPlacesOfOneScene(before, after, renamed.places);
        return {Tell(before, {}), Tell(after, renamed), Key(before, after)};
    }

private:
    std::size_t Places() const { return mPlan.scenes / 4 + 1; }

    static UString Number(std::size_t number) {
        const std::string digits = std::to_string(number);
        return UString(digits.begin(), digits.end());
    }

    Text NewText(std::size_t count) {
        Text text(count);
        for (UString& word : text) {
            word = Name(mDice.WordRank(), false);
        }
        return text;
    }

    MadeScene NewScene() {
        MadeScene scene;
        scene.place = mDice.Below(Places());
        scene.isNight = mDice.Percent(40);
        scene.action = NewText(10 + mDice.Below(60));
        for (std::size_t speeches = mDice.Below(9); speeches > 0; --speeches) {
            scene.speeches.emplace_back(mDice.Below(kCharacters), NewText(3 + mDice.Below(20)));
        }
        return scene;
    }

    void Rewrite(Text& text) {
        for (UString& word : text) {
            if (mDice.Percent(mPlan.wordsRewritten)) {
                word = Name(mDice.WordRank(), false);
            }
        }
    }

    static MadeScene SplitOff(MadeScene& scene) {
        MadeScene half;
        half.state = SceneState::Added;
        half.number = scene.number + u"A";
        half.place = scene.place;
        half.isNight = scene.isNight;
        const auto middle = static_cast<std::ptrdiff_t>(scene.action.size() * 3 / 5);
        half.action.assign(scene.action.begin() + middle, scene.action.end());
        scene.action.resize(static_cast<std::size_t>(middle));
        scene.state = SceneState::Changed;
        return half;
    }

    MadeDraft Revise(const MadeDraft& before) {
        MadeDraft after;
        std::vector<MadeScene> moving;
        for (MadeScene scene : before) {
            std::size_t die = mDice.Below(100);
            const auto happens = [&die](unsigned percent) {
                const bool does = die < percent;
                die = does ? 100 : die - percent;
                return does;
            };
            const bool isLast = scene.source == before.size() - 1;
            if (happens(mPlan.rewritten)) {
                const MadeScene first = scene;
                Rewrite(scene.action);
                for (auto& [speaker, text] : scene.speeches) {
                    Rewrite(text);
                }
                const bool isSame = first.action == scene.action && first.speeches == scene.speeches;
                scene.state = isSame ? SceneState::Same : SceneState::Changed;
            } else if (happens(mPlan.removed)) {
                continue;
            } else if (happens(mPlan.omitted)) {
                scene.isOmitted = true;
                scene.state = SceneState::Omitted;
            } else if (happens(mPlan.moved) && !isLast) {
                scene.state = SceneState::Moved;
                scene.isMoved = true;
                moving.push_back(scene);
                continue;
            } else if (happens(mPlan.split)) {
                MadeScene half = SplitOff(scene);
                after.push_back(scene);
                scene = half;
            } else if (happens(mPlan.added)) {
                after.push_back(scene);
                scene = NewScene();
                scene.state = SceneState::Added;
                scene.number = after.back().number + u"A";
            }
            after.push_back(scene);
        }
        for (const MadeScene& scene : moving) { // far from where it was, so that nothing else can be said to have moved
            const std::size_t away = after.size() / 3 + mDice.Below(after.size() / 3);
            after.insert(after.begin() + static_cast<std::ptrdiff_t>((*scene.source + away) % after.size()), scene);
        }
        if (mPlan.isRenumbered) {
            Renumber(after);
        }
        return after;
    }

    static void Renumber(MadeDraft& draft) {
        for (std::size_t index = 0; index < draft.size(); ++index) {
            const UString number = Number(index + 1);
            const bool isOther = draft[index].source && draft[index].number != number && !draft[index].isOmitted;
            draft[index].state = isOther ? SceneState::Renumbered : draft[index].state;
            draft[index].number = number;
        }
    }

    void Rename(unsigned count, std::size_t all, std::map<std::size_t, std::size_t>& names) {
        for (; count > 0; --count) {
            const std::size_t name = mDice.Below(all);
            names.emplace(name, name + 1000);
        }
    }

    // A place of one scene alone is not renamed but another.
    static void KeepPlacesOfOneScene(const MadeDraft& before, const MadeDraft& after,
                                     std::map<std::size_t, std::size_t>& names) {
        std::map<std::size_t, std::size_t> scenes;
        for (const MadeScene& scene : after) {
            scenes[scene.place] +=
                scene.source && !scene.isOmitted && before[*scene.source].place == scene.place ? 1 : 0;
        }
        for (const auto& [place, count] : scenes) {
            if (count == 1) {
                names.erase(place);
            }
        }
    }

    static std::size_t Called(const std::map<std::size_t, std::size_t>& names, std::size_t name) {
        const auto found = names.find(name);
        return found == names.end() ? name : found->second;
    }

    static void Say(Scene& scene, ElementType kind, const UString& text) {
        boost::intrusive_ptr<Paragraph> paragraph(new Paragraph);
        paragraph->element = kind;
        paragraph->objectID = ObjectID(u"p");
        paragraph->textRuns.emplace_back(new TextRun);
        paragraph->textRuns.back()->text = text;
        scene.paragraphs.push_back(std::move(paragraph));
    }

    static UString Joined(const Text& text) {
        UString joined;
        for (const UString& word : text) {
            joined.append(joined.empty() ? u"" : u" ").append(word);
        }
        return joined;
    }

    boost::intrusive_ptr<Talewright> Tell(const MadeDraft& draft, const Names& names) const {
        boost::intrusive_ptr<Talewright> story(new Talewright);
        story->document = new Document;
        story->document->body = new Stream;
        story->document->body->section = new Section;
        for (const MadeScene& made : draft) {
            boost::intrusive_ptr<Scene> scene(new Scene);
            scene->sceneNumber = mPlan.areNumbered ? made.number : UString();
            if (made.isOmitted) {
                Say(*scene, kSceneHeading, u"OMITTED");
            } else {
                Say(*scene, kSceneHeading,
                    u"INT. " + Name(Called(names.places, made.place) + 50, true) +
                        (made.isNight ? u" - NIGHT" : u" - DAY"));
                Say(*scene, kAction, Joined(made.action));
                for (const auto& [speaker, text] : made.speeches) {
                    Say(*scene, kCharacter, Name(Called(names.characters, speaker) + 300, true));
                    Say(*scene, kDialog, Joined(text));
                }
            }
            story->document->body->section->scenes.push_back(std::move(scene));
        }
        return story;
    }

    static std::vector<SceneComparison> Key(const MadeDraft& before, const MadeDraft& after) {
        std::vector<SceneComparison> key;
        std::vector<bool> isKept(before.size(), false);
        for (std::size_t index = 0; index < after.size(); ++index) {
            SceneComparison scene;
            scene.newPosition = index + 1;
            scene.state = after[index].state;
            scene.isMoved = after[index].isMoved;
            if (after[index].source) {
                scene.oldPosition = *after[index].source + 1;
                isKept[*after[index].source] = true;
            }
            key.push_back(scene);
        }
        for (std::size_t index = 0; index < before.size(); ++index) {
            if (!isKept[index]) {
                SceneComparison scene;
                scene.oldPosition = index + 1;
                scene.state = SceneState::Removed;
                key.push_back(scene);
            }
        }
        return key;
    }

    const RevisionPlan& mPlan;
    Dice mDice;
};

} // namespace

Revision MakeRevision(const RevisionPlan& plan, std::uint32_t seed) {
    return Writer(plan, seed).Write();
}

std::size_t CountMistakes(const Revision& revision, const StoryComparison& comparison) {
    const auto sorted = [](const std::vector<SceneComparison>& scenes) {
        std::vector<std::tuple<std::size_t, std::size_t, SceneState, bool>> rows;
        for (const SceneComparison& scene : scenes) {
            rows.emplace_back(scene.oldPosition.value_or(0), scene.newPosition.value_or(0), scene.state, scene.isMoved);
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    };
    const auto key = sorted(revision.key);
    const auto said = sorted(comparison.scenes);
    std::vector<std::tuple<std::size_t, std::size_t, SceneState, bool>> missed;
    std::set_difference(key.begin(), key.end(), said.begin(), said.end(), std::back_inserter(missed));
    return missed.size();
}

} // namespace bench
