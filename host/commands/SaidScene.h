#pragma once

#include <string>

#include <zonstoryparser/StoryComparison.h>

#include "clip/Clip.h"
#include "clip/PlaceRules.h"
#include "commands/ScriptReference.h"

namespace zonstory {

/// All that metadata says of a scene.
struct SaidScene {
    std::string number; ///< UTF-8, a scene's or a slate's; empty for none.
    zonstoryparser::CarriedScene text;
    ScriptReference script;

    bool IsEmpty() const { return number.empty() && text.IsEmpty(); }
    /// Whether any of it is a script's. A number and a location alone are what logging tools write.
    bool IsOfScript() const;
    /// Whether this program wrote the number, so that it may take it away.
    bool IsOwnNumber() const { return !number.empty() && script.scene == number; }
};

/// @throws XMP_Error
SaidScene ReadSaidScene(const SXMPMeta& xmp);

/// A clip says one scene, inside or in its sidecar.
class SceneSubject : public Subject {
public:
    bool IsIn(const SXMPMeta& xmp) const override;
    void Copy(const SXMPMeta& from, SXMPMeta& to) const override;
    void Withdraw(SXMPMeta& xmp, const SXMPMeta& better) const override;
    std::string Contradiction(const SXMPMeta& inside, const SXMPMeta& sidecar) const override;
};

/// The rules by which every verb of a run looks at clips.
class SceneRules {
public:
    SceneRules() : mRules(mSubject) {}

    /// The same options under these rules, which must outlive them.
    ClipOptions In(ClipOptions options) {
        options.rules = &mRules;
        return options;
    }

private:
    SceneSubject mSubject;
    PlaceRules mRules;
};

} // namespace zonstory
