#pragma once

#include <zoncore/UString.h>

namespace zonstoryparser {

/// The message in the current language.
/// @param keyLiteral  "$$$/zonstoryparser/Key=English text". Translators know the keys and hosts show the texts:
///                    neither changes.
zoncore::UString LocalizedMessage(const char* keyLiteral);

} // namespace zonstoryparser
