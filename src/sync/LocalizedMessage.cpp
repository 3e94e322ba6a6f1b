#include "sync/LocalizedMessage.h"

#include <zoncore/Localizer.h>

namespace zonstoryparser {

zoncore::UString LocalizedMessage(const char* keyLiteral) {
    return zoncore::Localizer::Get().GetLocalizedString(keyLiteral);
}

} // namespace zonstoryparser
