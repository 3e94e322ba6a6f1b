#include "fdx/FdxLength.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace zonscreenplay {

namespace {

constexpr std::size_t kLongest = 1'000'000; // pages; beyond it is no script

std::optional<std::size_t> Number(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number <= kLongest ? std::optional(number)
                                                                                          : std::nullopt;
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

// "3/8", and any other fraction that comes out even in eighths.
std::optional<std::size_t> Fraction(std::string_view text) {
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) {
        return std::nullopt;
    }
    const auto parts = Number(text.substr(0, slash));
    const auto whole = Number(text.substr(slash + 1));
    return parts && whole && *whole > 0 && *parts * 8 % *whole == 0 ? std::optional(*parts * 8 / *whole) : std::nullopt;
}

bool IsDuration(std::string_view text) {
    return std::count(text.begin(), text.end(), ':') == 2 && text.find("::") == std::string_view::npos &&
           text.front() != ':' && text.back() != ':' && text.find_first_not_of("0123456789:") == std::string_view::npos;
}

} // namespace

FdxLength ReadLength(std::string_view text) {
    text = WithoutBlanks(text);
    if (IsDuration(text)) {
        return {0, std::string(text)};
    }
    const std::size_t blank = text.find(' ');
    if (blank != std::string_view::npos) {
        const auto pages = Number(text.substr(0, blank));
        const auto eighths = Fraction(WithoutBlanks(text.substr(blank)));
        return {pages && eighths ? *pages * 8 + *eighths : 0, ""};
    }
    const auto pages = Number(text);
    return {pages ? *pages * 8 : Fraction(text).value_or(0), ""};
}

} // namespace zonscreenplay
