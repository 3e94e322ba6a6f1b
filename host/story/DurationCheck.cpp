#include "story/SceneChecks.h"

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include <zoncore/UString.h>

namespace zonstory {

namespace {

// The parts between the colons as numbers; nothing when one is not made of digits, or too long for any film.
std::vector<std::uint64_t> Parts(std::string_view duration) {
    constexpr std::size_t kMaxDigits = 9;
    std::vector<std::uint64_t> parts;
    while (true) {
        const std::string_view part = duration.substr(0, duration.find(':'));
        if (part.empty() || part.size() > kMaxDigits ||
            part.find_first_not_of("0123456789") != std::string_view::npos) {
            return {};
        }
        parts.push_back(std::stoull(std::string(part)));
        if (part.size() == duration.size()) {
            return parts;
        }
        duration.remove_prefix(part.size() + 1);
    }
}

std::string Problem(const std::string& duration) {
    const std::vector<std::uint64_t> parts = Parts(duration);
    if (parts.empty() || parts.size() > 3) {
        return fmt::format("the duration '{}' is not h:m:s", duration);
    }
    const std::uint64_t minutes = parts[0] * 60 + (parts.size() > 1 ? parts[1] : 0);
    const std::uint64_t seconds = minutes * 60 + (parts.size() > 2 ? parts[2] : 0);
    if (seconds > std::numeric_limits<std::int32_t>::max()) {
        return fmt::format("the duration '{}' is too long to be stored", duration);
    }
    if (parts.size() < 3) {
        return fmt::format("the duration '{}' is read as h:m:s, so it means {} minutes", duration, minutes);
    }
    return "";
}

} // namespace

void CheckDuration(const zonstoryparser::Scene& scene, const zonscreenplay::SourceLines& lines,
                   const ReportFinding& report) {
    if (scene.shotDuration.empty()) {
        return;
    }
    const std::string problem = Problem(zoncore::UTF16to8(scene.shotDuration));
    if (problem.empty()) {
        return;
    }
    std::size_t line = 0;
    for (const auto& paragraph : scene.paragraphs) {
        line = paragraph->element == zonstoryparser::kSceneHeading ? lines.Of(*paragraph) : line;
    }
    report(line, FindingKind::Duration, problem);
}

} // namespace zonstory
