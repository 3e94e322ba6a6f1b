#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace bench {

enum class Form { Story, FDX, Fountain };

/// Writes screenplays of any size and form: the same text for the same size, on every machine.
///
/// A scene has a heading, in a story file with a duration, action, and six speeches, of ordinary lengths; every tenth speaker and every
/// fifth location is not ASCII.
class StoryGenerator {
public:
    explicit StoryGenerator(Form form = Form::Story) : mForm(form) {}

    /// A whole story, in UTF-8, of at least `bytes` and at most one scene more.
    std::string OfSize(std::size_t bytes);
    /// A whole story of so many scenes.
    std::string OfScenes(std::size_t scenes);

private:
    const char* Begin() const;
    const char* End() const;
    void AppendScene(std::string& story);
    void AppendHeading(std::string& story, const std::string& text);
    void AppendParagraph(std::string& story, const std::string& kind, const std::string& text);
    void AppendStoryParagraph(std::string& story, const std::string& attributes, const std::string& text);
    std::string Words(std::size_t count);
    std::uint32_t Next(std::uint32_t bound);

    Form mForm;
    std::uint32_t mState = 1;
    std::size_t mScenes = 0;
    std::size_t mObjects = 0;
};

} // namespace bench
