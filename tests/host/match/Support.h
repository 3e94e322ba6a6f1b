#pragma once

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "match/NamePatterns.h"

namespace zonstory {

inline void PrintTo(Confidence confidence, std::ostream* os) {
    *os << Name(confidence);
}

} // namespace zonstory

namespace zonstory::test {

/// "a = b | c = d", over any number of lines.
inline std::vector<std::pair<std::string, std::string>> Rows(std::string table) {
    std::vector<std::pair<std::string, std::string>> rows;
    std::replace(table.begin(), table.end(), '\n', '|');
    for (std::size_t begin = 0; begin < table.size();) {
        const std::size_t end = std::min(table.find('|', begin), table.size());
        const std::size_t sign = table.find(" = ", begin);
        if (sign < end) {
            const std::string value = table.substr(sign + 3, end - sign - 3);
            const std::size_t first = table.find_first_not_of(' ', begin);
            rows.emplace_back(table.substr(first, sign - first), value.substr(0, value.find_last_not_of(' ') + 1));
        }
        begin = end + 1;
    }
    return rows;
}

/// What a path says by itself, where no other names stand beside it.
inline std::vector<Statement> StatePath(const std::string& path, const SceneNumbers& story,
                                        SlateStyle style = SlateStyle::Scene) {
    return NamePatterns({&path, 1}, {}, story, {style, std::nullopt}).Statements(0);
}

/// What it means: the number of the scene, or "-" with all that fit behind it when there is no answer.
inline std::string SceneOf(const std::string& path, const SceneNumbers& story, SlateStyle style = SlateStyle::Scene) {
    const Decision decision = Decide(StatePath(path, story, style), story, Confidence::Medium);
    std::string scene = decision.scene ? story.Number(*decision.scene) : "-";
    for (const std::size_t one : decision.between) {
        scene += " " + story.Number(one);
    }
    return scene;
}

} // namespace zonstory::test
