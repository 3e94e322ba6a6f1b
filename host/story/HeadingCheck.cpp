#include "story/SceneChecks.h"

#include <fmt/format.h>

#include <zonstoryparser/SceneContent.h>

namespace zonstory {

namespace {

using zoncore::UString;
using zoncore::UTF16to8;

bool IsKnownSetting(const UString& setting) {
    return !setting.empty() && zonstoryparser::SceneSettingLength(setting) == setting.size();
}

// "INT" is also found in "INT/EXT." and "INTERIOR", whose rest then stands in the location.
bool IsPartOfWord(const zonstoryparser::SceneContent& content) {
    const std::size_t end = content.setting.size();
    const bool endsWithDot = content.setting.back() == u'.';
    return !endsWithDot && end < content.heading.size() && UString(u". \t").find(content.heading[end]) == UString::npos;
}

void CheckSetting(const zonstoryparser::SceneContent& content, std::size_t line, const ReportFinding& report) {
    const std::string heading = UTF16to8(content.heading);
    if (!IsKnownSetting(content.setting)) {
        report(line, FindingKind::Setting, fmt::format("the setting of '{}' is not recognised", heading));
    } else if (IsPartOfWord(content)) {
        report(line, FindingKind::Setting,
               fmt::format("only '{}' is recognised of the setting of '{}'; the location reads '{}'",
                           UTF16to8(content.setting), heading, UTF16to8(content.location)));
    }
}

// The first dash parts location and time, so a dash within a name does too.
void CheckTimeOfDay(const zonstoryparser::SceneContent& content, std::size_t line, const ReportFinding& report) {
    const std::string heading = UTF16to8(content.heading);
    if (content.timeOfDay.empty()) {
        const bool hasLongDash = content.heading.find_first_of(u"–—") != UString::npos;
        report(line, FindingKind::TimeOfDay,
               fmt::format("the time of day of '{}' is not recognised{}", heading,
                           hasLongDash ? ": only a hyphen (-) parts it from the location" : ""));
    } else if (content.timeOfDay.find(u'-') != UString::npos) {
        report(line, FindingKind::TimeOfDay,
               fmt::format("the first dash of '{}' ends the location '{}'; the time of day reads '{}'", heading,
                           UTF16to8(content.location), UTF16to8(content.timeOfDay)));
    }
}

} // namespace

void CheckHeading(const zonstoryparser::Scene& scene, const zonscreenplay::SourceLines& lines,
                  const ReportFinding& report) {
    const zonstoryparser::SceneContent content = zonstoryparser::GatherSceneContent(scene);
    if (content.heading.empty()) {
        return report(lines.Of(scene), FindingKind::Setting, "the scene has no heading");
    }
    std::size_t line = 0;
    for (const auto& paragraph : scene.paragraphs) {
        line = paragraph->element == zonstoryparser::kSceneHeading ? lines.Of(*paragraph) : line;
    }
    CheckSetting(content, line, report);
    CheckTimeOfDay(content, line, report);
}

} // namespace zonstory
