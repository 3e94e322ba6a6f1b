#include <zoncore/Coercion.h>

#include <limits>
#include <locale>
#include <sstream>

namespace zoncore {

namespace {

// The stream reads ASCII; any other character ends the number, as a letter would.
std::string NarrowedToASCII(const UString& text) {
    std::string ascii;
    ascii.reserve(text.size());
    for (const char16_t unit : text) {
        ascii.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    }
    return ascii;
}

} // namespace

int Coercion<int>::Result(const UString& text) {
    std::istringstream stream(NarrowedToASCII(text));
    stream.imbue(std::locale::classic()); // never the host's digit grouping
    long value = 0;
    if (!(stream >> value)) {
        return 0;
    }
    using Limits = std::numeric_limits<int>;
    return value >= Limits::min() && value <= Limits::max() ? static_cast<int>(value) : 0;
}

} // namespace zoncore
