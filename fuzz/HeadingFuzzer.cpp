// Headings, and durations, as UTF-16.
#include <cstring>
#include <string>

#include <zonstoryparser/Story.h>

#include "Target.h"

namespace {

using zoncore::UString;

bool IsPartOf(const UString& part, const UString& whole) {
    return whole.find(part) != UString::npos;
}

void CheckHeading(const UString& heading) {
    UString setting;
    UString location;
    UString timeOfDay;
    zonstoryparser::ParseSceneHeading(heading, setting, location, timeOfDay);
    REQUIRE(IsPartOf(location, heading));
    REQUIRE(setting.size() + location.size() <= heading.size()); // neither is made up, nor said twice
    REQUIRE(location.find_first_not_of(u" \t") == 0 || location.empty());
    const bool isTableWord =
        timeOfDay == u"Day" || timeOfDay == u"Night" || timeOfDay == u"Evening" || timeOfDay == u"Morning";
    REQUIRE(isTableWord || IsPartOf(timeOfDay, heading));
    REQUIRE(timeOfDay.find_first_not_of(u" \t") == 0 || timeOfDay.empty());
}

void CheckDuration(const UString& text) {
    SXMPMeta xmp;
    REQUIRE(zonstoryparser::WriteShotDurationToXMP(text, xmp));
    std::string value;
    if (zonstoryparser::GetShotDurationValueFromXMP(xmp, nullptr, &value)) {
        REQUIRE(std::to_string(std::stoi(value)) == value); // a whole number of 32 bits
    }
}

} // namespace

void fuzz::TryInput(std::string_view bytes) {
    UString text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
    CheckHeading(text);
    CheckDuration(text);
}
