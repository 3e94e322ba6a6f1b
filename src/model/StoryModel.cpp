#include <zonstoryparser/StoryModel.h>

// Made here so that each class has one home for its virtual table, shared with every host.
namespace zonstoryparser {

TextRun::TextRun() = default;
TextRun::~TextRun() = default;

Paragraph::Paragraph() = default;
Paragraph::~Paragraph() = default;

Scene::Scene() = default;
Scene::~Scene() = default;

Section::Section() = default;
Section::~Section() = default;

CommentStream::CommentStream() = default;
CommentStream::~CommentStream() = default;

Stream::Stream() = default;
Stream::~Stream() = default;

Document::Document() = default;
Document::~Document() = default;

Talewright::Talewright() = default;
Talewright::~Talewright() = default;

} // namespace zonstoryparser
