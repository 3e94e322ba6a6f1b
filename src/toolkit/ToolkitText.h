#pragma once

#include <string>

namespace zonstoryparser {

/// Makes a value fit for the toolkit's C interface, which ends a text at a zero byte, takes some ill-formed UTF-8 as it
/// is, and after refusing a text leaves an empty property behind: zero bytes become spaces, as the toolkit makes of the
/// other control characters.
/// @throws XMP_Error with the toolkit's own id: kXMPErr_BadParam for ill-formed UTF-8, kXMPErr_BadUnicode for U+FFFE
///         and U+FFFF.
std::string ToolkitText(const std::string& utf8);

} // namespace zonstoryparser
