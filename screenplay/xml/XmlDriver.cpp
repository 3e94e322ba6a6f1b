#include "xml/XmlDriver.h"

#include <cstring>
#include <new>
#include <utility>

#include <expat.h>

#include "source/SingleByteEncoding.h"

static_assert(sizeof(XML_Char) == sizeof(char16_t), "the XML parser must be the build that reports UTF-16");

namespace zonscreenplay {

namespace {

// The parser says unsigned short for the same sixteen bits.
const char16_t* Units(const XML_Char* text) {
    return reinterpret_cast<const char16_t*>(text);
}

const char16_t* const* Units(const XML_Char** texts) {
    return reinterpret_cast<const char16_t* const*>(texts);
}

constexpr std::size_t kTextPiece = 16'000; // characters that are held back at most

std::size_t CountAttributes(const char16_t* const* attributes) {
    std::size_t count = 0;
    while (attributes[2 * count] != nullptr) {
        ++count;
    }
    return count;
}

std::string UTF8(const XML_Char* text) {
    return zoncore::UTF16to8(Units(text));
}

} // namespace

/// What the parser calls: hands the event on and keeps every exception away from the parser, which is C.
struct ExpatCallbacks {
    template <typename Step>
    static void Guarded(void* data, Step step) {
        auto& driver = *static_cast<XmlDriver*>(data);
        if (driver.mThrown) {
            return; // a parser that was stopped may still have events to deliver
        }
        try {
            step(driver);
        } catch (...) {
            driver.mThrown = std::current_exception();
            XML_StopParser(driver.mExpat.get(), XML_FALSE);
        }
    }

    static void XMLCALL Start(void* data, const XML_Char* name, const XML_Char** attributes) {
        Guarded(data, [&](XmlDriver& driver) { driver.StartElement(Units(name), Units(attributes)); });
    }

    static void XMLCALL End(void* data, const XML_Char* name) {
        Guarded(data, [&](XmlDriver& driver) { driver.EndElement(Units(name)); });
    }

    static void XMLCALL Text(void* data, const XML_Char* text, int length) {
        Guarded(data, [&](XmlDriver& driver) { driver.Characters(Units(text), static_cast<std::size_t>(length)); });
    }

    // Passed over, such an entity would lose text without a word.
    static int XMLCALL ExternalEntity(XML_Parser parser, const XML_Char*, const XML_Char*, const XML_Char* systemId,
                                      const XML_Char*) {
        Guarded(XML_GetUserData(parser), [&](XmlDriver& driver) {
            const std::string source = systemId == nullptr ? "" : " '" + UTF8(systemId) + "'";
            driver.Fail(driver.Here(),
                        "the text of an external entity" + source + " is asked for; nothing outside the file is read");
        });
        return XML_STATUS_ERROR;
    }

    static void XMLCALL SkippedEntity(void* data, const XML_Char* name, int isParameterEntity) {
        if (isParameterEntity == 0) {
            Guarded(data, [&](XmlDriver& driver) {
                driver.Fail(driver.Here(), "the entity '" + UTF8(name) + "' is not defined in the file");
            });
        }
    }

    static void XMLCALL EntityDeclaration(void* data, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                          const XML_Char*, const XML_Char*, const XML_Char*) {
        Guarded(data, [](XmlDriver& driver) { driver.CountEntity(); });
    }

    static int XMLCALL UnknownEncoding(void* data, const XML_Char* name, XML_Encoding* info) {
        int status = XML_STATUS_ERROR;
        Guarded(data, [&](XmlDriver& driver) {
            driver.mUnknownEncoding = UTF8(name);
            if (const auto table = FindSingleByteEncoding(driver.mUnknownEncoding)) {
                std::memcpy(info->map, table->data(), sizeof info->map);
                info->data = nullptr;
                info->convert = nullptr;
                info->release = nullptr;
                status = XML_STATUS_OK;
            }
        });
        return status;
    }
};

void XmlDriver::FreeParser::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

XmlDriver::XmlDriver(std::string name, const ReadOptions& options, ChooseXmlReader choose)
    : mName(std::move(name)), mOptions(options), mChoose(std::move(choose)), mExpat(XML_ParserCreate(nullptr)) {
    if (!mExpat) {
        throw std::bad_alloc();
    }
    XML_Parser parser = mExpat.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, &ExpatCallbacks::Start, &ExpatCallbacks::End);
    XML_SetCharacterDataHandler(parser, &ExpatCallbacks::Text);
    XML_SetExternalEntityRefHandler(parser, &ExpatCallbacks::ExternalEntity);
    XML_SetSkippedEntityHandler(parser, &ExpatCallbacks::SkippedEntity);
    XML_SetEntityDeclHandler(parser, &ExpatCallbacks::EntityDeclaration);
    XML_SetUnknownEncodingHandler(parser, &ExpatCallbacks::UnknownEncoding, this);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser, mOptions.limits.amplification);
}

char* XmlDriver::Buffer(std::size_t size) {
    void* const buffer = XML_GetBuffer(mExpat.get(), static_cast<int>(size));
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    return static_cast<char*>(buffer);
}

void XmlDriver::Parse(std::size_t length, bool isLast) {
    mSpent.bytes += length;
    if (mSpent.bytes > mOptions.limits.size) {
        Fail(Here(), "the file is longer than " + std::to_string(mOptions.limits.size) + " bytes");
    }
    if (XML_ParseBuffer(mExpat.get(), static_cast<int>(length), isLast ? 1 : 0) != XML_STATUS_ERROR) {
        return CheckUnfinishedMarkup();
    }
    if (mThrown) {
        std::rethrow_exception(mThrown);
    }
    const XML_Error code = XML_GetErrorCode(mExpat.get());
    if (code == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    if (code == XML_ERROR_UNKNOWN_ENCODING) {
        Fail(Here(), "the encoding '" + mUnknownEncoding + "' is not known; save the story as UTF-8");
    }
    Fail(Here(), std::string("not well-formed XML: ") + XML_ErrorString(code));
}

// The parser looks at an unfinished tag anew with each piece, so a long one costs time in the square of its length.
void XmlDriver::CheckUnfinishedMarkup() {
    const XML_Index start = XML_GetCurrentByteIndex(mExpat.get()); // of what is unfinished; -1 before the first byte
    if (start >= 0 && mSpent.bytes - static_cast<std::size_t>(start) > mOptions.limits.markup) {
        Fail(Here(),
             "a tag, comment or declaration is longer than " + std::to_string(mOptions.limits.markup) + " bytes");
    }
}

Screenplay XmlDriver::Finish() {
    return mReader->Finish(); // well-formed XML has a root
}

Position XmlDriver::Here() const {
    return {XML_GetCurrentLineNumber(mExpat.get()), XML_GetCurrentColumnNumber(mExpat.get()) + 1};
}

void XmlDriver::Fail(Position position, const std::string& message) const {
    throw ReadError(mName, position, message);
}

void XmlDriver::StartElement(const char16_t* name, const char16_t* const* attributes) {
    CachedElement& element = mElements.Find(name);
    if (!mReader) {
        mReader = mChoose(*this, element.Name());
    }
    mOpen.push_back(&element);
    const Limits& limits = mOptions.limits;
    if (mOpen.size() > limits.depth) {
        Fail(Here(), "elements are nested more than " + std::to_string(limits.depth) + " deep");
    }
    mSpent.items += 1 + CountAttributes(attributes);
    if (mSpent.items > limits.items) { // before they are copied: a declaration gives an element any number of them
        Fail(Here(), "the story has more than " + std::to_string(limits.items) + " elements and attributes");
    }
    mSpent.text = 0;
    AddContent(element.SetAttributes(attributes));
    DeliverText();
    mReader->Start(element.Name(), element.Attributes());
}

void XmlDriver::EndElement(const char16_t* name) {
    CachedElement& element = *mOpen.back();
    mOpen.pop_back();
    mElements.Restore(element, name);
    DeliverText();
    mReader->End(element.Name());
}

void XmlDriver::Characters(const char16_t* text, std::size_t length) {
    AddContent(length);
    mSpent.text += length;
    if (mSpent.text > mOptions.limits.text) {
        Fail(Here(), "a text is longer than " + std::to_string(mOptions.limits.text) + " characters");
    }
    mText.append(text, length);
    if (mText.size() >= kTextPiece) {
        DeliverText();
    }
}

// The parser reports every line end and every entity apart; the reader gets them together.
void XmlDriver::DeliverText() {
    if (!mText.empty()) {
        mReader->Characters(mText);
        mText.clear();
    }
}

void XmlDriver::CountEntity() {
    if (++mSpent.entities > mOptions.limits.entities) {
        Fail(Here(), "the file declares more than " + std::to_string(mOptions.limits.entities) + " entities");
    }
}

void XmlDriver::AddContent(std::size_t length) {
    mSpent.content += length;
    if (mSpent.content > mOptions.limits.size) {
        Fail(Here(), "the story's text is longer than " + std::to_string(mOptions.limits.size) +
                         " characters, entities and default attributes included");
    }
}

} // namespace zonscreenplay
