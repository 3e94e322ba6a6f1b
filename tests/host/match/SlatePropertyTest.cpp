// Whatever a story's numbers are, a name made for one of its scenes never means another.
#include "host/match/Support.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

#include "text/AsciiText.h"

namespace zonstory {
namespace {

// One of several texts with a bar in front of each.
std::string AnyOf(const std::string& texts) {
    const auto bars = static_cast<std::size_t>(std::count(texts.begin(), texts.end(), '|'));
    std::size_t begin = 0;
    for (std::size_t at = *rc::gen::inRange<std::size_t>(0, bars); at-- > 0;) {
        begin = texts.find('|', begin) + 1;
    }
    begin = texts.find('|', begin) + 1;
    return texts.substr(begin, texts.find('|', begin) - begin);
}

std::string ZeroPadded(const std::string& number) {
    const auto digits = *rc::gen::inRange<std::size_t>(0, 5);
    return number.size() < digits ? std::string(digits - number.size(), '0') + number : number;
}

// Few numbers, so that 12, 12A, A12 and 12AB meet in one story.
struct SceneParts {
    std::string prefix = AnyOf("||||A|B");
    std::string number = std::to_string(*rc::gen::inRange(1, 16));
    std::string letter = AnyOf("|||A|B");

    std::string Text() const { return prefix + number + letter; }
};

constexpr char kPatterns[] =
    "|{s}-{t}|{s}_{t}|{s} {t}|{s} - {t}|{s}_T{t}|{s}-T{t}|{s}T{t}|{s} Tk {t}|Sc{s} Tk{t}|Sc{s}Tk{t}|Sc{s}-{t}"
    "|S{s}-T{t}|S{s}T{t}|SCENE {s} TAKE {t}|Scene{s}_Take{t}|Sc. {s} Tk. {t}|Take {t} Scene {s}|Slate {s} Take {t}"
    "|Szene {s} Take {t}|{s}|Sc{s}|Scene {s}|{s}-{t}_PU|{s}-{t}B|{s}PU-{t}|{s}_MOS_T{t}";

constexpr char kNoise[] =
    "|||20240131|2024-01-31|A007C006_160424_R28L|A001_C002_0101AB|1080|1920x1080|4K|24fps|23.976|25p|ProRes422|H264"
    "|01_02_03_04|Day 3|S01E02|v2|WILLOW|ACAM|A|10bit";

void Replace(std::string& pattern, const std::string& what, const std::string& with) {
    if (const std::size_t at = pattern.find(what); at != std::string::npos) {
        pattern.replace(at, what.size(), with);
    }
}

RC_GTEST_PROP(SlateProperties, NameOfASceneNeverMeansAnother, ()) {
    std::vector<std::string> numbers;
    for (std::size_t count = *rc::gen::inRange<std::size_t>(0, 40); count-- > 0;) {
        numbers.push_back(SceneParts().Text());
    }
    const SceneParts scene;
    numbers.push_back(scene.Text());
    const SceneNumbers story(numbers);
    constexpr char kSetUps[] = "|||A|B|C|D|E|F|G|H|J|K|L|M|N|P|Q|R|S|T|U|V|W|X|Y|Z";
    const std::string setUp = AnyOf(kSetUps) + AnyOf(kSetUps);
    // A crew leaves out the set-up that would make the name of another scene.
    RC_PRE(setUp.empty() || story.Find(scene.Text() + setUp, true).scenes.empty());

    std::string name = AnyOf(kPatterns);
    Replace(name, "{s}", scene.prefix + ZeroPadded(scene.number) + scene.letter + setUp);
    Replace(name, "{t}", ZeroPadded(std::to_string(*rc::gen::inRange(1, 30))));
    name = *rc::gen::arbitrary<bool>() ? LowerCase(name) : name;
    const std::string path = AnyOf(kNoise) + "_" + name + "_" + AnyOf(kNoise) + ".mov";
    const std::string found = test::SceneOf(path, story);
    RC_TAG(found.front() == '-' ? "abstained" : "matched");
    RC_LOG() << path << " of " << scene.Text() << " found as " << found << std::endl;
    RC_ASSERT(found.front() == '-' || found == scene.Text());
}

} // namespace
} // namespace zonstory
