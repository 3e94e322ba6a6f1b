#include "custody/MhlNames.h"

#include <climits>
#include <exception>
#include <memory>
#include <new>

#include <expat.h>
#include <fmt/format.h>
#include <zoncore/UString.h>

#include "text/AsciiText.h"

namespace zonstory {

namespace {

static_assert(sizeof(XML_Char) == sizeof(char16_t), "the XML parser must be the build that reports UTF-16");

std::u16string_view LocalName(const XML_Char* name) {
    const std::u16string_view text = reinterpret_cast<const char16_t*>(name);
    const std::size_t colon = text.rfind(u':');
    return colon == std::u16string_view::npos ? text : text.substr(colon + 1);
}

/// Follows the parser through a list.
class Reader {
public:
    explicit Reader(const NameReceiver& receive) : mReceive(receive), mParser(XML_ParserCreate(nullptr)) {
        if (!mParser) {
            throw std::bad_alloc();
        }
        XML_SetUserData(mParser.get(), this);
        XML_SetElementHandler(
            mParser.get(),
            [](void* data, const XML_Char* name, const XML_Char**) { Guarded(data, &Reader::Start, LocalName(name)); },
            [](void* data, const XML_Char*) { Guarded(data, &Reader::End); });
        XML_SetCharacterDataHandler(mParser.get(), [](void* data, const XML_Char* text, int length) {
            Guarded(data, &Reader::Text,
                    std::u16string_view(reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(length)));
        });
        XML_SetStartDoctypeDeclHandler(mParser.get(), [](void* data, const XML_Char*, const XML_Char*, const XML_Char*,
                                                         int) { Guarded(data, &Reader::Refuse); });
    }

    void Read(std::string_view bytes) {
        if (bytes.size() > INT_MAX) {
            throw HashListError("is too large to be one");
        }
        const XML_Status status = XML_Parse(mParser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
        if (mThrown) {
            std::rethrow_exception(mThrown);
        }
        if (status != XML_STATUS_OK) {
            throw HashListError(fmt::format("is not well-formed in line {}", XML_GetCurrentLineNumber(mParser.get())));
        }
    }

private:
    struct FreeParser {
        void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
    };

    // Keeps every exception away from the parser, which is C.
    template <typename Step, typename... Arguments>
    static void Guarded(void* data, Step step, Arguments... arguments) {
        auto& reader = *static_cast<Reader*>(data);
        if (reader.mThrown) {
            return; // a parser that was stopped may still have events to deliver
        }
        try {
            (reader.*step)(arguments...);
        } catch (...) {
            reader.mThrown = std::current_exception();
            XML_StopParser(reader.mParser.get(), XML_FALSE);
        }
    }

    void Refuse() { throw HashListError("declares a document type"); }

    void Start(std::u16string_view name) {
        if (mDepth == 0 && name != u"hashlist") {
            throw HashListError("is no hash list");
        }
        mIsName = mHashDepth > 0 && mDepth == mHashDepth && (name == u"file" || name == u"path");
        mName.clear();
        ++mDepth;
        if (mHashDepth == 0 && name == u"hash") {
            mHashDepth = mDepth;
        }
    }

    void Text(std::u16string_view text) {
        if (mIsName) {
            mName += text;
        }
    }

    void End() {
        if (mIsName) {
            mReceive(std::string(WithoutBlanks(zoncore::UTF16to8(mName))));
        }
        mIsName = false;
        mHashDepth = mDepth == mHashDepth ? 0 : mHashDepth;
        --mDepth;
    }

    const NameReceiver& mReceive;
    std::unique_ptr<XML_ParserStruct, FreeParser> mParser;
    std::exception_ptr mThrown;
    std::size_t mDepth = 0;
    std::size_t mHashDepth = 0; ///< Of what lies in the <hash> that is open; 0 outside.
    bool mIsName = false;
    std::u16string mName;
};

} // namespace

void ReadMhlNames(std::string_view bytes, const NameReceiver& receive) {
    Reader(receive).Read(bytes);
}

} // namespace zonstory
