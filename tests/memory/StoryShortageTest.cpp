#include <gtest/gtest.h>

#include <zonstoryparser/Story.h>

#include "support/ShortageSweep.h"
#include <zonscreenplay/Screenplay.h>

namespace {

// With an entity, an encoding that the reader makes a table for, and elements without content, whose end the XML parser
// still reports after a failed start.
const std::string kStory = "<?xml version='1.0' encoding='windows-1252'?>\n"
                           "<!DOCTYPE Talewright [<!ENTITY who 'THE HARBOUR MASTER OF ALTENFELD'>]>\n"
                           "<Talewright version='1.0'><document><stream name='body'><section>"
                           "<scene objID='a-scene-identity' sceneNumber='12A-and-12B'>"
                           "<paragraph objID='a-paragraph-identity' element='Action' of='&who;'><textRun/>"
                           "<textRun>&who; lights a lantern \x96 and waits.</textRun></paragraph></scene>"
                           "</section></stream></document></Talewright>";
const std::string kFDX = "<FinalDraft><Content><Paragraph Type='Transition'><Text>FADE IN, SLOWLY:</Text></Paragraph>"
                         "<Paragraph Type='Action'><Text>Somebody lights a lantern.</Text></Paragraph>"
                         "<Paragraph Type='Cast List'><Text>THE HARBOUR MASTER</Text></Paragraph>"
                         "</Content></FinalDraft>";
const std::string kFountain =
    "Title: The Harbour Master\n\nINT. HARBOUR OFFICE - NIGHT #12A-and-12B#\n\nSomebody *lights* "
    "a lantern. [[which one of them?]]\n\nTHE HARBOUR MASTER ^\nWho goes there?\n";

struct Attempt {
    std::string bytes;
    const char* name = "a-film-with-a-long-name.skrx";
    std::size_t pieceSize = 4096;
};

const Attempt kAttempts[] = {
    {kStory},
    {kStory, "a-film-with-a-long-name.skrx", 7}, // in pieces, which the XML parser has to keep until a tag is whole
    {kFDX},
    {kFountain, "a-film-with-a-long-name.fountain"},
    // An error's own message needs memory too.
    {"<Talewright version='a version that nobody knows'/>"},
    {kStory.substr(0, 400)},
    {"<?xml version='1.0' encoding='none-of-the-known'?><a/>"},
    {"<an-unknown-root-element/>"},
};

std::string ReadAndWrite(const Attempt& attempt) try {
    zonscreenplay::ReadOptions options;
    options.recordLines = true;
    options.pieceSize = attempt.pieceSize;
    const auto screenplay = zonscreenplay::ReadScreenplayFromMemory(attempt.bytes, attempt.name, options);
    return zonscreenplay::WriteStoryFile(*screenplay.root) + WriteFountain(screenplay);
} catch (const zonscreenplay::ReadError& error) {
    return error.what();
}

TEST(StoryMemoryShortage, ReadingWritingAndRefusing) {
    for (const Attempt& attempt : kAttempts) {
        SCOPED_TRACE(attempt.bytes);
        support::SweepShortage([] { return std::string(); },
                               [&](std::string& outcome) {
                                   outcome = ReadAndWrite(attempt);
                                   return true;
                               },
                               [](const std::string& outcome) { return outcome; });
    }
}

} // namespace
