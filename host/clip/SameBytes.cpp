#include "clip/SameBytes.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "clip/Clip.h"
#include "clip/CountedBytes.h"
#include "clip/EditPlaces.h"
#include "clip/Interrupt.h"

namespace zonstory {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 18; // two of them stay in the cache of a core

[[noreturn]] void ThrowDifferent() {
    throw ClipError("its copy would not be the same everywhere else");
}

/// Compares a new version with what edits make of the old one, a piece at a time.
class Comparison {
public:
    Comparison(const ByteReader& old, const EditList& edits, const ByteReader& made)
        : mOld(old), mEdits(edits), mMade(made), mBuffer(std::make_unique_for_overwrite<char[]>(2 * kPiece)) {}

    void CompareStretch(const Stretch& stretch, const std::vector<ByteRange>& unread) {
        std::uint64_t from = stretch.from;
        const std::uint64_t end = stretch.from + stretch.size;
        for (const ByteRange& range : unread) {
            if (range.End() > from && range.offset < end) {
                CompareBytes(from, std::max(from, range.offset), stretch.to - stretch.from);
                from = std::min(end, range.End());
            }
        }
        CompareBytes(from, end, stretch.to - stretch.from);
    }

    void ComparePut(const Edit& edit, std::uint64_t to) {
        for (std::size_t done = 0; done < edit.put.size();) {
            const std::size_t piece = std::min(kPiece, edit.put.size() - done);
            mMade.Read(to + done, Made(), piece);
            Require(Made(), edit.put.data() + done, piece);
            done += piece;
        }
    }

private:
    char* Expected() const { return mBuffer.get(); }
    char* Made() const { return mBuffer.get() + kPiece; }

    static void Require(const char* made, const char* expected, std::size_t count) {
        if (std::memcmp(made, expected, count) != 0) {
            ThrowDifferent();
        }
    }

    // The same old bytes, further on by `moved`, modulo 2^64.
    void CompareBytes(std::uint64_t from, std::uint64_t end, std::uint64_t moved) {
        while (from < end) {
            ThrowIfInterrupted();
            const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, end - from));
            mOld.Read(from, Expected(), piece);
            PutOver({from, piece});
            mMade.Read(from + moved, Made(), piece);
            Require(Made(), Expected(), piece);
            CountBytes(piece);
            from += piece;
        }
    }

    // What is put in the place of as many bytes, into the old ones that were read.
    void PutOver(ByteRange read) {
        auto edit = std::lower_bound(
            mEdits.begin(), mEdits.end(), read.offset,
            [](const Edit& candidate, std::uint64_t offset) { return candidate.offset + candidate.taken <= offset; });
        for (; edit != mEdits.end() && edit->offset < read.End(); ++edit) {
            const std::uint64_t begin = std::max(edit->offset, read.offset);
            const std::uint64_t end = std::min(edit->offset + edit->put.size(), read.End());
            std::memcpy(Expected() + (begin - read.offset), edit->put.data() + (begin - edit->offset), end - begin);
        }
    }

    const ByteReader& mOld;
    const EditList& mEdits;
    const ByteReader& mMade;
    std::unique_ptr<char[]> mBuffer;
};

} // namespace

void RequireEdited(const ByteReader& old, const EditList& edits, const ByteReader& made,
                   const std::vector<ByteRange>& unread) {
    if (made.Size() != SizeAfter(edits, old.Size())) {
        ThrowDifferent();
    }
    Comparison comparison(old, edits, made);
    for (const Stretch& stretch : StretchesOf(edits, old.Size())) {
        comparison.CompareStretch(stretch, unread);
    }
    std::uint64_t moved = 0;
    for (const Edit& edit : edits) {
        if (!KeepsLength(edit)) {
            comparison.ComparePut(edit, edit.offset + moved);
        }
        moved += edit.put.size() - edit.taken;
    }
}

} // namespace zonstory
