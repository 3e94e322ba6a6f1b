#include <zonscreenplay/SourceLines.h>

#include <algorithm>
#include <functional>
#include <limits>

namespace zonscreenplay {

namespace {

// Pointers to different objects are ordered by std::less alone. What takes the place of an element that was dropped
// stands further down in the file, so the last of several lines is the element's.
bool IsBefore(const SourceLines::Entry& a, const SourceLines::Entry& b) {
    return a.first == b.first ? a.second < b.second : std::less<>()(a.first, b.first);
}

} // namespace

SourceLines::SourceLines(std::vector<Entry> entries) : mEntries(std::move(entries)) {
    std::sort(mEntries.begin(), mEntries.end(), IsBefore);
}

std::size_t SourceLines::Line(const void* element) const {
    const Entry last(element, std::numeric_limits<std::size_t>::max());
    const auto behind = std::upper_bound(mEntries.begin(), mEntries.end(), last, IsBefore);
    return behind != mEntries.begin() && std::prev(behind)->first == element ? std::prev(behind)->second : 0;
}

} // namespace zonscreenplay
