// Text through the reader of Fountain, what it read through the writer, and that through the reader again.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/Story.h>

#include "Require.h"

namespace {

using zonscreenplay::Screenplay;

Screenplay Read(std::string_view text) {
    zonscreenplay::ReadOptions options;
    options.format = zonscreenplay::Format::Fountain;
    return zonscreenplay::ReadScreenplayFromMemory(text, "text", options);
}

// Scenes, numbers, kinds and texts.
std::string Describe(const Screenplay& screenplay) {
    std::string all;
    for (const auto& scene : screenplay.root->document->body->section->scenes) {
        all += "\nscene " + zoncore::UTF16to8(scene->sceneNumber);
        for (const auto& paragraph : scene->paragraphs) {
            zoncore::UString text;
            zonstoryparser::GetTextRuns(paragraph, text);
            REQUIRE(text.find_first_not_of(u" \t\n") != zoncore::UString::npos);
            REQUIRE(!paragraph->objectID.AsString().empty());
            all += "\n" + std::to_string(paragraph->element) + " " + zoncore::UTF16to8(text);
        }
    }
    return all;
}

using Letters = std::array<std::size_t, 128>;

void Count(std::string_view text, Letters& letters) {
    for (const char byte : text) {
        const bool isLetter =
            (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
        letters[isLetter ? static_cast<std::size_t>(byte) : 0] += isLetter ? 1 : 0;
    }
}

// Each letter and digit once, in the model, on the title page or in a note; save those of boneyards.
void RequireNothingLost(std::string_view text, const Screenplay& screenplay) {
    Letters given{};
    Letters kept{};
    Count(text, given);
    for (const auto& scene : screenplay.root->document->body->section->scenes) {
        Count(zoncore::UTF16to8(scene->sceneNumber), kept);
        for (const auto& paragraph : scene->paragraphs) {
            zoncore::UString words;
            zonstoryparser::GetTextRuns(paragraph, words);
            Count(zoncore::UTF16to8(words), kept);
        }
    }
    for (const auto& [key, value] : screenplay.titlePage) {
        Count(key, kept);
        Count(value, kept);
    }
    for (const auto& note : screenplay.notes) {
        Count(note.text, kept);
    }
    const bool hasBoneyard = text.find("/*") != std::string_view::npos;
    for (std::size_t letter = 0; letter < given.size(); ++letter) {
        REQUIRE(kept[letter] == given[letter] || (hasBoneyard && kept[letter] < given[letter]));
    }
}

bool IsUTF16(std::string_view text) {
    return text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Screenplay screenplay;
    try {
        screenplay = Read(text);
    } catch (const zonscreenplay::ReadError&) {
        return 0;
    }
    const std::string described = Describe(screenplay);
    if (!IsUTF16(text)) {
        RequireNothingLost(text, screenplay);
    }
    const Screenplay again = Read(WriteFountain(screenplay));
    REQUIRE(Describe(again) == described);
    REQUIRE(again.dualDialogue.size() == screenplay.dualDialogue.size());
    return 0;
}
