#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include <zoncore/AbstractParseHandler.h>
#include <zoncore/UString.h>

namespace zonscreenplay {

/// One element's name and attributes, in the form that the story's handler takes.
///
/// Elements of one name mostly carry the same attributes in the same order: then only the values are
/// assigned, into strings that have grown to fit, and reading a file allocates next to nothing beside the
/// story itself.
class CachedElement {
public:
    const zoncore::UString& Name() const { return mName; }
    const zoncore::AttributeMap& Attributes() const { return mAttributes; }

    void SetName(const char16_t* name) { mName = name; }
    /// @param attributes  Names and values in turn, ended by a null pointer.
    /// @return The length of all values together.
    std::size_t SetAttributes(const char16_t* const* attributes);

private:
    bool AssignInPlace(const char16_t* const* attributes);
    void Rebuild(const char16_t* const* attributes);

    zoncore::UString mName;
    zoncore::AttributeMap mAttributes;
    std::vector<zoncore::AttributeMap::iterator> mInFileOrder;
    std::vector<zoncore::AttributeMap::node_type> mSpareNodes;
};

/// The elements seen so far, by name. Of a file with more names than a story has, those beyond the first few
/// share one place, so a hostile file cannot make it grow.
class ElementCache {
public:
    /// The place of this name. Its name is set; its attributes are those of the last element in this place.
    CachedElement& Find(const char16_t* name);

    /// Sets the name of a place again that other elements may have used since.
    void Restore(CachedElement& place, const char16_t* name) {
        if (&place == &mOthers) {
            place.SetName(name);
        }
    }

private:
    static constexpr std::size_t kPlaces = 16; // the format has ten names

    std::array<CachedElement, kPlaces> mElements;
    std::size_t mUsed = 0;
    CachedElement mOthers;
};

} // namespace zonscreenplay
