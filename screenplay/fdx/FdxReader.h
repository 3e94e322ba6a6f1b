#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fdx/FdxKind.h"
#include "fdx/FdxPlace.h"
#include "source/ScriptBuilder.h"
#include "xml/XmlDriver.h"

namespace zonscreenplay {

/// Reads FDX of any version: the paragraphs of the script itself, and of dual dialogue in it.
class FdxReader : public XmlReader {
public:
    explicit FdxReader(const XmlDriver& driver);

    void Start(const zoncore::UString& name, const zoncore::AttributeMap& attributes) override;
    void End(const zoncore::UString& name) override;
    void Characters(const zoncore::UString& text) override;
    Screenplay Finish() override;

private:
    /// A paragraph that has not ended.
    struct Pending {
        FdxKind kind;
        zoncore::UString type;
        zoncore::UString number;
        std::string duration;
        zoncore::UString text;
        std::size_t line = 0;
        std::size_t revision = 0;
        SceneProperties properties;

        /// Forgets everything, and keeps the room of the text.
        void Clear();
    };

    void BeginParagraph(const zoncore::AttributeMap& attributes);
    void EndParagraph();
    void AddScene();
    void AddText();
    void AddRevision();
    void ReadProperties(const zoncore::AttributeMap& attributes);
    void ReadRevision(const zoncore::AttributeMap& attributes);
    void EndOmittedParagraph();
    void EndOmittedScene();
    void EndNote();
    void EndTitleParagraph();

    const XmlDriver& mDriver;
    ScriptBuilder mBuilder;
    std::vector<FdxPlace> mPlaces;
    Pending mPending;
    zoncore::UString mAside; // the text of a note, or of a line of the title page
    std::size_t mAsideLine = 0;
    std::size_t mDualCues = 0;        // in the open dual dialogue
    std::size_t mOmittedHeadings = 0; // in the open omitted scene
    std::size_t mRevision = 0;        // the latest in the open scene
    bool mIsDual = false;
    std::set<zoncore::UString> mUnknown;                                   // kinds that a warning has named
    std::map<std::string, std::pair<std::string, std::string>> mRevisions; // name and colour by identity
};

} // namespace zonscreenplay
