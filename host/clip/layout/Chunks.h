#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"

/// What RIFF (WAV, AVI), its forms beyond 4 GB (RF64, BW64) and IFF (AIFF) are made of: chunks of four characters, a size
/// and a content, each at an even place.
namespace zonstory {

constexpr std::uint64_t kChunkHeader = 8; ///< Name and size.
constexpr std::uint64_t kFormHeader = 12; ///< Name, size, and the name of what the form or list holds.

enum class ChunkOrder { Little, Big }; ///< RIFF, IFF.

struct Chunk {
    std::uint32_t name = 0; ///< As FourCharacters() gives it.
    ByteRange content;      ///< As its size says; may reach beyond what it lies in.
    std::uint64_t next = 0; ///< Where the next chunk begins; elsewhere than behind a pad byte where a writer forgot it.

    std::uint64_t Begin() const { return content.offset - kChunkHeader; }
};

/// The sizes that a form beyond 4 GB keeps in its first chunk, "ds64", for those whose own field has no room.
class LongSizes {
public:
    static constexpr std::uint32_t kElsewhere = 0xFFFFFFFF; ///< In a size field: it stands in "ds64".

    LongSizes() = default; ///< None: each size field means what it says.
    /// @param form  Where the form begins.
    LongSizes(const ByteReader& file, std::uint64_t form);

    bool Exist() const { return mChunk.size > 0; }
    /// The content of "ds64".
    const ByteRange& Chunk() const { return mChunk; }
    /// The size of the form itself.
    std::uint64_t FormSize() const { return mFormSize; }
    /// The size of a chunk of this name; nothing when none is known.
    std::optional<std::uint64_t> SizeOf(const ByteReader& file, std::uint32_t name) const;

private:
    ByteRange mChunk;
    std::uint64_t mFormSize = 0;
    std::uint64_t mDataSize = 0;
    std::uint64_t mRows = 0;
};

/// Goes through the chunks that lie side by side in a stretch of a file, reading their headers alone. Takes any bytes.
class Chunks {
public:
    /// @param file    Must outlive this, and so must `sizes`.
    /// @param within  Cut to the file.
    Chunks(const ByteReader& file, ChunkOrder order, ByteRange within, const LongSizes* sizes = nullptr);

    /// The next chunk. Nothing at the end, which is also where no name of a chunk stands, or behind one that reaches beyond
    /// `within`.
    std::optional<Chunk> Next();
    /// Where the chunk that Next() gives begins, or what is none.
    std::uint64_t Position() const { return mPosition; }
    std::uint64_t End() const { return mEnd; }

private:
    std::uint64_t SizeOf(std::uint32_t name);
    bool BeginsAt(std::uint64_t offset) const;
    std::uint64_t Behind(const ByteRange& content) const;

    const ByteReader& mFile;
    ChunkOrder mOrder;
    const LongSizes* mSizes;
    std::uint64_t mPosition;
    std::uint64_t mEnd;
};

/// The content of the first chunk of a name in a WAV or AVI, with gigabytes of media before it or not; the media is not
/// read. What lies beyond the end of the file is left out.
/// @param most  A content longer than this is cut: the memory it may take.
/// @return Nothing when this is no such file, or has no such chunk.
/// @throws FileError when the disk fails.
std::optional<std::string> FindRiffChunk(const ByteReader& file, std::uint32_t name,
                                         std::size_t most = std::size_t{1} << 20);

} // namespace zonstory
