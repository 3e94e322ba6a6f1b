#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleStory.h"
#include "Zonstory.h"
#include "host/clip/ClipSamples.h"

namespace {

using nlohmann::json;

// Holds a value against the few words of JSON Schema that the program's schemas use. Nothing may be in it that they leave
// out.
bool Fits(const json& value, const json& schema) {
    if (schema.contains("const")) {
        return value == schema["const"];
    }
    if (schema.contains("anyOf")) {
        return Fits(value, schema["anyOf"][0]) || Fits(value, schema["anyOf"][1]);
    }
    const std::string type = schema.at("type");
    if (type == "array") {
        return value.is_array() && std::all_of(value.begin(), value.end(),
                                               [&](const json& item) { return Fits(item, schema.at("items")); });
    }
    if (type == "object" && schema.contains("properties")) {
        for (const auto& [name, member] : value.items()) {
            if (!schema["properties"].contains(name) || !Fits(member, schema["properties"][name])) {
                ADD_FAILURE() << name << ": " << member;
                return false;
            }
        }
        return std::all_of(schema.at("required").begin(), schema["required"].end(),
                           [&](const std::string& name) { return value.contains(name); });
    }
    const std::map<std::string, bool> types = {{"string", value.is_string()},
                                               {"integer", value.is_number_unsigned()},
                                               {"boolean", value.is_boolean()},
                                               {"object", value.is_object()},
                                               {"null", value.is_null()}};
    return types.at(type);
}

TEST(Schemas, EveryDocumentFitsItsOwn) {
    const support::Zonstory zonstory;
    support::WriteFile(zonstory / "s.skrx", support::kSampleStory);
    support::WriteFile(zonstory / "log.csv", "Clip,Scene,Lens\n1-2.mov,2,50\n");
    const auto clip = support::MakeClip(zonstory.Folder(), support::SampleNamed("MovIndexAtEnd"));
    std::filesystem::rename(clip, zonstory / "1-2.mov");
    std::filesystem::copy_file(zonstory / "1-2.mov", zonstory / "x.mov");
    zonstory.Run({"write", "s.skrx", "--scene", "1", "1-2.mov", "x.mov", "--report", "report.json"});
    const std::string report = support::ReadFile(zonstory / "report.json");
    const auto results = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--format", "json"});
        return zonstory.Run(arguments).out;
    };
    for (const auto& [name, text] : {std::pair{std::string("report"), report},
                                     {"info", results({"info", "s.skrx"})},
                                     {"scenes", results({"scenes", "s.skrx"})},
                                     {"characters", results({"characters", "s.skrx"})},
                                     {"characters-by-scene", results({"characters", "s.skrx", "--by-scene"})},
                                     {"check", results({"check", "s.skrx"})},
                                     {"show", results({"show", "1-2.mov"})},
                                     {"log", results({"log", "log.csv", "--story", "s.skrx", "--dry-run"})},
                                     {"match", results({"match", "s.skrx", ".", "--log", "log.csv"})},
                                     {"coverage", results({"coverage", "s.skrx", "."})}}) {
        const std::filesystem::path file = std::filesystem::path(ZONSTORY_DOCS) / (name + ".schema.json");
        EXPECT_TRUE(Fits(json::parse(text), json::parse(support::ReadFile(file)))) << name << '\n' << text;
    }
}

} // namespace
