#include "xml/ElementCache.h"

#include <utility>

namespace zonscreenplay {

namespace {

// Without measuring `text` first: most comparisons end at the first character.
bool IsSame(const zoncore::UString& known, const char16_t* text) {
    const char16_t* position = known.c_str();
    while (*position == *text && *position != 0) {
        ++position;
        ++text;
    }
    return *position == *text;
}

} // namespace

std::size_t CachedElement::SetAttributes(const char16_t* const* attributes) {
    if (!AssignInPlace(attributes)) {
        Rebuild(attributes);
    }
    std::size_t length = 0;
    for (const auto& entry : mInFileOrder) {
        length += entry->second.size();
    }
    return length;
}

// Returns false, with some values assigned, when the names differ from those of the last time.
bool CachedElement::AssignInPlace(const char16_t* const* attributes) {
    for (const auto& entry : mInFileOrder) {
        if (*attributes == nullptr || !IsSame(entry->first, attributes[0])) {
            return false;
        }
        entry->second = attributes[1];
        attributes += 2;
    }
    return *attributes == nullptr;
}

void CachedElement::Rebuild(const char16_t* const* attributes) {
    mInFileOrder.clear();
    while (!mAttributes.empty()) {
        mSpareNodes.push_back(mAttributes.extract(mAttributes.begin()));
    }
    for (; *attributes != nullptr; attributes += 2) {
        if (mSpareNodes.empty()) {
            mInFileOrder.push_back(mAttributes.emplace(attributes[0], attributes[1]).first);
            continue;
        }
        zoncore::AttributeMap::node_type node = std::move(mSpareNodes.back());
        mSpareNodes.pop_back();
        node.key() = attributes[0];
        node.mapped() = attributes[1];
        mInFileOrder.push_back(mAttributes.insert(std::move(node)).position);
    }
}

CachedElement& ElementCache::Find(const char16_t* name) {
    for (std::size_t index = 0; index < mUsed; ++index) {
        if (IsSame(mElements[index].Name(), name)) {
            return mElements[index];
        }
    }
    CachedElement& place = mUsed < kPlaces ? mElements[mUsed++] : mOthers;
    place.SetName(name);
    return place;
}

} // namespace zonscreenplay
