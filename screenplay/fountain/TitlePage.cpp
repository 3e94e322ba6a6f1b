#include "fountain/TitlePage.h"

#include <algorithm>

#include "fountain/Characters.h"
#include "fountain/Emphasis.h"
#include "fountain/LineKinds.h"

namespace zonscreenplay::fountain {

namespace {

constexpr std::string_view kKnownKeys[] = {
    "title",     "credit", "author", "authors", "source", "notes",     "draft date", "date",     "contact",
    "copyright", "format", "draft",  "font",    "header", "watermark", "footer",     "revision", "titel",
    "autor",     "titre",  "auteur", "titolo",  "autore", "título",    "titulo",
};

std::string WithoutASCIICase(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return small;
}

// Words alone, and not in capitals: "He stops, then:" and "FADE IN:" are none.
bool IsLikely(std::string_view key) {
    constexpr std::size_t kMostBytes = 40;
    bool hasSmall = false;
    std::string_view rest = key;
    while (!rest.empty() && key.size() <= kMostBytes) {
        const std::int32_t character = TakeCharacter(rest);
        hasSmall = hasSmall || IsSmall(character);
        if (character != ' ' && character != '-' && !IsLetterOrDigit(character)) {
            return false;
        }
    }
    return rest.empty() && hasSmall && !IsHeading(key);
}

bool IsIndented(std::string_view line) {
    return WithoutLeadingBlanks(line).size() != line.size();
}

struct Entry {
    std::string_view key; // empty when the line is none: indented, without a colon, or an address
    std::string_view value;
};

Entry SplitEntry(std::string_view line) {
    constexpr std::string_view kWideColon = "\uff1a";
    const std::size_t narrow = line.find(':');
    const std::size_t wide = line.find(kWideColon);
    const std::size_t colon = std::min(narrow, wide);
    if (colon == std::string_view::npos || IsIndented(line) || line.substr(colon, 3) == "://") {
        return {{}, WithoutBlanks(line)};
    }
    const std::string_view value = line.substr(colon + (narrow < wide ? 1 : kWideColon.size()));
    return {WithoutTrailingBlanks(line.substr(0, colon)), WithoutBlanks(value)};
}

} // namespace

bool BeginsTitlePage(const Line& first, const Line& next) {
    const auto [key, value] = SplitEntry(first.text);
    return IsKnownTitleKey(key) || (IsLikely(key) && (!value.empty() || IsIndented(next.text)));
}

bool IsKnownTitleKey(std::string_view key) {
    return std::find(std::begin(kKnownKeys), std::end(kKnownKeys), WithoutASCIICase(key)) != std::end(kKnownKeys);
}

bool IsTitleKey(std::string_view key) {
    const std::string line = std::string(key) + ":";
    return !key.empty() && SplitEntry(line).key == key && key.find('\n') == std::string_view::npos &&
           key.find("[[") == std::string_view::npos && key.find("/*") == std::string_view::npos;
}

void TitlePage::AddLine(const Line& line) {
    const auto [key, value] = SplitEntry(line.text);
    if (!key.empty() || mEntries.empty()) {
        mLine = mEntries.empty() ? line.number : mLine;
        mHasKnownKey = mHasKnownKey || IsKnownTitleKey(key);
        mEntries.emplace_back(key, std::string());
    }
    std::string& all = mEntries.back().second;
    all += all.empty() || value.empty() ? "" : "\n";
    AppendPlainText(value, all);
}

void TitlePage::Finish(ScriptBuilder& builder) {
    for (const auto& [key, value] : mEntries) {
        builder.AddTitle(key, value);
    }
    if (!mHasKnownKey && !mEntries.empty()) {
        builder.Warn(WarningKind::Assumed, mLine, "read as a title page, though it has neither title nor author");
    }
}

} // namespace zonscreenplay::fountain
