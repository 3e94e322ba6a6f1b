#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <zoncore/FileSupport.h>
#include <zonstoryparser/SceneContent.h>

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
template <typename Visit>
void TraverseSection(const boost::intrusive_ptr<Section>& section, Visit visit) {
    if (!section) {
        return;
    }
    std::int32_t sceneCount = 1;
    for (const boost::intrusive_ptr<Scene>& scene : section->scenes) {
        if (scene) {
            visit(scene, sceneCount++);
        }
    }
}

// The body's section, and those of the comment streams.
template <typename Visit>
void TraverseDocument(const Document& document, Visit visit) {
    if (document.body) {
        TraverseSection(document.body->section, visit);
    }
    for (const boost::intrusive_ptr<CommentStream>& commentStream : document.commentStreams) {
        if (commentStream) {
            TraverseSection(commentStream->section, visit);
        }
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
    if (!document.body) {
        report += u"\nThe skrx file had no body?";
    }
    TraverseDocument(document, [&](const boost::intrusive_ptr<Scene>& scene, std::int32_t sceneCount) {
        std::vector<ShotXMP> shots;
        GetSceneXMP(story, scene, sceneCount, shots);
        std::int32_t shotCount = 1;
        for (const ShotXMP& shot : shots) {
            ReplaceDumpFile(DumpPath(sceneCount, shotCount++), shot.xmpPacket);
        }
    });
    return true;
}

std::vector<UString> TraversalFiles(const Talewright& story) {
    std::set<std::int32_t> sceneCounts;
    if (story.document) {
        TraverseDocument(*story.document, [&](const boost::intrusive_ptr<Scene>& scene, std::int32_t sceneCount) {
            if (WhyNoPacket(*scene) == NoPacketReason::None) {
                sceneCounts.insert(sceneCount);
            }
        });
    }
    std::vector<UString> paths;
    paths.reserve(sceneCounts.size());
    for (const std::int32_t sceneCount : sceneCounts) {
        paths.push_back(DumpPath(sceneCount, 1)); // a scene is one shot
    }
    return paths;
}

} // namespace zonstoryparser
