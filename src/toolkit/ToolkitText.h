#pragma once

#include <string>

namespace zonstoryparser {

/// A value made fit for the toolkit's C interface, which ends a text at a zero byte, takes some ill-formed UTF-8 as it
/// is, and after refusing a text leaves an empty property behind: zero bytes become spaces, as the toolkit makes of the
/// other control characters.
class ToolkitText {
public:
    ToolkitText(const ToolkitText&) = delete;
    ToolkitText& operator=(const ToolkitText&) = delete;

    /// @param utf8  Must outlive this object, which holds a copy only where a byte changes.
    /// @throws XMP_Error with the toolkit's own id: kXMPErr_BadParam for ill-formed UTF-8, kXMPErr_BadUnicode for
    ///         U+FFFE and U+FFFF.
    explicit ToolkitText(const std::string& utf8);

    const char* CString() const { return mText->c_str(); }

private:
    const std::string* mText;
    std::string mWithoutZeros;
};

} // namespace zonstoryparser
