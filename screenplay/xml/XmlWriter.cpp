#include "xml/XmlWriter.h"

#include <cstdio>
#include <stdexcept>

#include <boost/nowide/utf/utf.hpp>

namespace zonscreenplay {

namespace {

namespace utf = boost::nowide::utf;

using zoncore::UString;

bool FitsXml(utf::code_point codePoint) {
    const bool isControl = codePoint < 0x20 && codePoint != '\t' && codePoint != '\n' && codePoint != '\r';
    return utf::is_valid_codepoint(codePoint) && !isControl && codePoint != 0xFFFE && codePoint != 0xFFFF;
}

[[noreturn]] void Refuse(char16_t unit) {
    char name[8] = {};
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(unit));
    throw std::invalid_argument(std::string("a text holds ") + name + ", which no XML file can carry");
}

// What would not come back as it is from a text; nothing for the others.
const char* TextReference(utf::code_point codePoint) {
    switch (codePoint) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r':
        return "&#13;";
    default:
        return nullptr;
    }
}

// The same for the value of an attribute, where any white space comes back as a blank.
const char* ValueReference(utf::code_point codePoint) {
    switch (codePoint) {
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    default:
        return TextReference(codePoint);
    }
}

void Append(const UString& text, const char* (*reference)(utf::code_point), std::string& xml) {
    const char16_t* position = text.data();
    const char16_t* const end = position + text.size();
    while (position != end) {
        const char16_t first = *position;
        const utf::code_point codePoint = utf::utf_traits<char16_t>::decode(position, end);
        if (!FitsXml(codePoint)) {
            Refuse(first);
        }
        if (const char* const word = reference(codePoint)) {
            xml += word;
        } else {
            char bytes[4] = {};
            const char* const last = utf::utf_traits<char>::encode(codePoint, bytes);
            xml.append(bytes, static_cast<std::size_t>(last - bytes));
        }
    }
}

} // namespace

XmlWriter::Element::Element(XmlWriter& writer, const char* name) : mWriter(writer), mName(name) {
    mWriter.mText.append(2 * mWriter.mDepth, ' ').append("<").append(name);
}

XmlWriter::Element& XmlWriter::Element::With(const char* name, const UString& value) {
    if (!value.empty()) {
        mWriter.mText.append(" ").append(name).append("=\"");
        Append(value, &ValueReference, mWriter.mText);
        mWriter.mText += '"';
    }
    return *this;
}

void XmlWriter::Element::Holds(const UString& text) {
    mWriter.mText += '>';
    Append(text, &TextReference, mWriter.mText);
    mWriter.mText.append("</").append(mName).append(">\n");
}

XmlWriter::XmlWriter() : mText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

void XmlWriter::Open() {
    mText += ">\n";
    ++mDepth;
}

void XmlWriter::Close(const char* name) {
    --mDepth;
    mText.append(2 * mDepth, ' ').append("</").append(name).append(">\n");
}

} // namespace zonscreenplay
