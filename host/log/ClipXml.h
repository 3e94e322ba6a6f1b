#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/ForeignText.h"

namespace zonstory {

/// A clip of an FCPXML file, `clip` or `asset-clip`: what is known of it, and where in the file more can be said.
/// Positions are in bytes.
struct XmlClip {
    /// A text within the file: of an element, or the value of an attribute.
    struct Text {
        std::size_t begin = 0;
        std::size_t end = 0;
        std::string text;        ///< UTF-8.
        bool isEmptyTag = false; ///< `<note/>`, behind which both positions then are.
    };
    /// An attribute of metadata; without a value, where one would have to be.
    struct Datum {
        std::size_t begin = 0;
        std::size_t end = 0;
        std::string text;
        bool hasValue = false;
    };
    struct Metadata {
        std::size_t end = 0; ///< Of its tag, or of the last element in it.
        bool isEmptyTag = false;
    };

    std::size_t line = 0;
    std::string element;
    std::string name;
    std::string file; ///< The path of its media, where that is told; else empty.
    std::string start;
    std::string duration;
    std::vector<std::string> keywords;
    std::string assetScene; ///< What the media's metadata says, for all clips of it.
    std::string assetTake;

    std::size_t tagEnd = 0;
    bool isEmptyTag = false;
    std::optional<std::string> indent; ///< In front of the tag; nothing where it does not begin its line.
    std::size_t keywordsAt = 0;        ///< Behind all that stands in front of keywords.
    std::size_t lastAt = 0;            ///< Behind its last element.
    std::optional<Text> note;
    std::optional<Metadata> metadata;
    std::optional<Datum> scene;
    std::optional<Datum> take;
};

struct ClipXml {
    std::vector<XmlClip> clips;
    TextEncoding encoding = TextEncoding::UTF8;
    bool isAsciiOnly = false; ///< The file says that it has another one; what is not ASCII is written by its number.
    std::string lineEnd;      ///< The file's first.
};

/// The keys of `md` elements.
inline constexpr std::string_view kSceneKey = "com.apple.proapps.studio.scene";
inline constexpr std::string_view kTakeKey = "com.apple.proapps.studio.shot";

/// Whether these bytes are XML of some kind.
bool IsXml(std::string_view bytes);

/// Finds the clips of an FCPXML file. No entity of a document type is ever expanded.
/// @throws CsvError "name:line: reason" when it is none, is not well-formed, or declares entities.
ClipXml ReadClipXml(std::string_view bytes, const std::string& name);

} // namespace zonstory
