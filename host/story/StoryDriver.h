#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zonstoryparser/StoryParser.h>

#include "story/ElementCache.h"
#include "story/StoryReader.h"

struct XML_ParserStruct;

namespace zonstory {

/// The XML parser on one side, the story's handler on the other: one story, fed in pieces.
///
///     StoryDriver driver("film.skrx", options);
///     do { /* fill driver.Buffer(size) */ driver.Parse(length, isLast); } while (!isLast);
///     Story story = driver.Finish();
class StoryDriver {
public:
    StoryDriver(std::string name, const StoryReadOptions& options);
    StoryDriver(const StoryDriver&) = delete;
    StoryDriver& operator=(const StoryDriver&) = delete;

    /// Room for the next piece; the parser's own, valid until Parse().
    char* Buffer(std::size_t size);
    /// @throws StoryError
    void Parse(std::size_t length, bool isLast);
    /// Records an error of the file system's in the handler and throws it.
    [[noreturn]] void FailToRead(const std::string& reason);
    /// Called once, after the last piece.
    /// @throws StoryError when the file holds no story.
    Story Finish();

private:
    friend struct ExpatCallbacks;
    struct FreeParser {
        void operator()(XML_ParserStruct* parser) const;
    };

    void StartElement(const char16_t* name, const char16_t* const* attributes);
    void EndElement(const char16_t* name);
    void Characters(const char16_t* text, std::size_t length);
    void DeliverText();
    void CheckUnfinishedMarkup();
    void CountEntity();
    void AddContent(std::size_t length);
    void RecordLine(const zoncore::UString& name);
    void StopAtHandlersError();
    void Stop(const std::string& message);
    SourcePosition Here() const;
    [[noreturn]] void Fail(SourcePosition position, const std::string& message);

    std::string mName;
    StoryReadOptions mOptions;
    std::unique_ptr<XML_ParserStruct, FreeParser> mExpat;
    zonstoryparser::StoryParser mHandler;
    ElementCache mElements;
    std::vector<CachedElement*> mOpen;
    zoncore::UString mText; // not delivered yet
    struct {
        std::size_t bytes = 0; // read from the file
        std::size_t content = 0;
        std::size_t text = 0; // since the last start tag
        std::size_t items = 0;
        std::size_t scenes = 0;
        std::size_t entities = 0;
    } mSpent;
    SourceLines mLines;
    std::string mRootName;
    SourcePosition mRootPosition;
    std::string mUnknownEncoding;
    std::optional<StoryError> mStopped; // what a callback stopped the parser for
    std::exception_ptr mThrown;         // what a callback threw; nothing may pass through the parser's own frames
};

} // namespace zonstory
