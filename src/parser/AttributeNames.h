#pragma once

#include <zoncore/UString.h>

namespace zonstoryparser {

/// The attributes of a story file, by the name they are looked up with. Made when the library is loaded.
extern const zoncore::UString kVersion;
extern const zoncore::UString kDocumentType;
extern const zoncore::UString kTemplate;
extern const zoncore::UString kName;
extern const zoncore::UString kCommentAuthor;
extern const zoncore::UString kDependent;
extern const zoncore::UString kCommentAuthorID;
extern const zoncore::UString kSceneNumber;
extern const zoncore::UString kShotDuration;
extern const zoncore::UString kLabelType;

} // namespace zonstoryparser
