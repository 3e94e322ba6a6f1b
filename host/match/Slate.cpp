#include "match/Slate.h"

#include <algorithm>
#include <iterator>

#include "match/SceneText.h"
#include "match/SlateReader.h"

namespace zonstory {

namespace {

constexpr std::string_view kMediaExtensions[] = {
    "3gp",  "aac", "aif",  "aiff", "ari",  "arx", "avi",  "braw", "bwf", "cine", "crm",  "dng",
    "dv",   "dvr", "flac", "flv",  "insv", "lrv", "m2t",  "m2ts", "m2v", "m4a",  "m4v",  "mkv",
    "mod",  "mov", "mp3",  "mp4",  "mpeg", "mpg", "mts",  "mxf",  "ogg", "ogv",  "opus", "r3d",
    "rf64", "tod", "ts",   "vob",  "w64",  "wav", "webm", "wma",  "wmv", "xmp"};

bool IsMediaExtension(std::string_view extension) {
    std::string lower(extension);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return std::find(std::begin(kMediaExtensions), std::end(kMediaExtensions), lower) != std::end(kMediaExtensions);
}

std::vector<SlateReading> ReadName(std::string_view name, SlateStyle style) {
    std::vector<SlateReading> readings = SlateReader(name).Read();
    if (style == SlateStyle::Continuous) {
        std::erase_if(readings, [](const SlateReading& reading) { return reading.rule != SlateRule::SceneWord; });
    }
    return readings;
}

} // namespace

std::vector<SlateReading> ReadFileName(std::string_view fileName, SlateStyle style) {
    return ReadName(WithoutMediaExtension(fileName), style);
}

std::vector<SlateReading> ReadFolderName(std::string_view folderName, SlateStyle style) {
    std::vector<SlateReading> readings = ReadName(folderName, style);
    for (SlateReading& reading : readings) {
        if (reading.rule == SlateRule::NumberAndTake) { // 01-31 is a day more often than a take
            reading.confidence = std::min(reading.confidence, Confidence::Low);
        }
    }
    return readings;
}

std::vector<SlateReading> ReadSceneField(std::string_view field) {
    std::vector<SlateReading> readings = ReadName(field, SlateStyle::Scene);
    for (SlateReading& reading : readings) {
        if (reading.rule == SlateRule::NumberAlone) {
            reading.confidence = Confidence::High;
        }
    }
    SlateReading whole;
    whole.scene = CanonicalSceneNumber(field);
    whole.rule = SlateRule::WholeField;
    whole.confidence = Confidence::Certain;
    whole.standing = Standing::Rival;
    whole.exactOnly = true;
    if (!whole.scene.empty()) {
        readings.insert(readings.begin(), std::move(whole));
    }
    return readings;
}

SlateNumber ReadSlateNumber(std::string_view fileName) {
    SlateNumber number;
    for (const SlateReading& reading : SlateReader(WithoutMediaExtension(fileName)).Read()) {
        const bool slate = reading.rule != SlateRule::SceneWord && reading.confidence >= Confidence::Medium &&
                           reading.standing == Standing::Main;
        if (!slate) {
            continue;
        }
        if (!number.slate.empty()) {
            return {};
        }
        number = {reading.scene, reading.take};
    }
    return number;
}

std::string_view WithoutMediaExtension(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    const bool extension = dot != std::string_view::npos && dot > 0 && fileName.size() - dot <= 5 &&
                           IsMediaExtension(fileName.substr(dot + 1));
    return extension ? fileName.substr(0, dot) : fileName;
}

std::string_view Describe(SlateRule rule) {
    switch (rule) {
    case SlateRule::SceneWord:
        return "a scene word";
    case SlateRule::SceneLetter:
        return "the letter S";
    case SlateRule::SlateWord:
        return "a slate word";
    case SlateRule::NumberAndTakeWord:
        return "a take word";
    case SlateRule::SetUpAndTake:
        return "a lettered number and a take";
    case SlateRule::NumberAndTake:
        return "a number and a take";
    case SlateRule::NumberAlone:
        return "a number alone";
    case SlateRule::AmongWords:
        return "a number among words";
    case SlateRule::WholeField:
        return "the whole field";
    }
    return {};
}

} // namespace zonstory
