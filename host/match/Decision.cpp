#include "match/Decision.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include <fmt/format.h>

namespace zonstory {

namespace {

using Fit = SceneNumbers::Fit;

struct HeldReading {
    const SlateReading* reading;
    SceneNumbers::Found found;

    bool Fits() const { return found.fit != Fit::None; }
};

void AddScenes(std::vector<std::size_t>& scenes, const std::vector<std::size_t>& more) {
    scenes.insert(scenes.end(), more.begin(), more.end());
    std::sort(scenes.begin(), scenes.end());
    scenes.erase(std::unique(scenes.begin(), scenes.end()), scenes.end());
}

// ---- One statement ----------------------------------------------------------------------------------------------------

std::vector<HeldReading> HoldAgainst(const SceneNumbers& story, const Statement& statement) {
    std::vector<HeldReading> held;
    held.reserve(statement.readings.size());
    for (const SlateReading& reading : statement.readings) {
        const bool written = statement.source == Source::Xmp && reading.rule == SlateRule::WholeField;
        held.push_back(
            {&reading, written ? story.FindWritten(statement.text) : story.Find(reading.scene, reading.exactOnly)});
        if (reading.rule == SlateRule::WholeField && held.back().Fits()) {
            return {std::move(held.back())};
        }
    }
    // A rival counts where the story has it.
    std::erase_if(held, [](const HeldReading& one) { return one.reading->standing == Standing::Rival && !one.Fits(); });
    return held;
}

// Low readings count only where there are no others.
void DropLow(std::vector<HeldReading>& held) {
    const bool sure = std::any_of(held.begin(), held.end(),
                                  [](const HeldReading& one) { return one.reading->confidence >= Confidence::Medium; });
    if (sure) {
        std::erase_if(held, [](const HeldReading& one) { return one.reading->confidence < Confidence::Medium; });
    }
}

bool IsBetter(const HeldReading& left, const HeldReading& right) {
    const auto rank = [](const HeldReading& one) {
        return std::tuple(one.Fits(), one.reading->confidence, one.found.fit == Fit::Exact,
                          one.reading->standing == Standing::Main);
    };
    return rank(left) > rank(right);
}

// A number named beside those that fit, as surely as they are, and not just another way to read one of them.
const HeldReading* FindUnknown(const std::vector<HeldReading>& held, const HeldReading& best) {
    for (const HeldReading& one : held) {
        const bool sameNumber = std::any_of(held.begin(), held.end(), [&](const HeldReading& other) {
            return other.Fits() && other.reading->place == one.reading->place;
        });
        if (!one.Fits() && !sameNumber && one.reading->confidence >= best.reading->confidence) {
            return &one;
        }
    }
    return nullptr;
}

Evidence Weigh(const Statement& statement, const SceneNumbers& story) {
    Evidence evidence;
    evidence.source = statement.source;
    evidence.text = statement.text;
    evidence.where = statement.where;
    std::vector<HeldReading> held = HoldAgainst(story, statement);
    DropLow(held);
    const auto best = std::min_element(held.begin(), held.end(), IsBetter);
    if (best == held.end()) {
        return evidence;
    }
    evidence.said = best->reading->scene;
    evidence.take = statement.take.empty() ? best->reading->take : statement.take;
    evidence.setUp = best->found.setUp;
    evidence.rule = best->reading->rule;
    evidence.fit = best->found.fit;
    evidence.confidence = std::min(best->reading->confidence, statement.ceiling);
    for (const HeldReading& one : held) {
        AddScenes(evidence.scenes, one.found.scenes);
    }
    if (const HeldReading* const unknown = best->Fits() ? FindUnknown(held, *best) : nullptr) {
        evidence.unknown = unknown->reading->scene;
    }
    return evidence;
}

// ---- All of them ------------------------------------------------------------------------------------------------------

std::vector<Evidence> WeighAll(const std::vector<Statement>& statements, const SceneNumbers& story) {
    std::vector<Evidence> all;
    all.reserve(statements.size());
    for (const Statement& statement : statements) {
        if (Evidence evidence = Weigh(statement, story); evidence.confidence != Confidence::None) {
            all.push_back(std::move(evidence));
        }
    }
    std::stable_sort(all.begin(), all.end(), [](const Evidence& left, const Evidence& right) {
        return std::pair(left.source, right.confidence) < std::pair(right.source, left.confidence);
    });
    return all;
}

using Iterator = std::vector<Evidence>::const_iterator;

// The evidence that decides: that of the strongest source, unless it is of Low confidence and another is not.
std::pair<Iterator, Iterator> FindDeciding(const std::vector<Evidence>& all) {
    const auto isSure = [](const Evidence& evidence) { return evidence.confidence >= Confidence::Medium; };
    const auto sure = std::find_if(all.begin(), all.end(), isSure);
    const auto first = sure == all.end() ? all.begin() : sure;
    const auto end = std::find_if(first, all.end(), [&](const Evidence& evidence) {
        return evidence.source != first->source || isSure(evidence) != isSure(*first);
    });
    return {first, end};
}

bool NamesAnother(const Evidence& evidence, std::size_t scene) {
    return evidence.scenes.empty() || !std::binary_search(evidence.scenes.begin(), evidence.scenes.end(), scene);
}

std::string List(const std::vector<std::size_t>& scenes, const SceneNumbers& story) {
    std::string list;
    for (std::size_t at = 0; at < scenes.size(); ++at) {
        list += at == 0 ? "" : at + 1 == scenes.size() ? " and " : ", ";
        list += SceneLabel(scenes[at], story);
    }
    return list;
}

std::string Quote(const Evidence& evidence) {
    const std::string where = evidence.where.empty() ? "" : " " + evidence.where;
    return fmt::format("{}{} \"{}\"", Name(evidence.source), where, evidence.text);
}

Decision Open(Decision decision, Verdict verdict, std::string reason) {
    decision.verdict = verdict;
    decision.reason = std::move(reason);
    return decision;
}

// What keeps the deciding evidence, which names exactly one scene, from being the answer.
const Evidence* FindSurerDissent(const std::vector<Evidence>& all, const Evidence& deciding, std::size_t scene) {
    for (const Evidence& evidence : all) {
        if (evidence.source > deciding.source && evidence.confidence > deciding.confidence &&
            NamesAnother(evidence, scene)) {
            return &evidence;
        }
    }
    return nullptr;
}

Decision Settle(Decision decision, const std::vector<Evidence>& all, Iterator first, Iterator end,
                const SceneNumbers& story, Confidence bar) {
    std::vector<std::size_t> scenes;
    for (auto one = first; one != end; ++one) {
        AddScenes(scenes, one->scenes);
    }
    const auto unfit = std::find_if(first, end, [](const Evidence& one) { return one.scenes.empty(); });
    const auto unknown = std::find_if(first, end, [](const Evidence& one) { return !one.unknown.empty(); });
    if (scenes.empty()) {
        return Open(std::move(decision), Verdict::Unmatched,
                    fmt::format("{} says {}, which the story does not have", Quote(*first), first->said));
    }
    decision.between = scenes;
    if (unfit != end || unknown != end) {
        const Evidence& other = unfit != end ? *unfit : *unknown;
        return Open(std::move(decision), Verdict::Ambiguous,
                    fmt::format("between {} and {}, which the story does not have", List(scenes, story),
                                unfit != end ? other.said : other.unknown));
    }
    if (scenes.size() > 1) {
        return Open(std::move(decision), Verdict::Ambiguous, "between " + List(scenes, story));
    }
    if (const Evidence* const dissent = FindSurerDissent(all, *first, scenes.front())) {
        AddScenes(decision.between, dissent->scenes);
        return Open(std::move(decision), Verdict::Ambiguous,
                    fmt::format("{} says {}, but {} says {} and is surer", Quote(*first), first->said, Quote(*dissent),
                                dissent->said));
    }
    decision.between.clear();
    if (first->confidence < bar) {
        return Open(std::move(decision), Verdict::Unmatched,
                    fmt::format("perhaps {}, of {} confidence only", SceneLabel(scenes.front(), story),
                                Name(first->confidence)));
    }
    decision.verdict = Verdict::Matched;
    decision.scene = scenes.front();
    return decision;
}

} // namespace

std::string_view Name(Source source) {
    constexpr std::string_view kNames[] = {"log", "iXML", "XMP", "file name", "folder name"};
    return kNames[static_cast<std::size_t>(source)];
}

std::string_view Name(Verdict verdict) {
    constexpr std::string_view kNames[] = {"matched", "ambiguous", "unmatched"};
    return kNames[static_cast<std::size_t>(verdict)];
}

Statement StateField(Source source, std::string_view scene, std::string_view take) {
    Statement statement = StateName(source, scene, ReadSceneField(scene));
    statement.take = CanonicalSceneNumber(take);
    statement.ceiling = Confidence::High;
    return statement;
}

Statement StateName(Source source, std::string_view name, std::vector<SlateReading> readings) {
    Statement statement;
    statement.source = source;
    statement.text = name;
    statement.readings = std::move(readings);
    return statement;
}

Decision Decide(const std::vector<Statement>& statements, const SceneNumbers& story, Confidence bar) {
    const std::vector<Evidence> all = WeighAll(statements, story);
    Decision decision;
    if (all.empty()) {
        decision.reason = "nothing names a scene";
        return decision;
    }
    const auto [first, end] = FindDeciding(all);
    decision.evidence = *first;
    decision = Settle(std::move(decision), all, first, end, story, bar);
    const std::optional<std::size_t> scene =
        first->scenes.size() == 1 ? std::optional(first->scenes.front()) : std::nullopt;
    for (auto one = all.begin(); one != all.end(); ++one) {
        const bool same = scene ? !NamesAnother(*one, *scene) : one->scenes == first->scenes;
        if (one != first && !same) {
            decision.disagreeing.push_back(*one);
        }
        if (scene && same && decision.take.empty()) {
            decision.take = one->take;
        }
    }
    return decision;
}

std::string Explain(const Evidence& evidence, const SceneNumbers& story) {
    std::string line = fmt::format("{}: {}", Quote(evidence), Describe(evidence.rule));
    if (evidence.scenes.empty()) {
        return line + fmt::format("; the story has no {}", evidence.said);
    }
    if (evidence.scenes.size() > 1) {
        return line + fmt::format("; {} may be {}", evidence.said, List(evidence.scenes, story));
    }
    const std::string scene = SceneLabel(evidence.scenes.front(), story);
    if (evidence.fit == Fit::Exact) {
        return line + fmt::format("; {} is a scene of the story", scene);
    }
    return line + fmt::format("; {} is scene {}, set-up {}", evidence.said, scene, evidence.setUp);
}

std::string SceneLabel(std::size_t scene, const SceneNumbers& story) {
    const std::string& number = story.Number(scene);
    const bool unique = !number.empty() && story.Find(CanonicalSceneNumber(number), true).scenes.size() == 1;
    const std::string place = fmt::format("#{}", scene + 1);
    return unique ? number : number.empty() ? place : fmt::format("{} ({})", number, place);
}

} // namespace zonstory
