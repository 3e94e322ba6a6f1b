#include "clip/IXml.h"

#include <algorithm>
#include <memory>
#include <new>
#include <type_traits>

#include <expat.h>

#include <zoncore/UString.h>

#include "text/AsciiText.h"

namespace zonstory {

namespace {

static_assert(sizeof(XML_Char) == sizeof(char16_t), "the parser's UTF-16 build");

constexpr std::size_t kLongestValue = 4096;
constexpr int kDepthOfValues = 2; ///< BWFXML, and in it SCENE.

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

std::u16string_view View(const XML_Char* text) {
    return reinterpret_cast<const char16_t*>(text);
}

struct Value {
    std::u16string_view element;
    std::string IXml::*value;
};

constexpr Value kValues[] = {{u"PROJECT", &IXml::project},
                             {u"SCENE", &IXml::scene},
                             {u"TAKE", &IXml::take},
                             {u"TAPE", &IXml::tape},
                             {u"NOTE", &IXml::note}};

struct Reading {
    XML_Parser parser = nullptr;
    IXml ixml;
    int depth = 0;
    bool isIXml = false;
    std::string IXml::*current = nullptr;
    std::u16string text;
    bool outOfMemory = false;
};

// Nothing may be thrown through the parser's own frames.
template <typename Step>
void Guarded(void* userData, Step step) {
    Reading& reading = *static_cast<Reading*>(userData);
    try {
        step(reading);
    } catch (const std::bad_alloc&) {
        reading.outOfMemory = true;
        XML_StopParser(reading.parser, XML_FALSE);
    }
}

void OnStart(void* userData, const XML_Char* name, const XML_Char**) {
    Guarded(userData, [&](Reading& reading) {
        ++reading.depth;
        reading.current = nullptr;
        if (reading.depth == 1) {
            reading.isIXml = View(name) == u"BWFXML";
        } else if (reading.depth == kDepthOfValues && reading.isIXml) {
            for (const Value& value : kValues) {
                reading.current = View(name) == value.element ? value.value : reading.current;
            }
            reading.text.clear();
        }
    });
}

void OnText(void* userData, const XML_Char* text, int length) {
    Guarded(userData, [&](Reading& reading) {
        if (reading.current && reading.text.size() < kLongestValue) {
            reading.text.append(reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(length));
        }
    });
}

// The first of several elements of one name counts.
void OnEnd(void* userData, const XML_Char*) {
    Guarded(userData, [&](Reading& reading) {
        if (reading.current && (reading.ixml.*reading.current).empty()) {
            reading.ixml.*reading.current = WithoutBlanks(zoncore::UTF16to8(reading.text));
        }
        reading.current = nullptr;
        --reading.depth;
    });
}

void OnDocumentType(void* userData, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    XML_StopParser(static_cast<Reading*>(userData)->parser, XML_FALSE);
}

enum class Outcome { Whole, BadText, Other };

Outcome Parse(std::string_view bytes, const char16_t* encoding, Reading& reading) {
    const Parser parser(XML_ParserCreate(reinterpret_cast<const XML_Char*>(encoding)), &XML_ParserFree);
    if (!parser) {
        throw std::bad_alloc();
    }
    reading.parser = parser.get();
    XML_SetUserData(parser.get(), &reading);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    XML_SetStartDoctypeDeclHandler(parser.get(), OnDocumentType);
    constexpr std::size_t kMost = std::size_t{1} << 30;
    const auto length = static_cast<int>(std::min(bytes.size(), kMost));
    const bool parsed = XML_Parse(parser.get(), bytes.data(), length, XML_TRUE) == XML_STATUS_OK;
    const XML_Error error = XML_GetErrorCode(parser.get());
    if (reading.outOfMemory || error == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    const bool text = error == XML_ERROR_INVALID_TOKEN || error == XML_ERROR_UNKNOWN_ENCODING ||
                      error == XML_ERROR_INCORRECT_ENCODING || error == XML_ERROR_PARTIAL_CHAR;
    return parsed ? Outcome::Whole : text ? Outcome::BadText : Outcome::Other;
}

std::string_view WithoutPadding(std::string_view chunk) {
    using namespace std::string_view_literals;
    constexpr std::string_view kPadding = "\0 \t\r\n"sv;
    const std::size_t first = chunk.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = chunk.find_last_not_of(kPadding);
    const std::string_view text = chunk.substr(first, last + 1 - first);
    const bool isWide = text.find('\0') < 4; // UTF-16 keeps its last zero
    return isWide ? chunk.substr(first) : text;
}

} // namespace

std::optional<IXml> ParseIXml(std::string_view chunk) {
    const std::string_view bytes = WithoutPadding(chunk);
    Reading reading;
    if (Parse(bytes, nullptr, reading) == Outcome::BadText) {
        // On purpose: Latin-1, in which every byte is a letter, reads the ASCII of a slate whatever the file says it is.
        Reading again;
        Parse(bytes, u"ISO-8859-1", again);
        reading = again.isIXml ? std::move(again) : std::move(reading);
    }
    return reading.isIXml ? std::optional(std::move(reading.ixml)) : std::nullopt;
}

} // namespace zonstory
