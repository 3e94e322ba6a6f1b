#pragma once

#include <cstddef>

namespace zonscreenplay {

/// How much one screenplay may ask for. What passes a limit is refused where it does, so that a hostile file costs bounded
/// time and memory: with these numbers never more than about 2 GB. A season of scripts stays below a fifth of each.
struct Limits {
    static constexpr std::size_t kMiB = std::size_t{1024} * 1024;

    /// Bytes of the file, and again UTF-16 units of text and attribute values as the story receives them: with entities
    /// expanded and default attributes filled in.
    std::size_t size = 128 * kMiB;
    /// XML elements and attributes, counted together; of a file without markup, paragraphs and notes, each for two. A
    /// story has one in 30 bytes.
    std::size_t items = size / 16;
    std::size_t scenes = size / 256; ///< What is said of each takes ten times its room.
    std::size_t depth = 1000;        ///< Elements open at once; a story needs nine.
    std::size_t text = 16 * kMiB;    ///< UTF-16 units from one start tag to the next, or of one paragraph.
    std::size_t markup = kMiB;       ///< Bytes of one tag, comment or declaration, give or take a piece of reading.
    std::size_t entities = 1000;     ///< Declared in the file. The XML parser's stack grows with a chain of them.
    float amplification = 10;        ///< How many times over entities may multiply the file, once beyond 8 MiB.

    /// These limits for screenplays of up to `mebibytes`.
    static Limits ForSize(std::size_t mebibytes) {
        Limits limits;
        limits.size = mebibytes * kMiB;
        limits.items = limits.size / 16;
        limits.scenes = limits.size / 256;
        return limits;
    }
};

} // namespace zonscreenplay
