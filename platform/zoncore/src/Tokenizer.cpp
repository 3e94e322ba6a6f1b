#include <zoncore/Tokenizer.h>

#include <algorithm>

namespace zoncore {

Tokenizer::Tokenizer(const UString& text, const UString& delimiters, std::size_t position, bool skipRepeatedDelimiters)
    : mText(text), mDelimiters(delimiters), mPosition(UString::npos), mSkipRepeatedDelimiters(skipRepeatedDelimiters) {
    MoveTo(position);
}

bool Tokenizer::HasMoreTokens() const {
    return mPosition != UString::npos;
}

UString Tokenizer::NextToken() {
    if (!HasMoreTokens()) {
        return {};
    }
    const std::size_t begin = mPosition;
    const std::size_t end = std::min(mText.find_first_of(mDelimiters, begin), mText.size());
    std::size_t next = end + 1;
    if (mSkipRepeatedDelimiters && end < mText.size()) {
        next = mText.find_first_not_of(mText[end], next);
    }
    MoveTo(next);
    return mText.substr(begin, end - begin);
}

UString Tokenizer::GetRemaining() {
    return HasMoreTokens() ? mText.substr(mPosition) : UString();
}

void Tokenizer::MoveTo(std::size_t position) {
    mPosition = position < mText.size() ? position : UString::npos;
}

} // namespace zoncore
