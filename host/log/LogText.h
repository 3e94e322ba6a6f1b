#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/ForeignText.h"

namespace zonstory {

/// A file's bytes as signs, one for each code unit of its encoding: ASCII is itself, anything else is no ASCII.
///
/// All that tells cells apart is ASCII, so cells are looked for in the signs, and their bytes are where the signs stand.
class LogText {
public:
    /// @param bytes  Must outlive this.
    explicit LogText(std::string_view bytes);

    std::string_view Signs() const { return mUnit == 1 ? mBytes.substr(mForm.mark) : std::string_view(mSigns); }
    TextEncoding Encoding() const { return mForm.encoding; }
    std::size_t BytesPerSign() const { return mUnit; }

    std::size_t ByteAt(std::size_t sign) const { return mForm.mark + sign * mUnit; }
    std::size_t SignAt(std::size_t byte) const { return byte < mForm.mark ? 0 : (byte - mForm.mark) / mUnit; }

    /// As UTF-8.
    std::string Decode(std::size_t begin, std::size_t end) const;

private:
    std::string_view mBytes;
    TextForm mForm;
    std::size_t mUnit;
    std::string mSigns; ///< Of UTF-16; bytes are their own.
};

} // namespace zonstory
