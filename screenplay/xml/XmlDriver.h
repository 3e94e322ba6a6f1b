#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "xml/ElementCache.h"
#include "xml/XmlReader.h"

struct XML_ParserStruct;

namespace zonscreenplay {

class XmlDriver;

/// Makes the reader of a file once its root is known. Never null: a reader that cannot use the root fails.
using ChooseXmlReader =
    std::function<std::unique_ptr<XmlReader>(const XmlDriver& driver, const zoncore::UString& root)>;

/// The XML parser on one side, a format's reader on the other: one file, fed in pieces, within limits.
///
///     XmlDriver driver("film.fdx", options, choose);
///     do { /* fill driver.Buffer(size) */ driver.Parse(length, isLast); } while (!isLast);
///     Screenplay screenplay = driver.Finish();
///
/// UTF-8, UTF-16, Latin-1, ASCII and the one-byte encodings that the system knows are read. An external DTD is passed
/// over, a reference to an external entity is an error, internal entities are expanded.
class XmlDriver {
public:
    XmlDriver(std::string name, const ReadOptions& options, ChooseXmlReader choose);
    XmlDriver(const XmlDriver&) = delete;
    XmlDriver& operator=(const XmlDriver&) = delete;

    /// Room for the next piece; the parser's own, valid until Parse().
    char* Buffer(std::size_t size);
    /// @throws ReadError, and what the reader throws.
    void Parse(std::size_t length, bool isLast);
    /// Called once, after the last piece.
    Screenplay Finish();

    /// Where the parser stands: while a reader is called, at the start of what it is called for.
    Position Here() const;
    const std::string& Name() const { return mName; }
    const ReadOptions& Options() const { return mOptions; }
    [[noreturn]] void Fail(Position position, const std::string& message) const;

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

    std::string mName;
    ReadOptions mOptions;
    ChooseXmlReader mChoose;
    std::unique_ptr<XML_ParserStruct, FreeParser> mExpat;
    std::unique_ptr<XmlReader> mReader; // null before the root
    ElementCache mElements;
    std::vector<CachedElement*> mOpen;
    zoncore::UString mText; // not delivered yet
    struct {
        std::size_t bytes = 0; // read from the file
        std::size_t content = 0;
        std::size_t text = 0; // since the last start tag
        std::size_t items = 0;
        std::size_t entities = 0;
    } mSpent;
    std::string mUnknownEncoding;
    std::exception_ptr mThrown; // what a callback threw; nothing may pass through the parser's own frames
};

} // namespace zonscreenplay
