#include "clip/FrameSequence.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "text/AsciiText.h"

namespace zonstory {

// On purpose: not ".dng" nor ".tif", under which still cameras number what shows different things.
std::filesystem::path SequenceName(const std::filesystem::path& file) {
    constexpr std::string_view kFormats[] = {".ari", ".arx", ".cin", ".dpx", ".exr"};
    constexpr std::string_view kDigits = "0123456789";
    constexpr std::size_t kFewestDigits = 4;
    const std::string extension = file.extension().native();
    const std::string stem = file.stem().native();
    const std::size_t separator = stem.find_last_not_of(kDigits);
    const bool isFrame =
        std::find(std::begin(kFormats), std::end(kFormats), LowerCase(extension)) != std::end(kFormats) &&
        separator != std::string::npos && separator > 0 &&
        std::string_view("._-").find(stem[separator]) != std::string_view::npos &&
        stem.size() - separator > kFewestDigits;
    return isFrame ? file.parent_path() / (stem.substr(0, separator) + extension) : file;
}

} // namespace zonstory
