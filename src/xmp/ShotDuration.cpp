#include <cstdint>
#include <string>

#include <zoncore/Coercion.h>
#include <zoncore/Tokenizer.h>
#include <zonstoryparser/Story.h>

#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

namespace {

constexpr char kSeconds[] = "1/1";

struct Duration {
    std::int32_t hours = 0;
    std::int32_t minutes = 0;
    std::int32_t seconds = 0;

    bool IsZero() const { return hours == 0 && minutes == 0 && seconds == 0; }

    // Wraps at 32 bits by design, hence the unsigned arithmetic; the largest durations are nonsense in any case.
    std::int32_t InSeconds() const {
        const auto wrapped = static_cast<std::uint32_t>(hours) * 3600U + static_cast<std::uint32_t>(minutes) * 60U +
                             static_cast<std::uint32_t>(seconds);
        return static_cast<std::int32_t>(wrapped);
    }
};

// "1:30" is an hour and a half; an empty part counts as 0 and keeps its place.
Duration ParseDuration(const UString& text) {
    Duration duration;
    zoncore::Tokenizer parts(text, u":", 0, false);
    for (std::int32_t* part : {&duration.hours, &duration.minutes, &duration.seconds}) {
        if (parts.HasMoreTokens()) {
            *part = zoncore::Coercion<int>::Result(parts.NextToken());
        }
    }
    return duration;
}

void SetField(const char* field, const std::string& value, SXMPMeta& xmp) {
    xmp.SetStructField(kShotDurationProperty.schemaNS, kShotDurationProperty.name, kShotDurationProperty.schemaNS,
                       field, value);
}

bool ReadField(const char* field, SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return FalseOnToolkitError([&] {
        return xmp.GetStructField(kShotDurationProperty.schemaNS, kShotDurationProperty.name,
                                  kShotDurationProperty.schemaNS, field, value, options);
    });
}

} // namespace

// On purpose: only three zeros count as no duration, so "1:-60:0" stores 0. Held by the tests ShotDuration.
bool WriteShotDurationToXMP(const UString& duration, SXMPMeta& xmp) {
    const Duration parsed = ParseDuration(duration);
    if (parsed.IsZero()) {
        return true;
    }
    return FalseOnToolkitError([&] {
        SetField(kDurationScaleField, kSeconds, xmp);
        SetField(kDurationValueField, std::to_string(parsed.InSeconds()), xmp);
        return true;
    });
}

bool GetShotDurationScaleFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadField(kDurationScaleField, xmp, options, value);
}

bool GetShotDurationValueFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value) {
    return ReadField(kDurationValueField, xmp, options, value);
}

bool DeleteShotDurationFromXMP(SXMPMeta& xmp) {
    return DeleteProperty(kShotDurationProperty, xmp);
}

} // namespace zonstoryparser
