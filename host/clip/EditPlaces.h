#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

/// What a list of edits means for the places of a file's bytes.
namespace zonstory {

/// The size of the new version.
std::uint64_t SizeAfter(const EditList& edits, std::uint64_t size);

/// Bytes that lie side by side in both versions. Among them are those of edits that put as many bytes as they take.
struct Stretch {
    std::uint64_t from = 0; ///< In the old version.
    std::uint64_t to = 0;   ///< In the new one.
    std::uint64_t size = 0;
};

/// All stretches, in ascending order. Between them are the edits that change the length.
std::vector<Stretch> StretchesOf(const EditList& edits, std::uint64_t size);

inline bool KeepsLength(const Edit& edit) {
    return edit.taken == edit.put.size();
}

/// The places of old bytes in the new version.
class NewPlaces {
public:
    explicit NewPlaces(const EditList& edits);

    /// Nothing for a byte that is taken out, unless as many come in its place. Logarithmic in the number of edits.
    std::optional<std::uint64_t> Of(std::uint64_t offset) const;

private:
    struct Step {
        std::uint64_t begin;
        std::uint64_t end;   // what is taken lies before
        std::uint64_t moved; // by how much everything from `end` on does, modulo 2^64
        bool keepsLength;
    };
    std::vector<Step> mSteps;
};

/// The edits that make the old version of a file out of the new.
/// @param old  The file before the edits.
EditList InverseOf(const EditList& edits, const ByteReader& old);

/// Whether a list is one: in ascending order, none touching another, all within a file of this size.
bool AreInOrder(const EditList& edits, std::uint64_t size);

} // namespace zonstory
