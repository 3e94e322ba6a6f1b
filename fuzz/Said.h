#pragma once

#include <string>
#include <vector>

#include <zonstoryparser/Story.h>

namespace fuzz {

/// What a scene's paragraphs say, by the exported pieces alone: what packets and clips are held against.
struct Said {
    zoncore::UString firstID;
    zoncore::UString heading;
    zoncore::UString action;
    std::vector<zonstoryparser::CharacterDialogue> dialogue;

    bool IsNothing() const { return heading.empty() && action.empty() && dialogue.empty(); }
};

Said WhatIsSaid(const zonstoryparser::Scene& scene);

/// As XMP keeps a text: control characters become spaces on their way.
std::string AsStored(const zoncore::UString& text);

/// Whether XMP takes all of it.
bool IsStorable(const Said& said);

/// Requires `xmp` to say the same.
void RequireReadsBack(const Said& said, SXMPMeta& xmp);

} // namespace fuzz
