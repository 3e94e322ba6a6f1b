#include "log/LogText.h"

namespace zonstory {

namespace {

constexpr char kNoAscii = '\x80';

std::string SignsOfUTF16(std::string_view bytes, std::size_t low) {
    std::string signs;
    signs.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const char sign = bytes[at + low];
        const bool isAscii = bytes[at + 1 - low] == '\0' && static_cast<unsigned char>(sign) < 0x80;
        signs += isAscii ? sign : kNoAscii;
    }
    return signs;
}

} // namespace

LogText::LogText(std::string_view bytes) : mBytes(bytes), mForm(FindTextForm(bytes)), mUnit(mForm.BytesPerUnit()) {
    if (mUnit == 2) {
        mSigns = SignsOfUTF16(bytes.substr(mForm.mark), mForm.encoding == TextEncoding::UTF16Little ? 0 : 1);
    }
}

std::string LogText::Decode(std::size_t begin, std::size_t end) const {
    return DecodeText(mBytes.substr(ByteAt(begin), (end - begin) * mUnit), mForm.encoding);
}

} // namespace zonstory
