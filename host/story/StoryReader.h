#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <zonstoryparser/StoryModel.h>

#include "story/SourceLines.h"
#include "story/StoryError.h"
#include "story/StoryLimits.h"

/// Reads a story file: an XML parser drives the library's handler.
///
/// The file is read as it comes, in pieces; beside the story only a piece, the longest single tag or text between two
/// tags, the open elements, and the names and entities that the file uses are in memory, all within limits. UTF-8,
/// UTF-16, Latin-1, ASCII and the one-byte encodings that the system knows are read. Nothing outside the file is ever
/// fetched: an external DTD is passed over, a reference to an external entity is an error. Internal entities are
/// expanded.
namespace zonstory {

struct StoryReadOptions {
    bool recordLines = false; ///< Fill Story::lines.
    StoryLimits limits;
    std::size_t pieceSize = std::size_t{64} * 1024; ///< How many bytes are read at a time.
};

/// A story as the user names it.
struct StoryFile {
    std::string path; ///< "-" for standard input.
    StoryLimits limits;
};

struct Story {
    boost::intrusive_ptr<zonstoryparser::Talewright> root; ///< Never null.
    SourceLines lines;
};

/// @param path  A file's name, or "-" for standard input.
/// @throws StoryError when the file cannot be read, is not well-formed, breaks the format's rules, or is no
/// story.
Story ReadStory(const std::string& path, const StoryReadOptions& options = {});

Story ReadStory(const StoryFile& file);

/// Reads a story from memory.
/// @param name  Stands for the file's name in an error.
/// @throws StoryError
Story ReadStoryFromMemory(std::string_view bytes, const std::string& name, const StoryReadOptions& options = {});

} // namespace zonstory
