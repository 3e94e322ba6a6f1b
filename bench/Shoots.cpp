#include "Shoots.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <random>
#include <set>

#include "ShootTables.h"

namespace zonstory::bench {

namespace {

constexpr int kShootsOfARow = 12;

// On purpose: the remainder and not a distribution, whose numbers differ between libraries.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : mEngine(seed) {}
    std::size_t Below(std::size_t bound) { return mEngine() % bound; }
    std::size_t Between(std::size_t least, std::size_t most) { return least + Below(most - least + 1); }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    template <typename Table>
    auto Any(const Table& table) {
        return table[Below(std::size(table))];
    }

private:
    std::mt19937 mEngine;
};

constexpr const char* kTitles[] = {"Willow", "THEFERRY", "NightTrain", "Harbour", "KL", "OstWind", "LaMer", "Bread"};
constexpr const char* kWords[] = {"Kitchen", "garden", "Wide",  "street", "Anna",
                                  "close",   "Sunset", "Crowd", "hands",  "door"};

using Fields = std::map<std::string, std::string>;

std::string Padded(std::string text, std::size_t width) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    return std::string(digits < width ? width - digits : 0, '0') + text;
}

std::string FillIn(std::string_view pattern, const Fields& fields, Dice& dice) {
    std::string name;
    while (!pattern.empty()) {
        const std::size_t end = pattern.size();
        const std::size_t open = std::min(pattern.find('{'), end);
        name += pattern.substr(0, open);
        pattern.remove_prefix(std::min(open + 1, pattern.size()));
        const std::size_t close = std::min(pattern.find('}'), pattern.size());
        if (open == end) {
            break;
        }
        std::string field(pattern.substr(0, close));
        pattern.remove_prefix(std::min(close + 1, pattern.size()));
        if (field == "x" || field == "uuid") {
            for (const char c : std::string(field == "x" ? "hhhh" : "hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh")) {
                name += c == 'h' ? "0123456789ABCDEF"[dice.Below(16)] : c;
            }
        } else if (!field.empty()) {
            const std::size_t digit = field.find_first_of("0123456789");
            const std::size_t width = digit < field.size() ? static_cast<std::size_t>(field[digit] - '0') : 0;
            const auto found = fields.find(field.substr(0, digit));
            name += found == fields.end() ? field : Padded(found->second, width);
        }
    }
    return name;
}

std::vector<std::string> MakeStory(Numbers numbers, Dice& dice) {
    std::vector<std::string> story;
    const std::size_t scenes = dice.Between(60, 160);
    for (std::size_t scene = 1; scene <= scenes; ++scene) {
        const std::string number = std::to_string(scene);
        story.push_back(numbers == Numbers::Decimal
                            ? std::to_string(1 + scene / 40) + "." + std::to_string(1 + scene % 40)
                            : number);
        if (numbers == Numbers::Lettered && dice.OneIn(12)) {
            story.push_back(number + "A");
        }
    }
    return story;
}

// A film's set-ups go A, B, … without I and O; a set-up that would make the number of another scene is left out.
std::vector<std::string> SetUps(const std::vector<std::string>& story, const std::string& scene, std::size_t count) {
    std::vector<std::string> setUps;
    for (const char letter : std::string("ABCDEFGHJKLMNPQ")) {
        const bool taken = std::find(story.begin(), story.end(), scene + letter) != story.end();
        if (!taken && setUps.size() < count) {
            setUps.emplace_back(1, letter);
        }
    }
    return setUps;
}

std::string Date(std::size_t day) {
    return "2403" + Padded(std::to_string(day + 4), 2);
}

struct Day {
    Fields fields;
    std::size_t scene = 0;
};

// What the crew shoots, take by take.
std::vector<Day> MakeTakes(const std::vector<std::string>& story, Dice& dice) {
    std::vector<Day> takes;
    Fields fields = {{"T", dice.Any(kTitles)}, {"e", std::to_string(dice.Between(1, 8))}};
    std::size_t counter = dice.OneIn(2) ? 0 : dice.Below(300);
    std::size_t slate = dice.Between(0, 400);
    const std::size_t scenes = dice.Between(3, 10);
    std::set<std::size_t> shot;
    for (std::size_t done = 0; done < scenes; ++done) {
        const std::size_t scene = dice.Below(story.size());
        if (!shot.insert(scene).second) {
            continue;
        }
        const std::string day = std::to_string(1 + done / 4);
        fields["s"] = story[scene];
        fields["d"] = day;
        fields["r"] = std::to_string(1 + done / 2);
        fields["date"] = Date(1 + done / 4);
        fields["Date"] = "20" + Date(1 + done / 4);
        const std::vector<std::string> setUps = SetUps(story, story[scene], dice.Between(1, 5));
        for (std::size_t setUp = 0; setUp < setUps.size(); ++setUp) {
            fields["U"] = setUps[setUp];
            fields["u"] = setUp == 0 ? "" : setUps[setUp - 1];
            fields["h"] = std::to_string(setUp + 1);
            fields["k"] = std::to_string(++slate);
            const std::size_t count = dice.OneIn(4) ? 1 : dice.Between(2, 6);
            for (std::size_t take = 1; take <= count; ++take) {
                fields["t"] = std::to_string(take);
                fields["n"] = std::to_string(++counter);
                fields["c"] = dice.OneIn(3) ? "B" : "A";
                fields["C"] = fields["c"] == "B" ? "2" : "1";
                fields["w"] = dice.Any(kWords);
                fields["time"] = Padded(std::to_string(90000 + counter * 37 % 60 + counter % 59 * 100), 6);
                takes.push_back({fields, scene});
            }
        }
    }
    return takes;
}

bool Has(std::string_view pattern, std::string_view field) {
    return pattern.find(field) != std::string_view::npos;
}

std::vector<MadeClip> MakeClips(std::string_view pattern, const std::vector<Day>& takes, bool ofScenes, Dice& dice) {
    std::vector<MadeClip> clips;
    std::set<std::string> names;
    for (const Day& take : takes) {
        MadeClip clip;
        clip.path = "/Volumes/Media/" + FillIn(pattern, take.fields, dice);
        if (!names.insert(clip.path).second) {
            continue;
        }
        clip.day = static_cast<std::size_t>(&take - takes.data());
        if (ofScenes) {
            clip.scene = take.scene;
            clip.take = Has(pattern, "{t") ? take.fields.at("t") : "";
        }
        clips.push_back(std::move(clip));
    }
    return clips;
}

void AddOthers(Shoot& shoot, Part part, Dice& dice) {
    std::vector<const OtherRow*> rows;
    for (const OtherRow& row : kOthers) {
        if (row.part == part) {
            rows.push_back(&row);
        }
    }
    for (int kinds = 0; kinds < 2; ++kinds) {
        std::vector<Day> takes = MakeTakes(shoot.story, dice);
        takes.resize(std::min(takes.size(), dice.Between(1, 6)));
        const std::string folder = dice.OneIn(2) ? "" : "Other/";
        for (MadeClip& clip : MakeClips(folder + rows[dice.Below(rows.size())]->pattern, takes, false, dice)) {
            shoot.clips.push_back(std::move(clip));
        }
    }
}

Shoot MakeShoot(const NameRow& row, Dice& dice) {
    Shoot shoot = {row.kind, row.pattern, MakeStory(row.numbers, dice), {}, {}};
    shoot.clips = MakeClips(row.pattern, MakeTakes(shoot.story, dice), true, dice);
    return shoot;
}

// One name of a pattern, with nothing beside it to learn from.
Shoot MakeLone(const NameRow& row, Dice& dice) {
    Shoot shoot = MakeShoot(row, dice);
    shoot.kind = "lone";
    shoot.clips = {dice.Any(shoot.clips)};
    return shoot;
}

Shoot MakeSound(const NameRow& row, Dice& dice) {
    Shoot shoot = {row.kind, row.pattern, MakeStory(row.numbers, dice), {}, {}};
    const std::vector<Day> takes = MakeTakes(shoot.story, dice);
    shoot.clips = MakeClips(row.pattern, takes, true, dice);
    const bool every = shoot.kind == "iXML";
    for (std::size_t at = 0; at < shoot.clips.size(); at += every ? 1 : 5) {
        const Fields& fields = takes[shoot.clips[at].day].fields;
        shoot.clips[at].ixmlScene = fields.at("s") + (at % 3 == 0 ? fields.at("U") : "");
        shoot.clips[at].ixmlTake = fields.at("t");
        shoot.clips[at].take = fields.at("t");
    }
    return shoot;
}

Shoot MakeLogged(const LogRow& row, Dice& dice) {
    Shoot shoot = {"log", row.columns, MakeStory(Numbers::Plain, dice), {}, {}};
    const std::vector<Day> takes = MakeTakes(shoot.story, dice);
    shoot.clips = MakeClips(row.file, takes, true, dice);
    std::vector<std::string> patterns;
    std::string_view columns = row.columns;
    while (!columns.empty()) {
        const std::string_view column = columns.substr(0, columns.find('|'));
        const std::size_t sign = column.find('=');
        shoot.log += (patterns.empty() ? "" : std::string(1, row.delimiter)) + std::string(column.substr(0, sign));
        patterns.emplace_back(column.substr(sign + 1));
        columns.remove_prefix(std::min(column.size() + 1, columns.size()));
    }
    shoot.log += '\n';
    for (const Day& take : takes) {
        for (std::size_t at = 0; at < patterns.size(); ++at) {
            shoot.log += (at == 0 ? "" : std::string(1, row.delimiter)) + FillIn(patterns[at], take.fields, dice);
        }
        shoot.log += '\n';
    }
    for (MadeClip& clip : shoot.clips) {
        clip.take = takes[clip.day].fields.at("t");
    }
    return shoot;
}

} // namespace

std::vector<Shoot> MakeShoots(Part part) {
    Dice dice(static_cast<std::uint32_t>(part) + 1);
    std::vector<Shoot> shoots;
    const auto repeat = [&](Part rowPart, const auto& make) {
        for (int count = 0; rowPart == part && count < kShootsOfARow; ++count) {
            shoots.push_back(make());
            if (shoots.back().kind != "lone" && shoots.back().kind != "other" && dice.OneIn(2)) {
                AddOthers(shoots.back(), part, dice);
            }
        }
    };
    for (const NameRow& row : kNames) {
        repeat(row.part, [&] { return MakeShoot(row, dice); });
        repeat(row.part, [&] { return MakeLone(row, dice); });
    }
    for (const LogRow& row : kLogs) {
        repeat(row.part, [&] { return MakeLogged(row, dice); });
    }
    for (const NameRow& row : kSound) {
        repeat(row.part, [&] { return MakeSound(row, dice); });
    }
    for (const OtherRow& row : kOthers) {
        repeat(row.part, [&] {
            Shoot shoot = {"other", row.pattern, MakeStory(Numbers::Plain, dice), {}, {}};
            shoot.clips = MakeClips(row.pattern, MakeTakes(shoot.story, dice), false, dice);
            shoot.clips.resize(dice.OneIn(3) ? 1 : shoot.clips.size());
            return shoot;
        });
    }
    return shoots;
}

} // namespace zonstory::bench
