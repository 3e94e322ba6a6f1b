#include <zonscreenplay/Screenplay.h>

#include "source/ElementWord.h"
#include "xml/XmlWriter.h"

namespace zonscreenplay {

namespace {

using zoncore::UString;
using zonstoryparser::CommentStream;
using zonstoryparser::Paragraph;
using zonstoryparser::Scene;
using zonstoryparser::Section;
using zonstoryparser::Stream;
using zonstoryparser::Talewright;

class StoryWriter {
public:
    std::string Write(const Talewright& story) {
        mOut.Start("Talewright")
            .With("version", story.version)
            .With("documentType", story.documentType)
            .With("template", story.templateName)
            .Encloses([&] { WriteContent(story); });
        return mOut.Take();
    }

private:
    void WriteContent(const Talewright& story) {
        if (!story.metaData.empty()) {
            mOut.Start("metaData").Holds(story.metaData);
        }
        for (const UString& label : story.tagLabels) {
            mOut.Start("Tag").With("label", label).Holds({});
        }
        if (story.document) {
            mOut.Start("document").With("version", story.document->version).Encloses([&] {
                WriteStream(story.document->header.get());
                WriteStream(story.document->body.get());
                WriteStream(story.document->footer.get());
                for (const auto& comments : story.document->commentStreams) {
                    WriteComments(*comments);
                }
            });
        }
    }

    void WriteStream(const Stream* stream) {
        if (stream != nullptr) {
            mOut.Start("stream").With("objID", stream->objectID.AsString()).With("name", stream->name).Encloses([&] {
                WriteSection(stream->section.get());
            });
        }
    }

    void WriteComments(const CommentStream& comments) {
        mOut.Start("commentStream")
            .With("objID", comments.objectID.AsString())
            .With("name", comments.name)
            .With("commentAuthor", comments.commentAuthor)
            .With("dependent", comments.dependent)
            .With("commentAuthorID", comments.commentAuthorID)
            .Encloses([&] { WriteSection(comments.section.get()); });
    }

    void WriteSection(const Section* section) {
        if (section != nullptr) {
            mOut.Start("section").With("objID", section->objectID.AsString()).Encloses([&] {
                for (const auto& scene : section->scenes) {
                    WriteScene(*scene);
                }
            });
        }
    }

    void WriteScene(const Scene& scene) {
        mOut.Start("scene")
            .With("objID", scene.objectID.AsString())
            .With("sceneNumber", scene.sceneNumber)
            .Encloses([&] {
                const Paragraph* lastHeading = nullptr; // the one whose duration counts
                for (const auto& paragraph : scene.paragraphs) {
                    lastHeading = paragraph->element == zonstoryparser::kSceneHeading ? paragraph.get() : lastHeading;
                }
                for (const auto& paragraph : scene.paragraphs) {
                    WriteParagraph(*paragraph, paragraph.get() == lastHeading ? scene.shotDuration : UString());
                }
            });
    }

    void WriteParagraph(const Paragraph& paragraph, const UString& duration) {
        mOut.Start("paragraph")
            .With("objID", paragraph.objectID.AsString())
            .With("element", ElementWord(paragraph.element))
            .With("shotDuration", duration)
            .Encloses([&] {
                for (const auto& run : paragraph.textRuns) {
                    mOut.Start("textRun").With("objID", run->objectID.AsString()).Holds(run->text);
                }
            });
    }

    XmlWriter mOut;
};

} // namespace

std::string WriteStoryFile(const Talewright& story) {
    return StoryWriter().Write(story);
}

} // namespace zonscreenplay
