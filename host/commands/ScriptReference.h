#pragma once

#include <string>

#include <zonmetadata/Path.h>
#include <zonstoryparser/XMPToolkit.h>

#include "story/StoryReader.h"

namespace zonstory {

/// Which script a clip's scene was written from. In a clip it is an item of xmpMM:Ingredients, whose items are references
/// to what a file is made of; other programs' items stay as they are.
struct ScriptReference {
    std::string name;   ///< The file's, without its folder (stRef:filePath).
    std::string label;  ///< What the draft calls itself, as on its title page; may be empty (stRef:versionID).
    std::string digest; ///< Of scene numbers and texts, so that it is the same in every format (in stRef:documentID).
    std::string scene;  ///< The number that was written along with it; empty where what stood there stayed (in
                        ///< stRef:fromPart).

    bool IsEmpty() const { return digest.empty(); }
};

/// @param file  As the user named it.
ScriptReference ReferenceTo(const Story& story, const StoryFile& file);

/// @return An empty reference where the metadata holds none.
ScriptReference ReadScriptReference(const SXMPMeta& xmp);

/// Replaces what an earlier write left. Does nothing where the property is of another form than it ought to be.
void WriteScriptReference(const ScriptReference& reference, SXMPMeta& xmp);

/// Removes it, and the array with the last item.
/// @return Whether there was one.
bool ClearScriptReference(SXMPMeta& xmp);

zonmetadata::Path ScriptReferencePath();

} // namespace zonstory
