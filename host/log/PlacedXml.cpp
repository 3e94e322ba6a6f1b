#include "log/PlacedXml.h"

#include <memory>
#include <new>
#include <type_traits>

#include <expat.h>

#include <zoncore/UString.h>

#include "output/CsvReader.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

static_assert(sizeof(XML_Char) == sizeof(char16_t), "the parser's UTF-16 build");

std::string Narrow(const XML_Char* text) {
    return zoncore::UTF16to8(reinterpret_cast<const char16_t*>(text));
}

class Parse {
public:
    Parse(std::string_view bytes, const LogText& text, PlacedXmlHandler& handler)
        : mBytes(bytes), mText(text), mHandler(handler), mParser(XML_ParserCreate(nullptr), &XML_ParserFree) {
        if (!mParser) {
            throw std::bad_alloc();
        }
        XML_SetUserData(mParser.get(), this);
        XML_SetElementHandler(mParser.get(), OnStart, OnEnd);
        XML_SetCharacterDataHandler(mParser.get(), OnText);
        XML_SetXmlDeclHandler(mParser.get(), OnDeclaration);
        XML_SetEntityDeclHandler(mParser.get(), OnEntity);
    }

    std::string Run(const std::string& name) {
        constexpr std::size_t kMost = std::size_t{1} << 24;
        std::string_view rest = mBytes;
        for (bool isLast = false; !isLast;) {
            const std::string_view part = rest.substr(0, kMost);
            rest.remove_prefix(part.size());
            isLast = rest.empty();
            if (XML_Parse(mParser.get(), part.data(), static_cast<int>(part.size()), isLast ? 1 : 0) != XML_STATUS_OK) {
                Fail(name);
            }
        }
        return mEncoding;
    }

private:
    [[noreturn]] void Fail(const std::string& name) const {
        const XML_Error error = XML_GetErrorCode(mParser.get());
        if (mIsOutOfMemory || error == XML_ERROR_NO_MEMORY) {
            throw std::bad_alloc();
        }
        throw CsvError(name, Line(), mRefusal != nullptr ? mRefusal : XML_ErrorString(error));
    }

    // Nothing may be thrown through the parser's own frames.
    template <typename Step>
    static void Guarded(void* userData, Step step) {
        Parse& parse = *static_cast<Parse*>(userData);
        try {
            if (parse.mRefusal == nullptr) { // the end of a refused element is told all the same
                step(parse);
            }
        } catch (const std::bad_alloc&) {
            parse.mIsOutOfMemory = true;
            XML_StopParser(parse.mParser.get(), XML_FALSE);
        }
    }

    void Refuse(const char* reason) {
        mRefusal = reason;
        XML_StopParser(mParser.get(), XML_FALSE);
    }

    std::size_t Line() const { return static_cast<std::size_t>(XML_GetCurrentLineNumber(mParser.get())); }
    std::size_t Begin() const { return static_cast<std::size_t>(XML_GetCurrentByteIndex(mParser.get())); }
    std::size_t End() const { return Begin() + static_cast<std::size_t>(XML_GetCurrentByteCount(mParser.get())); }

    static void OnStart(void* userData, const XML_Char* name, const XML_Char** attributes) {
        Guarded(userData, [=](Parse& parse) {
            PlacedTag tag = {Narrow(name), {}, parse.Line(), parse.Begin(), parse.End(), false};
            tag.isEmpty = parse.mText.Signs().substr(parse.mText.SignAt(tag.end) - 2, 1) == "/";
            for (const XML_Char** pair = attributes; *pair != nullptr; pair += 2) {
                tag.attributes.emplace(Narrow(pair[0]), Narrow(pair[1]));
            }
            if (const char* const reason = parse.mHandler.Start(tag)) {
                parse.Refuse(reason);
            }
        });
    }

    static void OnEnd(void* userData, const XML_Char*) {
        Guarded(userData, [](Parse& parse) { parse.mHandler.End(parse.Begin(), parse.End()); });
    }

    static void OnText(void* userData, const XML_Char* text, int length) {
        Guarded(userData, [=](Parse& parse) {
            parse.mHandler.Text(
                zoncore::UTF16to8({reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(length)}));
        });
    }

    static void OnDeclaration(void* userData, const XML_Char*, const XML_Char* encoding, int) {
        Guarded(userData,
                [=](Parse& parse) { parse.mEncoding = encoding == nullptr ? "" : LowerCase(Narrow(encoding)); });
    }

    // On purpose: what an entity stands for has no place of its own in the file, so positions within it would be wrong.
    static void OnEntity(void* userData, const XML_Char*, int, const XML_Char*, int, const XML_Char*, const XML_Char*,
                         const XML_Char*, const XML_Char*) {
        Guarded(userData, [](Parse& parse) { parse.Refuse("declares entities"); });
    }

    std::string_view mBytes;
    const LogText& mText;
    PlacedXmlHandler& mHandler;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> mParser;
    std::string mEncoding;
    const char* mRefusal = nullptr;
    bool mIsOutOfMemory = false;
};

} // namespace

std::string ParsePlacedXml(std::string_view bytes, const LogText& text, const std::string& name,
                           PlacedXmlHandler& handler) {
    return Parse(bytes, text, handler).Run(name);
}

} // namespace zonstory
