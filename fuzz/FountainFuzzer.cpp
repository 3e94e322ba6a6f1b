// Text through the reader of Fountain, what it read through the writer, and that through the reader again.
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "Target.h"
#include "screenplay/Compact.h"

namespace {

using zonscreenplay::Screenplay;

Screenplay Read(std::string_view text) {
    zonscreenplay::ReadOptions options;
    options.format = zonscreenplay::Format::Fountain;
    return zonscreenplay::ReadScreenplayFromMemory(text, "text", options);
}

using Letters = std::array<std::size_t, 128>;

void Count(std::string_view text, Letters& letters) {
    for (const char byte : text) {
        const bool isLetter =
            (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
        letters[isLetter ? static_cast<std::size_t>(byte) : 0] += isLetter ? 1 : 0;
    }
}

// Each paragraph has an identity and says something; each letter and digit is there once, in the model, on the title
// page or in a note, save those of boneyards and of text that a warning names.
void RequireNothingLost(std::string_view text, const Screenplay& screenplay) {
    Letters given{};
    Letters kept{};
    Count(text, given);
    for (const auto& scene : screenplay.root->document->body->section->scenes) {
        Count(zoncore::UTF16to8(scene->sceneNumber), kept);
        for (const auto& paragraph : scene->paragraphs) {
            zoncore::UString words;
            zonstoryparser::GetTextRuns(paragraph, words);
            REQUIRE(words.find_first_not_of(u" \t\n") != zoncore::UString::npos);
            REQUIRE(!paragraph->objectID.AsString().empty());
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
    const bool isUTF16 = text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF"; // no letters by bytes
    const bool isLess = text.find("/*") != std::string_view::npos ||
                        std::any_of(screenplay.warnings.begin(), screenplay.warnings.end(), [](const auto& warning) {
                            return warning.kind == zonscreenplay::WarningKind::LeftOut;
                        });
    for (std::size_t letter = 0; letter < given.size(); ++letter) {
        REQUIRE(isUTF16 || kept[letter] == given[letter] || (isLess && kept[letter] < given[letter]));
    }
}

} // namespace

void fuzz::TryInput(std::string_view text) {
    Screenplay screenplay;
    try {
        screenplay = Read(text);
    } catch (const zonscreenplay::ReadError&) {
        return;
    }
    RequireNothingLost(text, screenplay);
    const bool hasControls = std::any_of(text.begin(), text.end(), [](char byte) {
        return byte >= 0 && byte < ' ' && byte != '\t' && byte != '\n' && byte != '\r';
    });
    if (hasControls) { // which neither form of a text file is for; a mark in front of one is not forced
        return;
    }
    const Screenplay again = Read(WriteFountain(screenplay));
    REQUIRE(support::Compact(again) == support::Compact(screenplay));
    REQUIRE(again.dualDialogue.size() == screenplay.dualDialogue.size());
}
