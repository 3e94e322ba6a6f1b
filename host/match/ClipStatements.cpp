#include "match/ClipStatements.h"

#include "match/NamePatterns.h"
#include "match/SceneText.h"

namespace zonstory {

Statement StateField(Source source, std::string_view scene, std::string_view take) {
    Statement statement;
    statement.source = source;
    statement.text = scene;
    statement.readings = ReadSceneField(scene);
    statement.take = CanonicalSceneNumber(take);
    statement.ceiling = Confidence::High;
    return statement;
}

std::vector<Statement> StatePath(const std::string& path, const SceneNumbers& story, SlateStyle style) {
    return NamePatterns({&path, 1}, {}, story, {style, std::nullopt}).Statements(0);
}

} // namespace zonstory
