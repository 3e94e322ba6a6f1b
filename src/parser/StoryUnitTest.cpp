#include <cstdint>
#include <string>
#include <vector>

#include <zoncore/FileSupport.h>
#include <zonstoryparser/Story.h>

#include "parser/DumpFile.h"

namespace zonstoryparser {

namespace {

UString Decimal(std::int32_t number) {
    const std::string digits = std::to_string(number);
    return zoncore::AsciiToUTF16(digits.data(), digits.size());
}

UString DumpPath(std::int32_t sceneCount, std::int32_t shotCount) {
    const zoncore::Dir stem(zoncore::Dir::TempDir(), u"exoTestXMPBufferDumpFile");
    return stem.FullPath() + u"_Scene_" + Decimal(sceneCount) + u"_Shot_" + Decimal(shotCount) + u".txt";
}

// On purpose: every section counts its scenes from 1, so a comment stream's files take the place of the body's. Held by
// the tests StoryTraversal.
void TraverseSection(const boost::intrusive_ptr<Talewright>& story, const boost::intrusive_ptr<Section>& section) {
    if (!section) {
        return;
    }
    std::int32_t sceneCount = 1;
    for (const boost::intrusive_ptr<Scene>& scene : section->scenes) {
        if (!scene) {
            continue;
        }
        std::vector<ShotXMP> shots;
        GetSceneXMP(story, scene, sceneCount, shots);
        std::int32_t shotCount = 1;
        for (const ShotXMP& shot : shots) {
            ReplaceDumpFile(DumpPath(sceneCount, shotCount), shot.xmpPacket);
            ++shotCount;
        }
        ++sceneCount;
    }
}

} // namespace

bool TraverseStory(boost::intrusive_ptr<Talewright> story, UString& report) {
    if (!story) {
        report = u"Talewright Ptr is NULL";
        return false;
    }
    if (!story->document) {
        return true;
    }
    const Document& document = *story->document;
    report = u"Story Version: " + story->version + u"  Document Version: " + document.version;
    if (document.body) {
        TraverseSection(story, document.body->section);
    } else {
        report += u"\nThe skrx file had no body?";
    }
    for (const boost::intrusive_ptr<CommentStream>& commentStream : document.commentStreams) {
        if (commentStream) {
            TraverseSection(story, commentStream->section);
        }
    }
    return true;
}

} // namespace zonstoryparser
