#include "parser/AttributeNames.h"

namespace zonstoryparser {

const zoncore::UString kVersion = u"version";
const zoncore::UString kDocumentType = u"documentType";
const zoncore::UString kTemplate = u"template";
const zoncore::UString kName = u"name";
const zoncore::UString kCommentAuthor = u"commentAuthor";
const zoncore::UString kDependent = u"dependent";
const zoncore::UString kCommentAuthorID = u"commentAuthorID";
const zoncore::UString kSceneNumber = u"sceneNumber";
const zoncore::UString kShotDuration = u"shotDuration";
const zoncore::UString kLabelType = u"label";

} // namespace zonstoryparser
