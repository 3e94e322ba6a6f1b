#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zonstory {

/// Reads up to `count` bytes at `offset` of a file into `bytes` and returns how many there were; fewer only at the end or
/// when the disk fails.
using ReadBytesAt = std::function<std::size_t(std::uint64_t offset, char* bytes, std::size_t count)>;

/// Finds a chunk of a WAV or AVI: of RIFF, RF64 or BW64, whose sizes beyond 4 GB stand in their "ds64" chunk.
///
/// Reads the chunks' headers and the chunk itself, never the media. Sizes are the file's word, and it may lie: what they
/// point to beyond the end of the file ends the search.
/// @param id    Four characters: "iXML".
/// @param most  A chunk longer than this is cut: the memory it may take.
/// @return Nothing when this is no such file, or has no such chunk.
std::optional<std::string> FindRiffChunk(const ReadBytesAt& read, std::uint64_t fileSize, std::string_view id,
                                         std::size_t most = std::size_t{1} << 20);

} // namespace zonstory
