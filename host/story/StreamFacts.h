#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <zonstoryparser/StoryModel.h>

namespace zonstory {

/// One stream of a story's document. All text is UTF-8.
struct StreamFacts {
    std::string kind;   ///< "header", "body", "footer" or "comments".
    std::string name;   ///< As the story names it.
    std::string author; ///< Of comments.
    std::size_t scenes = 0;
    std::size_t paragraphs = 0;
    std::size_t textRuns = 0;
};

/// Header, body and footer where the story has them, then the comments in file order.
std::vector<StreamFacts> DescribeStreams(const zonstoryparser::Talewright& story);

} // namespace zonstory
