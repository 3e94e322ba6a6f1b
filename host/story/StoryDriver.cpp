#include "story/StoryDriver.h"

#include <cstring>
#include <new>
#include <utility>

#include <expat.h>

#include "story/SingleByteEncoding.h"

static_assert(sizeof(XML_Char) == sizeof(char16_t), "the XML parser must be the build that reports UTF-16");

namespace zonstory {

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
        auto& driver = *static_cast<StoryDriver*>(data);
        if (driver.mThrown || driver.mStopped) {
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
        Guarded(data, [&](StoryDriver& driver) { driver.StartElement(Units(name), Units(attributes)); });
    }

    static void XMLCALL End(void* data, const XML_Char* name) {
        Guarded(data, [&](StoryDriver& driver) { driver.EndElement(Units(name)); });
    }

    static void XMLCALL Text(void* data, const XML_Char* text, int length) {
        Guarded(data, [&](StoryDriver& driver) { driver.Characters(Units(text), static_cast<std::size_t>(length)); });
    }

    // Passed over, such an entity would lose text without a word.
    static int XMLCALL ExternalEntity(XML_Parser parser, const XML_Char*, const XML_Char*, const XML_Char* systemId,
                                      const XML_Char*) {
        Guarded(XML_GetUserData(parser), [&](StoryDriver& driver) {
            const std::string source = systemId == nullptr ? "" : " '" + UTF8(systemId) + "'";
            driver.Stop("the text of an external entity" + source + " is asked for; nothing outside the file is read");
        });
        return XML_STATUS_ERROR;
    }

    static void XMLCALL SkippedEntity(void* data, const XML_Char* name, int isParameterEntity) {
        if (isParameterEntity == 0) {
            Guarded(data, [&](StoryDriver& driver) {
                driver.Stop("the entity '" + UTF8(name) + "' is not defined in the file");
            });
        }
    }

    static void XMLCALL EntityDeclaration(void* data, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                          const XML_Char*, const XML_Char*, const XML_Char*) {
        Guarded(data, [](StoryDriver& driver) { driver.CountEntity(); });
    }

    static int XMLCALL UnknownEncoding(void* data, const XML_Char* name, XML_Encoding* info) {
        int status = XML_STATUS_ERROR;
        Guarded(data, [&](StoryDriver& driver) {
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

void StoryDriver::FreeParser::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

StoryDriver::StoryDriver(std::string name, const StoryReadOptions& options)
    : mName(std::move(name)), mOptions(options), mExpat(XML_ParserCreate(nullptr)) {
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
    mHandler.StartDocument();
}

char* StoryDriver::Buffer(std::size_t size) {
    void* const buffer = XML_GetBuffer(mExpat.get(), static_cast<int>(size));
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    return static_cast<char*>(buffer);
}

void StoryDriver::Parse(std::size_t length, bool isLast) {
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
    if (mStopped) {
        Fail(mStopped->Position(), mStopped->Message());
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
void StoryDriver::CheckUnfinishedMarkup() {
    const XML_Index start = XML_GetCurrentByteIndex(mExpat.get()); // of what is unfinished; -1 before the first byte
    if (start >= 0 && mSpent.bytes - static_cast<std::size_t>(start) > mOptions.limits.markup) {
        Fail(Here(),
             "a tag, comment or declaration is longer than " + std::to_string(mOptions.limits.markup) + " bytes");
    }
}

void StoryDriver::FailToRead(const std::string& reason) {
    Fail({}, reason);
}

Story StoryDriver::Finish() {
    mHandler.EndDocument();
    if (!mHandler.GetStory()) {
        Fail(mRootPosition, "no story: the file's root is <" + mRootName + ">, not <Talewright>");
    }
    return {mHandler.GetStory(), std::move(mLines)};
}

void StoryDriver::StartElement(const char16_t* name, const char16_t* const* attributes) {
    CachedElement& element = mElements.Find(name);
    if (mOpen.empty()) {
        mRootName = zoncore::UTF16to8(element.Name());
        mRootPosition = Here();
    }
    mOpen.push_back(&element);
    const StoryLimits& limits = mOptions.limits;
    if (mOpen.size() > limits.depth) {
        return Stop("elements are nested more than " + std::to_string(limits.depth) + " deep");
    }
    mSpent.items += 1 + CountAttributes(attributes);
    if (mSpent.items > limits.items) { // before they are copied: a declaration gives an element any number of them
        return Stop("the story has more than " + std::to_string(limits.items) + " elements and attributes");
    }
    if (element.Name() == u"scene" && ++mSpent.scenes > limits.scenes) {
        return Stop("the story has more than " + std::to_string(limits.scenes) + " scenes");
    }
    mSpent.text = 0;
    AddContent(element.SetAttributes(attributes));
    if (mStopped) {
        return;
    }
    DeliverText();
    mHandler.StartElement(element.Name(), element.Attributes());
    if (mHandler.HasParseError()) {
        return StopAtHandlersError();
    }
    if (mOptions.recordLines) {
        RecordLine(element.Name());
    }
}

void StoryDriver::EndElement(const char16_t* name) {
    CachedElement& element = *mOpen.back();
    mOpen.pop_back();
    mElements.Restore(element, name);
    DeliverText();
    mHandler.EndElement(element.Name());
    if (mHandler.HasParseError()) {
        StopAtHandlersError();
    }
}

void StoryDriver::Characters(const char16_t* text, std::size_t length) {
    AddContent(length);
    mSpent.text += length;
    if (mSpent.text > mOptions.limits.text) {
        Stop("a text is longer than " + std::to_string(mOptions.limits.text) + " characters");
    }
    if (mStopped) {
        return;
    }
    mText.append(text, length);
    if (mText.size() >= kTextPiece) {
        DeliverText();
    }
}

// The parser reports every line end and every entity apart; the handler gets them together.
void StoryDriver::DeliverText() {
    if (!mText.empty()) {
        mHandler.Characters(mText);
        mText.clear();
    }
}

void StoryDriver::CountEntity() {
    if (++mSpent.entities > mOptions.limits.entities) {
        Stop("the file declares more than " + std::to_string(mOptions.limits.entities) + " entities");
    }
}

void StoryDriver::AddContent(std::size_t length) {
    mSpent.content += length;
    if (mSpent.content > mOptions.limits.size) {
        Stop("the story's text is longer than " + std::to_string(mOptions.limits.size) +
             " characters, entities and default attributes included");
    }
}

void StoryDriver::RecordLine(const zoncore::UString& name) {
    const std::size_t line = XML_GetCurrentLineNumber(mExpat.get());
    if (name == u"paragraph") {
        mLines.AfterParagraph(line);
    } else if (name == u"scene") {
        mLines.AfterScene(line);
    } else if (name == u"section") {
        mLines.AfterSection(mHandler.GetStory().get(), line);
    }
}

void StoryDriver::StopAtHandlersError() {
    Stop(zoncore::UTF16to8(mHandler.GetParseError()));
}

void StoryDriver::Stop(const std::string& message) {
    if (!mStopped) {
        mStopped.emplace(mName, Here(), message);
        XML_StopParser(mExpat.get(), XML_FALSE);
    }
}

SourcePosition StoryDriver::Here() const {
    return {XML_GetCurrentLineNumber(mExpat.get()), XML_GetCurrentColumnNumber(mExpat.get()) + 1};
}

void StoryDriver::Fail(SourcePosition position, const std::string& message) {
    if (!mHandler.HasParseError()) {
        mHandler.SetParseError(zoncore::UTF8to16(message));
    }
    throw StoryError(mName, position, zoncore::UTF16to8(mHandler.GetParseError()));
}

} // namespace zonstory
