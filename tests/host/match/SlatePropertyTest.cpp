// Whatever a story's numbers are, a name made for one of its scenes never means another.
#include <algorithm>
#include <string>
#include <vector>

#include "host/match/Support.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

namespace zonstory {
namespace {

using test::SceneOf;

std::string ZeroPadded(const std::string& number, std::size_t digits) {
    return number.size() < digits ? std::string(digits - number.size(), '0') + number : number;
}

// Few numbers, so that 12, 12A, A12 and 12AB meet in one story.
struct SceneParts {
    std::string prefix, number, letter;

    std::string Text(std::size_t digits = 0) const { return prefix + ZeroPadded(number, digits) + letter; }
};

SceneParts AnyScene() {
    return {*rc::gen::element<std::string>("", "", "", "A", "B"), std::to_string(*rc::gen::inRange(1, 16)),
            *rc::gen::element<std::string>("", "", "A", "B")};
}

std::string AnySetUp() {
    const std::string letters = "ABCDEFGHJKLMNPQRSTUVWXYZ";
    std::string setUp;
    for (int count = *rc::gen::inRange(0, 3); count > 0; --count) {
        setUp += letters[*rc::gen::inRange<std::size_t>(0, letters.size())];
    }
    return setUp;
}

std::string Replaced(std::string pattern, const std::string& what, const std::string& with) {
    const std::size_t at = pattern.find(what);
    return at == std::string::npos ? pattern : pattern.replace(at, what.size(), with);
}

std::string AnyCase(std::string text) {
    if (*rc::gen::arbitrary<bool>()) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    }
    return text;
}

std::string AnyPattern() {
    return *rc::gen::element<std::string>(
        "{s}-{t}", "{s}_{t}", "{s} {t}", "{s} - {t}", "{s}_T{t}", "{s}-T{t}", "{s}T{t}", "{s} Tk {t}", "Sc{s} Tk{t}",
        "Sc{s}Tk{t}", "Sc{s}-{t}", "S{s}-T{t}", "S{s}T{t}", "SCENE {s} TAKE {t}", "Scene{s}_Take{t}", "Sc. {s} Tk. {t}",
        "Take {t} Scene {s}", "Slate {s} Take {t}", "Szene {s} Take {t}", "{s}", "Sc{s}", "Scene {s}", "{s}-{t}_PU",
        "{s}-{t}B", "{s}PU-{t}", "{s}_MOS_T{t}");
}

std::string AnyNoise() {
    return *rc::gen::element<std::string>("", "", "20240131", "2024-01-31", "A007C006_160424_R28L", "A001_C002_0101AB",
                                          "1080", "1920x1080", "4K", "24fps", "23.976", "25p", "ProRes422", "H264",
                                          "01_02_03_04", "Day 3", "S01E02", "v2", "WILLOW", "ACAM", "A", "10bit");
}

RC_GTEST_PROP(SlateProperties, NameOfASceneNeverMeansAnother, ()) {
    const std::vector<SceneParts> parts =
        *rc::gen::container<std::vector<SceneParts>>(*rc::gen::inRange<std::size_t>(1, 40), rc::gen::exec(AnyScene));
    std::vector<std::string> numbers;
    for (const SceneParts& scene : parts) {
        numbers.push_back(scene.Text());
    }
    const SceneNumbers story(numbers);
    const SceneParts scene = *rc::gen::elementOf(parts);
    const std::string setUp = AnySetUp();
    // A crew leaves out the set-up that would make the name of another scene.
    RC_PRE(setUp.empty() || story.Find(scene.Text() + setUp, true).scenes.empty());

    std::string name = Replaced(AnyPattern(), "{s}", scene.Text(*rc::gen::inRange<std::size_t>(0, 5)) + setUp);
    name = Replaced(name, "{t}",
                    ZeroPadded(std::to_string(*rc::gen::inRange(1, 30)), *rc::gen::inRange<std::size_t>(0, 4)));
    const std::string front = AnyNoise();
    const std::string back = AnyNoise();
    const std::string path =
        front + (front.empty() ? "" : "_") + AnyCase(name) + (back.empty() ? "" : "_") + back + ".mov";

    const std::string found = SceneOf(path, story);
    RC_TAG(found.front() == '-' ? "abstained" : "matched");
    RC_LOG() << path << " of " << scene.Text() << " found as " << found << std::endl;
    RC_ASSERT(found.front() == '-' || found == scene.Text());
}

// The same, where the name has all that a slate should: no reason to abstain.
RC_GTEST_PROP(SlateProperties, FullSlateOfAPlainStoryIsFound, ()) {
    std::vector<std::string> numbers;
    for (int scene = 1; scene <= 200; ++scene) {
        numbers.push_back(std::to_string(scene));
    }
    const std::string scene = *rc::gen::elementOf(numbers);
    const std::string letters = "ABCEFGJLMNQRSTUVWYZ"; // without those of sizes and rates
    const std::string setUp(1, letters[*rc::gen::inRange<std::size_t>(0, letters.size())]);
    const std::string pattern = *rc::gen::element<std::string>("{s}-{t}", "{s}_T{t}", "Sc{s} Tk{t}", "S{s}-T{t}",
                                                               "{s} {t}", "SCENE {s} TAKE {t}");
    std::string name = Replaced(pattern, "{s}", ZeroPadded(scene, *rc::gen::inRange<std::size_t>(0, 4)) + setUp);
    name = Replaced(name, "{t}", std::to_string(*rc::gen::inRange(1, 30)));
    RC_ASSERT(SceneOf(AnyCase(name) + ".mov", SceneNumbers(numbers)) == scene);
}

// What cameras and post houses put into names says nothing of scenes, however it is put together.
RC_GTEST_PROP(SlateProperties, NoiseMeansNothing, ()) {
    std::vector<std::string> numbers;
    for (int scene = 1; scene <= 1100; ++scene) {
        numbers.push_back(std::to_string(scene));
    }
    static const SceneNumbers story(numbers);
    std::string name;
    const std::string separator = *rc::gen::element<std::string>("_", "-", " ");
    for (int count = *rc::gen::inRange(1, 5); count > 0; --count) {
        name += (name.empty() ? "" : separator) + AnyNoise();
    }
    RC_ASSERT(SceneOf(AnyCase(name) + ".mov", story) == "-");
}

} // namespace
} // namespace zonstory
