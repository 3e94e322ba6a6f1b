#include <optional>

#include <gmock/gmock.h>

#include <zonscreenplay/Screenplay.h>

#include "screenplay/Compact.h"
#include "screenplay/StoryText.h"
#include "support/Utf16.h"

namespace {

using zonscreenplay::Format;
using zonscreenplay::ReadScreenplayFromMemory;

std::string Outcome(const std::string& bytes, const std::string& name, std::optional<Format> format) {
    zonscreenplay::ReadOptions options;
    options.format = format;
    constexpr const char* kWords[] = {"story", "fdx", "fountain"};
    try {
        return kWords[static_cast<int>(ReadScreenplayFromMemory(bytes, name, options).format)];
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

// Never replaced: bytes that are no UTF-8 mean what they mean in Windows-1252.
TEST(Formats, TextComesInSeveralEncodings) {
    const std::string utf16 = support::InUTF16(".Kü\n\n🎬", false);
    const struct {
        std::string bytes;
        const char* body;
        const char* warning = "";
    } rows[] = {
        {".K\xC3\xBC\n\n\xF0\x9F\x8E\xAC", "scene|heading: Kü|action: 🎬"},
        {"\xEF\xBB\xBF.K\xC3\xBC", "scene|heading: Kü"},
        {utf16, "scene|heading: Kü|action: 🎬"},
        {support::InUTF16(".Kü\n\n🎬", true), "scene|heading: Kü|action: 🎬"},
        {utf16.substr(0, 7), "scene|heading: K", "1: the file is UTF-16 and ends within a character"},
        {".K\r\n\r\n\x93\x80\x94\x81", "scene|heading: K|action: “€”\xC2\x81",
         "3: here the file is no UTF-8; all of it is read as Windows-1252"},
    };
    for (const auto& row : rows) {
        const zonscreenplay::Screenplay screenplay = ReadScreenplayFromMemory(row.bytes, "a.fountain");
        EXPECT_EQ(support::Compact(screenplay), row.body);
        EXPECT_EQ(support::Warnings(screenplay), row.warning);
    }
}

} // namespace
