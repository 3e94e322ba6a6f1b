#include "custody/HashListNames.h"

#include <algorithm>
#include <array>
#include <optional>

#include <fmt/format.h>

#include "custody/MhlNames.h"
#include "text/AsciiText.h"
#include "text/ForeignText.h"

namespace zonstory {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";
constexpr std::size_t kShortestHash = 8; // a CRC, or 32 bits of xxHash

struct Ending {
    std::string_view begin; ///< Of the ending: "md5sums" is one of "md5".
    HashListKind kind;
};

constexpr std::array kEndings = {Ending{"mhl", HashListKind::Mhl},    Ending{"sfv", HashListKind::Sfv},
                                 Ending{"md5", HashListKind::Sums},   Ending{"sha1", HashListKind::Sums},
                                 Ending{"xxh", HashListKind::Sums},   Ending{"sha256", HashListKind::Sums},
                                 Ending{"sha512", HashListKind::Sums}};

bool IsHash(std::string_view text) {
    return text.size() >= kShortestHash && text.find_first_not_of(kHexDigits) == std::string_view::npos;
}

std::string_view WithoutExtension(std::string_view fileName) {
    return fileName.substr(0, fileName.rfind('.'));
}

// Names with line ends have a backslash in front of the line, and for each such byte in them another and a letter.
std::string Unescaped(std::string_view name) {
    std::string text;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool isEscape = name[at] == '\\' && at + 1 < name.size();
        const char byte = isEscape ? name[++at] : name[at];
        text += !isEscape ? byte : byte == 'n' ? '\n' : byte == 'r' ? '\r' : byte;
    }
    return text;
}

// "hash  name", "hash *name", and with a tab or one blank as some write it. xxhsum marks one of its hashes: "XXH3_hash".
std::optional<std::string_view> NameBehindHash(std::string_view line, std::string_view fileName) {
    constexpr std::string_view kMark = "XXH3_";
    line.remove_prefix(line.starts_with(kMark) ? kMark.size() : 0);
    const std::size_t blank = line.find_first_of(kBlanks);
    if (!IsHash(line.substr(0, blank))) {
        return std::nullopt;
    }
    if (line.find_first_not_of(kBlanks, blank) == std::string_view::npos) {
        return WithoutExtension(fileName);
    }
    const bool hasMode = line[blank + 1] == ' ' || line[blank + 1] == '*';
    return line.substr(blank + (hasMode ? 2 : 1));
}

// "MD5 (name) = hash", and without the blanks.
std::optional<std::string_view> NameInBrackets(std::string_view line) {
    const std::size_t open = line.find('(');
    const std::size_t close = line.rfind(')');
    const std::size_t equals = line.find_first_not_of(kBlanks, close == std::string_view::npos ? close : close + 1);
    if (open == 0 || open == std::string_view::npos || close < open || equals == std::string_view::npos ||
        line[equals] != '=' || !IsHash(WithoutBlanks(line.substr(equals + 1)))) {
        return std::nullopt;
    }
    return line.substr(open + 1, close - open - 1);
}

std::optional<std::string> NameInSums(std::string_view line, std::string_view fileName) {
    const bool isEscaped = line.starts_with('\\');
    line.remove_prefix(isEscaped ? 1 : 0);
    auto name = NameBehindHash(line, fileName);
    name = name ? name : NameInBrackets(line);
    return !name ? std::nullopt : std::optional(isEscaped ? Unescaped(*name) : std::string(*name));
}

std::optional<std::string> NameInSfv(std::string_view line) {
    const std::size_t end = line.find_last_not_of(kBlanks);
    const std::size_t blank = line.find_last_of(kBlanks, end);
    if (blank == std::string_view::npos || !IsHash(line.substr(blank + 1, end - blank))) {
        return std::nullopt;
    }
    return std::string(line.substr(0, line.find_last_not_of(kBlanks, blank) + 1));
}

bool IsRemark(std::string_view line) {
    return WithoutBlanks(line).empty() || line.front() == ';' || line.front() == '#';
}

void ReadLines(std::string_view text, HashListKind kind, std::string_view fileName, const NameReceiver& receive) {
    std::size_t number = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        at = end + 1;
        ++number;
        if (IsRemark(line)) {
            continue;
        }
        auto name = kind == HashListKind::Sfv ? NameInSfv(line) : NameInSums(line, fileName);
        if (!name || name->empty()) {
            throw HashListError(fmt::format("cannot be read in line {}", number));
        }
        receive(ForeignToUTF8(*name)); // each for itself, since lists from several machines are joined
    }
}

} // namespace

HashListKind KindOfHashList(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    if (dot == std::string_view::npos) {
        return HashListKind::None;
    }
    const std::string ending = LowerCase(std::string(fileName.substr(dot + 1)));
    const auto* const found = std::find_if(kEndings.begin(), kEndings.end(),
                                           [&](const Ending& row) { return ending.starts_with(row.begin); });
    return found == kEndings.end() ? HashListKind::None : found->kind;
}

void ReadHashListNames(std::string_view bytes, HashListKind kind, std::string_view fileName,
                       const NameReceiver& receive) {
    const NameReceiver receiveSlashed = [&](std::string&& name) {
        std::replace(name.begin(), name.end(), '\\', '/'); // as Windows parts folders
        receive(std::move(name));
    };
    if (kind == HashListKind::Mhl) {
        ReadMhlNames(bytes, receiveSlashed);
        return;
    }
    const bool isMarked = bytes.starts_with("\xEF\xBB\xBF") || bytes.find('\0') != std::string_view::npos;
    const std::string text = isMarked ? ForeignToUTF8(bytes) : std::string(); // UTF-16 has a zero at its line ends
    ReadLines(isMarked ? text : bytes, kind, fileName, receiveSlashed);
}

} // namespace zonstory
