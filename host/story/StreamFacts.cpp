#include "story/StreamFacts.h"

#include <utility>

namespace zonstory {

namespace {

using zoncore::UTF16to8;
using zonstoryparser::Section;

void CountSection(const Section* section, StreamFacts& facts) {
    if (section == nullptr) {
        return;
    }
    for (const auto& scene : section->scenes) {
        ++facts.scenes;
        facts.paragraphs += scene->paragraphs.size();
        for (const auto& paragraph : scene->paragraphs) {
            facts.textRuns += paragraph->textRuns.size();
        }
    }
}

} // namespace

std::vector<StreamFacts> DescribeStreams(const zonstoryparser::Talewright& story) {
    std::vector<StreamFacts> table;
    if (!story.document) {
        return table;
    }
    const zonstoryparser::Document& document = *story.document;
    for (const auto& [kind, stream] :
         {std::pair("header", document.header.get()), std::pair("body", document.body.get()),
          std::pair("footer", document.footer.get())}) {
        if (stream != nullptr) {
            StreamFacts facts{kind, UTF16to8(stream->name), "", 0, 0, 0};
            CountSection(stream->section.get(), facts);
            table.push_back(std::move(facts));
        }
    }
    for (const auto& comments : document.commentStreams) {
        StreamFacts facts{"comments", UTF16to8(comments->name), UTF16to8(comments->commentAuthor), 0, 0, 0};
        CountSection(comments->section.get(), facts);
        table.push_back(std::move(facts));
    }
    return table;
}

} // namespace zonstory
