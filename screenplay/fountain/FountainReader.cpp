#include "fountain/FountainReader.h"

#include "fountain/FountainParser.h"
#include "fountain/HiddenText.h"
#include "fountain/Lines.h"

namespace zonscreenplay {

void ReadFountain(std::string text, const ReadOptions& options, ScriptBuilder& builder) {
    fountain::EndLinesWithLineFeeds(text);
    fountain::TakeOutBoneyards(text, builder);
    fountain::TakeOutNotes(text, builder);
    fountain::FountainParser(text, options, builder).Parse();
    if (!builder.HasHeading() && !builder.HasCue()) {
        builder.Fail({1, 1}, "no screenplay: it has neither a scene heading nor a character's cue");
    }
}

} // namespace zonscreenplay
