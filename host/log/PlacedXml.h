#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "log/LogText.h"

namespace zonstory {

using XmlAttributes = std::unordered_map<std::string, std::string>;

/// A start tag, and its bytes in the file.
struct PlacedTag {
    std::string name;
    XmlAttributes attributes;
    std::size_t line = 0;
    std::size_t begin = 0;
    std::size_t end = 0;
    bool isEmpty = false; ///< `<note/>`
};

/// What is told of a document while it is parsed. All text is UTF-8; positions are in bytes.
class PlacedXmlHandler {
public:
    PlacedXmlHandler() = default;
    PlacedXmlHandler(const PlacedXmlHandler&) = delete;
    PlacedXmlHandler& operator=(const PlacedXmlHandler&) = delete;
    virtual ~PlacedXmlHandler() = default;

    /// @return Why the document is refused; null when it is not.
    virtual const char* Start(const PlacedTag& tag) = 0;
    virtual void Text(std::string_view text) = 0;
    /// @param begin  Of the end tag; of an empty tag, its end.
    virtual void End(std::size_t begin, std::size_t end) = 0;
};

/// Parses a document and tells where its tags are. No entity of a document type is ever expanded.
/// @param name  The file's, for messages.
/// @return The encoding that the document says it has, in small letters; empty where it says none.
/// @throws CsvError "name:line: reason" when it is not well-formed, is refused, or declares entities.
std::string ParsePlacedXml(std::string_view bytes, const LogText& text, const std::string& name,
                           PlacedXmlHandler& handler);

} // namespace zonstory
