#include "source/ElementWord.h"

namespace zonscreenplay {

const char16_t* ElementWord(zonstoryparser::ElementType element) {
    switch (element) {
    case zonstoryparser::kSceneHeading:
        return u"SceneHeading";
    case zonstoryparser::kCharacter:
        return u"Character";
    case zonstoryparser::kDialog:
        return u"Dialog";
    case zonstoryparser::kAction:
        return u"Action";
    case zonstoryparser::kShot:
        return u"Shot";
    case zonstoryparser::kParenthetical:
        return u"Parenthetical";
    case zonstoryparser::kTransition:
        return u"Transition";
    default:
        return u"";
    }
}

} // namespace zonscreenplay
