#include <zoncore/Coercion.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace zoncore {

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

// Any character beyond ASCII ends the number, as a letter would.
std::string NarrowedToASCII(const UString& text) {
    std::string ascii(text.size(), '?');
    std::transform(text.begin(), text.end(), ascii.begin(),
                   [](char16_t unit) { return unit < 0x80 ? static_cast<char>(unit) : '?'; });
    return ascii;
}

} // namespace

int Coercion<int>::Result(const UString& text) {
    const std::string ascii = NarrowedToASCII(text);
    std::string_view number = ascii;
    number.remove_prefix(std::min(number.find_first_not_of(kWhiteSpace), number.size()));
    if (number.size() > 1 && number[0] == '+' && number[1] != '-') { // a sign that from_chars does not know
        number.remove_prefix(1);
    }
    int value = 0;
    const std::from_chars_result result = std::from_chars(number.data(), number.data() + number.size(), value);
    return result.ec == std::errc() ? value : 0;
}

} // namespace zoncore
