#include <optional>
#include <string>

#include <gmock/gmock.h>

#include <zonscreenplay/Screenplay.h>

#include "screenplay/StoryText.h"

namespace {

using zonscreenplay::Format;
using zonscreenplay::ReadScreenplayFromMemory;

std::string Outcome(const std::string& bytes, const std::string& name, std::optional<Format> format) {
    zonscreenplay::ReadOptions options;
    options.format = format;
    try {
        switch (ReadScreenplayFromMemory(bytes, name, options).format) {
        case Format::Story:
            return "story";
        case Format::FDX:
            return "fdx";
        case Format::Fountain:
            return "fountain";
        }
        return "";
    } catch (const zonscreenplay::ReadError& error) {
        return error.what();
    }
}

TEST(Formats, AreToldByRootAndName) {
    const std::string story = support::WithAction("x");
    const std::string fdx = "<FinalDraft><Content/></FinalDraft>";
    const std::string text = "INT. A\n\nRain.\n";
    const struct {
        std::string bytes, name;
        std::optional<Format> format;
        std::string outcome;
    } rows[] = {
        {story, "film", {}, "story"},
        {fdx, "film", {}, "fdx"},
        {fdx, "film.txt", {}, "fdx"},
        {"\xEF\xBB\xBF\n" + story, "film.fountain", {}, "story"},
        {story, "film.fdx", {}, "story"},
        {text, "FILM.Fountain", {}, "fountain"},
        {text, "film.spmd", {}, "fountain"},
        {text, "film", Format::Fountain, "fountain"},
        {text, "film", {}, "film:1:1: not well-formed XML: syntax error"},
        {fdx, "film", Format::Story, "film:1:1: no story: the file's root is <FinalDraft>, not <Talewright>"},
        {story, "film", Format::FDX, "film:1:1: no FDX: the file's root is <Talewright>, not <FinalDraft>"},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(Outcome(row.bytes, row.name, row.format), ::testing::StartsWith(row.outcome)) << row.name;
    }
}

} // namespace
