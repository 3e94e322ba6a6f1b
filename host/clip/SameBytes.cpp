#include "clip/SameBytes.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

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

/// The checksums of the old version and of what edits make of it, from one reading of the old one.
class TwoHashers {
public:
    explicit TwoHashers(std::optional<HashKind> kind) {
        if (kind) {
            mHashers.emplace(Hasher(*kind), Hasher(*kind));
        }
    }

    bool AreWanted() const { return mHashers.has_value(); }

    void AddOld(std::string_view bytes) {
        if (mHashers) {
            mHashers->first.Add(bytes);
        }
    }

    void AddNew(std::string_view bytes) {
        if (mHashers) {
            mHashers->second.Add(bytes);
        }
    }

    Checksums Finish() {
        return mHashers ? Checksums{mHashers->first.Finish(), mHashers->second.Finish()} : Checksums();
    }

private:
    std::optional<std::pair<Hasher, Hasher>> mHashers;
};

/// Compares a new version with what edits make of the old one, a piece at a time, from front to back.
class Comparison {
public:
    Comparison(const ByteReader& old, const EditList& edits, const ByteReader& made, std::optional<HashKind> hash)
        : mOld(old), mEdits(edits), mMade(made), mHashers(hash),
          mBuffer(std::make_unique_for_overwrite<char[]>(2 * kPiece)) {}

    void CompareStretch(const Stretch& stretch, const std::vector<ByteRange>& unread) {
        std::uint64_t from = stretch.from;
        const std::uint64_t end = stretch.from + stretch.size;
        const std::uint64_t moved = stretch.to - stretch.from; // modulo 2^64
        for (const ByteRange& range : unread) {
            if (range.End() > from && range.offset < end) {
                GoThrough(from, std::max(from, range.offset), [&](auto piece) { Compare(piece, moved); });
                from = std::max(from, range.offset);
                if (mHashers.AreWanted()) {
                    GoThrough(from, std::min(end, range.End()), [](ByteRange) {});
                }
                from = std::min(end, range.End());
            }
        }
        GoThrough(from, end, [&](auto piece) { Compare(piece, moved); });
    }

    // An edit that changes the length, and where in the new version its bytes are.
    void CompareEdit(const Edit& edit, std::uint64_t to) {
        if (mHashers.AreWanted()) {
            HashTaken(edit);
            mHashers.AddNew(edit.put);
        }
        for (std::size_t done = 0; done < edit.put.size();) {
            const std::size_t piece = std::min(kPiece, edit.put.size() - done);
            mMade.Read(to + done, Made(), piece);
            Require(Made(), edit.put.data() + done, piece);
            done += piece;
        }
    }

    Checksums Finish() { return mHashers.Finish(); }

private:
    char* Expected() const { return mBuffer.get(); }
    char* Made() const { return mBuffer.get() + kPiece; }

    static void Require(const char* made, const char* expected, std::size_t count) {
        if (std::memcmp(made, expected, count) != 0) {
            ThrowDifferent();
        }
    }

    // Every piece of the old version as edits that keep the length make it.
    template <typename Visit>
    void GoThrough(std::uint64_t from, std::uint64_t end, const Visit& visit) {
        while (from < end) {
            ThrowIfInterrupted();
            const ByteRange piece = {from, std::min<std::uint64_t>(kPiece, end - from)};
            const auto count = static_cast<std::size_t>(piece.size);
            mOld.Read(from, Expected(), count);
            mHashers.AddOld({Expected(), count});
            PutOver(piece);
            mHashers.AddNew({Expected(), count});
            visit(piece);
            from += piece.size;
        }
    }

    void Compare(ByteRange piece, std::uint64_t moved) {
        const auto count = static_cast<std::size_t>(piece.size);
        mMade.Read(piece.offset + moved, Made(), count);
        Require(Made(), Expected(), count);
        CountBytes(piece.size);
    }

    void HashTaken(const Edit& edit) {
        for (std::uint64_t done = 0; done < edit.taken;) {
            const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, edit.taken - done));
            mOld.Read(edit.offset + done, Expected(), piece);
            mHashers.AddOld({Expected(), piece});
            done += piece;
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
    TwoHashers mHashers;
    std::unique_ptr<char[]> mBuffer;
};

} // namespace

Checksums RequireEdited(const ByteReader& old, const EditList& edits, const ByteReader& made,
                        const std::vector<ByteRange>& unread, std::optional<HashKind> hash) {
    if (made.Size() != SizeAfter(edits, old.Size())) {
        ThrowDifferent();
    }
    Comparison comparison(old, edits, made, hash);
    const std::vector<Stretch> stretches = StretchesOf(edits, old.Size());
    auto stretch = stretches.begin();
    std::uint64_t moved = 0;
    for (const Edit& edit : edits) {
        if (!KeepsLength(edit)) {
            for (; stretch != stretches.end() && stretch->from < edit.offset; ++stretch) {
                comparison.CompareStretch(*stretch, unread);
            }
            comparison.CompareEdit(edit, edit.offset + moved);
        }
        moved += edit.put.size() - edit.taken;
    }
    for (; stretch != stretches.end(); ++stretch) {
        comparison.CompareStretch(*stretch, unread);
    }
    return comparison.Finish();
}

} // namespace zonstory
