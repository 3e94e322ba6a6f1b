#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fountain/Lines.h"
#include "source/ScriptBuilder.h"

namespace zonscreenplay::fountain {

/// Whether the first line of a text begins a title page: "Key: value". Keys that title pages have count in any case;
/// of others, those that cannot be a cue or a transition such as FADE IN, and that have a value.
bool BeginsTitlePage(const Line& first, const Line& next);

/// One that title pages have, in any case: "Title", "Draft date".
bool IsKnownTitleKey(std::string_view key);
/// Whether it can be written in front of a colon and read again.
bool IsTitleKey(std::string_view key);

/// Gathers the title page, line by line. Its values go on over any number of lines, indented or not, up to the next key.
class TitlePage {
public:
    void AddLine(const Line& line);
    /// Hands it to the builder, and warns of one without a key that title pages have: that could be script.
    void Finish(ScriptBuilder& builder);

private:
    std::vector<std::pair<std::string, std::string>> mEntries;
    std::size_t mLine = 0;
    bool mHasKnownKey = false;
};

} // namespace zonscreenplay::fountain
