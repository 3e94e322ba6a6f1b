#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/ShortageSweep.h"
#include <zonscreenplay/Screenplay.h>

namespace {

using zonscreenplay::ReadError;
using zonscreenplay::ReadScreenplayFromMemory;

// With an entity, an encoding that the reader makes a table for, and elements without content, whose end the XML parser
// still reports after a failed start.
const std::string kStory = "<?xml version='1.0' encoding='windows-1252'?>\n"
                           "<!DOCTYPE Talewright [<!ENTITY who 'THE HARBOUR MASTER OF ALTENFELD'>]>\n"
                           "<Talewright version='1.0'><document><stream name='body'><section>"
                           "<scene objID='a-scene-identity' sceneNumber='12A-and-12B'>"
                           "<paragraph objID='a-paragraph-identity' element='Action' of='&who;'><textRun/>"
                           "<textRun>&who; lights a lantern \x96 and waits.</textRun></paragraph></scene>"
                           "</section></stream></document></Talewright>";

// Also in pieces, which the XML parser has to keep until a tag is whole.
TEST(StoryMemoryShortage, Reading) {
    for (const std::size_t pieceSize : {std::size_t{7}, std::size_t{4096}}) {
        support::ShortageSweep([] { return zonscreenplay::Screenplay(); },
                               [&](zonscreenplay::Screenplay& story) {
                                   zonscreenplay::ReadOptions options;
                                   options.recordLines = true;
                                   options.pieceSize = pieceSize;
                                   story = ReadScreenplayFromMemory(kStory, "a-film-with-a-long-name.skrx", options);
                                   return true;
                               },
                               [](zonscreenplay::Screenplay& story) {
                                   zoncore::UString text;
                                   zonstoryparser::GetTextRuns(
                                       story.root->document->body->section->scenes.at(0)->paragraphs.at(0), text);
                                   return zoncore::UTF16to8(text);
                               })
            .Run();
    }
}

const std::string kFDX = "<FinalDraft><Content><Paragraph Type='Transition'><Text>FADE IN, SLOWLY:</Text></Paragraph>"
                         "<Paragraph Type='Action'><Text>Somebody lights a lantern.</Text></Paragraph>"
                         "<Paragraph Type='Cast List'><Text>THE HARBOUR MASTER</Text></Paragraph>"
                         "</Content></FinalDraft>";
const std::string kFountain =
    "Title: The Harbour Master\n\nINT. HARBOUR OFFICE - NIGHT #12A-and-12B#\n\nSomebody *lights* "
    "a lantern. [[which one of them?]]\n\nTHE HARBOUR MASTER ^\nWho goes there?\n";

TEST(StoryMemoryShortage, ReadingAndWritingOtherFormats) {
    for (const auto& [bytes, name] :
         {std::pair(&kFDX, "a-film-with-a-long-name.fdx"), std::pair(&kFountain, "a-film-with-a-long-name.fountain")}) {
        support::ShortageSweep([] { return std::string(); },
                               [bytes = bytes, name = name](std::string& written) {
                                   const auto screenplay = ReadScreenplayFromMemory(*bytes, name);
                                   written = zonscreenplay::WriteStoryFile(*screenplay.root) +
                                             zonscreenplay::WriteFountain(screenplay);
                                   return true;
                               },
                               [](std::string& written) { return written; })
            .Run();
    }
}

// An error's own message needs memory too.
TEST(StoryMemoryShortage, Refusing) {
    const std::string bytes[] = {"<Talewright version='a version that nobody knows'/>", kStory.substr(0, 400),
                                 "<?xml version='1.0' encoding='none-of-the-known'?><a/>",
                                 "<an-unknown-root-element/>"};
    for (const std::string& refused : bytes) {
        support::ShortageSweep([] { return std::string(); },
                               [&](std::string& message) {
                                   try {
                                       ReadScreenplayFromMemory(refused, "a-film-with-a-long-name.skrx");
                                   } catch (const ReadError& error) {
                                       message = error.what();
                                   }
                                   return true;
                               },
                               [](std::string& message) { return message; })
            .Run();
    }
}

} // namespace
