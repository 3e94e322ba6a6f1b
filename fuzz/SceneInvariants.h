#pragma once

#include <zonstoryparser/Story.h>

namespace fuzz {

/// Breaks one scene down, writes it into `xmp`, clears it again, and requires what hosts rely on:
/// a packet parses again; what was written reads back equal; the changed paths name every property that differs between
/// before and after, save the gaps kept on purpose; clearing leaves no story data; a second clear reports no dialogue.
void CheckScene(const boost::intrusive_ptr<zonstoryparser::Scene>& scene, SXMPMeta& xmp);

/// CheckScene() for every scene of a story that may be partial, each on empty metadata, and the story's traversal of
/// everything but files.
void CheckStory(const boost::intrusive_ptr<zonstoryparser::Talewright>& story);

/// Every reader, writer and deleter over `xmp`, twice; nothing but a registration's XMP_Error may leave them.
void CheckAccessors(SXMPMeta& xmp);

} // namespace fuzz
