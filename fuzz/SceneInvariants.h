#pragma once

#include <zonstoryparser/Story.h>

namespace fuzz {

/// Breaks one scene down, writes it into `xmp` twice, clears it twice, and requires what hosts rely on: a packet is made
/// where there is something to say, and parses again to what the scene says; what was written is there, and
/// all else as before; the changed paths are the whole list in its order; the second write changes nothing; clearing
/// leaves no story data, and all else as before; a second clear reports no dialogue.
void CheckScene(const boost::intrusive_ptr<zonstoryparser::Scene>& scene, SXMPMeta& xmp);

/// CheckScene() for every scene of a story that may be partial, each on empty metadata, and the story's traversal of
/// everything but files.
void CheckStory(const boost::intrusive_ptr<zonstoryparser::Talewright>& story);

/// Every reader, writer and deleter over `xmp`, twice; nothing but a registration's XMP_Error may leave them.
void CheckAccessors(SXMPMeta& xmp);

} // namespace fuzz
