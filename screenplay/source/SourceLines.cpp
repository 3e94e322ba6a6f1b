#include <zonscreenplay/SourceLines.h>

#include <algorithm>
#include <functional>

namespace zonscreenplay {

namespace {

// Pointers to different objects are ordered by std::less alone.
bool IsBefore(const SourceLines::Entry& a, const SourceLines::Entry& b) {
    return std::less<>()(a.first, b.first);
}

} // namespace

SourceLines::SourceLines(std::vector<Entry> entries) : mEntries(std::move(entries)) {
    std::stable_sort(mEntries.begin(), mEntries.end(), IsBefore);
}

std::size_t SourceLines::Line(const void* element) const {
    const auto behind = std::upper_bound(mEntries.begin(), mEntries.end(), Entry(element, 0), IsBefore);
    return behind != mEntries.begin() && std::prev(behind)->first == element ? std::prev(behind)->second : 0;
}

} // namespace zonscreenplay
