#include "clip/packet/PacketMap.h"

#include <climits>
#include <exception>
#include <memory>
#include <new>

#include <expat.h>
#include <zoncore/UString.h>

static_assert(sizeof(XML_Char) == sizeof(char16_t), "the XML parser must be the build that reports UTF-16");

namespace zonstory {

namespace {

constexpr const char* kRDF = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";
constexpr const char* kXML = "http://www.w3.org/XML/1998/namespace";
constexpr char16_t kSeparator = u'\n';
constexpr std::string_view kSpace = " \t\r\n";
constexpr const char* kNotOnePlace = "has not one place for its properties";

std::string UTF8(const XML_Char* text) {
    return text == nullptr ? std::string() : zoncore::UTF16to8(reinterpret_cast<const char16_t*>(text));
}

PropertyName NameOf(const XML_Char* name) {
    std::string text = UTF8(name);
    const std::size_t separator = text.rfind(static_cast<char>(kSeparator));
    return separator == std::string::npos ? PropertyName("", std::move(text))
                                          : PropertyName(text.substr(0, separator), text.substr(separator + 1));
}

/// An attribute as it stands in a start tag.
struct RawAttribute {
    std::string_view prefix; // empty for none
    std::string_view name;
    std::string_view value; // with its quotes
    PacketRange range;      // with the white space before it
};

// The attributes of a start tag that is known to be well-formed.
std::vector<RawAttribute> ReadAttributes(std::string_view packet, PacketRange tag) {
    std::vector<RawAttribute> attributes;
    std::size_t at = packet.find_first_of(" \t\r\n/>", tag.begin);
    while (true) {
        const std::size_t name = packet.find_first_not_of(kSpace, at);
        if (name >= tag.end || packet[name] == '/' || packet[name] == '>') {
            return attributes;
        }
        const std::size_t nameEnd = packet.find_first_of(" \t\r\n=", name);
        const std::size_t value = packet.find_first_of("\"'", nameEnd);
        const std::size_t end = packet.find(packet[value], value + 1) + 1;
        const std::string_view qualified = packet.substr(name, nameEnd - name);
        const std::size_t colon = qualified.find(':');
        const bool hasPrefix = colon != std::string_view::npos;
        attributes.push_back({hasPrefix ? qualified.substr(0, colon) : std::string_view(),
                              hasPrefix ? qualified.substr(colon + 1) : qualified,
                              packet.substr(value, end - value),
                              {at, end}});
        at = end;
    }
}

/// Follows the parser through a packet.
class Reader {
public:
    explicit Reader(std::string_view packet) : mPacket(packet), mParser(XML_ParserCreateNS(kUTF8, kSeparator)) {
        if (!mParser) {
            throw std::bad_alloc();
        }
        XML_SetUserData(mParser.get(), this);
        XML_SetElementHandler(
            mParser.get(),
            [](void* data, const XML_Char* name, const XML_Char**) { Guarded(data, &Reader::Start, name); },
            [](void* data, const XML_Char*) { Guarded(data, &Reader::End); });
        XML_SetStartNamespaceDeclHandler(mParser.get(), [](void* data, const XML_Char* prefix, const XML_Char* uri) {
            Guarded(data, &Reader::Declare, prefix, uri);
        });
        XML_SetStartDoctypeDeclHandler(mParser.get(), [](void* data, const XML_Char*, const XML_Char*, const XML_Char*,
                                                         int) { Guarded(data, &Reader::Refuse); });
    }

    PacketMap Read() {
        if (mPacket.size() > INT_MAX) {
            throw PacketError("is too large to be one");
        }
        const XML_Status status = XML_Parse(mParser.get(), mPacket.data(), static_cast<int>(mPacket.size()), XML_TRUE);
        if (mThrown) {
            std::rethrow_exception(mThrown);
        }
        if (status != XML_STATUS_OK) {
            throw PacketError("is no well-formed XML in UTF-8");
        }
        if (mMap.end == 0) {
            throw PacketError(kNotOnePlace);
        }
        return std::move(mMap);
    }

private:
    struct FreeParser {
        void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
    };
    struct Declaration {
        int depth;
        std::string prefix;
        std::string uri;
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

    void Refuse() { throw PacketError("declares a document type"); } // with it, bytes may stand for other bytes

    void Declare(const XML_Char* prefix, const XML_Char* uri) {
        mDeclarations.push_back({mDepth, UTF8(prefix), UTF8(uri)});
    }

    PacketRange Event() const {
        const auto begin = static_cast<std::size_t>(XML_GetCurrentByteIndex(mParser.get()));
        return {begin, begin + static_cast<std::size_t>(XML_GetCurrentByteCount(mParser.get()))};
    }

    std::size_t WithSpace(std::size_t begin) const {
        const std::size_t last = mPacket.substr(0, begin).find_last_not_of(kSpace);
        return last == std::string_view::npos ? begin : last + 1;
    }

    void Start(const XML_Char* qualifiedName) {
        const PropertyName name = NameOf(qualifiedName);
        const PacketRange tag = Event();
        if (mRDFDepth < 0 && name == PropertyName(kRDF, "RDF")) {
            StartRDF(tag);
        } else if (mDepth == mRDFDepth + 1 && name == PropertyName(kRDF, "Description") && IsInRDF()) {
            StartDescription(tag);
        } else if (mDepth == mRDFDepth + 2 && IsInRDF() && mIsInDescription) {
            mMap.descriptions.back().properties.push_back({name, {WithSpace(tag.begin), tag.end}, true});
        }
        ++mDepth;
    }

    bool IsInRDF() const { return mRDFDepth >= 0 && mMap.end == 0; }

    void StartRDF(PacketRange tag) {
        if (mMap.end != 0) {
            throw PacketError(kNotOnePlace);
        }
        mRDFDepth = mDepth;
        const std::string_view name = mPacket.substr(tag.begin + 1);
        mMap.rdf = name.substr(0, name.find("RDF"));
    }

    std::map<std::string, std::string> Prefixes() const {
        std::map<std::string, std::string> prefixes;
        for (const Declaration& declaration : mDeclarations) {
            prefixes[declaration.prefix] = declaration.uri;
        }
        return prefixes;
    }

    void StartDescription(PacketRange tag) {
        PacketDescription description;
        description.range = {WithSpace(tag.begin), tag.end};
        description.content = {tag.end, tag.end};
        description.prefixes = Prefixes();
        for (const RawAttribute& attribute : ReadAttributes(mPacket, tag)) {
            AddAttribute(attribute, description);
        }
        mMap.descriptions.push_back(std::move(description));
        mIsInDescription = true;
    }

    void AddAttribute(const RawAttribute& attribute, PacketDescription& description) {
        constexpr std::size_t kQuotes = 2;
        if (attribute.prefix == "xmlns" || (attribute.prefix.empty() && attribute.name == "xmlns")) {
            return;
        }
        const auto declared = description.prefixes.find(std::string(attribute.prefix));
        const std::string uri = attribute.prefix.empty()                 ? kRDF // as old writers have it, "about"
                                : declared == description.prefixes.end() ? kXML
                                                                         : declared->second;
        if (uri != kRDF && uri != kXML) {
            description.properties.push_back({{uri, std::string(attribute.name)}, attribute.range, false});
        } else if (attribute.name != "about" || uri != kRDF) {
            description.isPlain = false;
        } else if (attribute.value.size() > kQuotes && mMap.about.empty()) {
            mMap.about = attribute.value;
            description.isPlain = false;
        }
    }

    void EndRDF(PacketRange tag) {
        if (tag.begin == tag.end) { // one tag is both its start and its end
            throw PacketError(kNotOnePlace);
        }
        mMap.end = tag.begin;
        mRDFDepth = -1;
    }

    void End() {
        --mDepth;
        const PacketRange tag = Event();
        if (IsInRDF() && mDepth == mRDFDepth) {
            EndRDF(tag);
        } else if (IsInRDF() && mDepth == mRDFDepth + 1 && mIsInDescription) {
            mMap.descriptions.back().content.end = tag.begin;
            mMap.descriptions.back().range.end = tag.end;
            mIsInDescription = false;
        } else if (IsInRDF() && mDepth == mRDFDepth + 2 && mIsInDescription) {
            mMap.descriptions.back().properties.back().range.end = tag.end;
        }
        while (!mDeclarations.empty() && mDeclarations.back().depth >= mDepth) {
            mDeclarations.pop_back();
        }
    }

    static constexpr XML_Char kUTF8[] = {'U', 'T', 'F', '-', '8', 0};

    std::string_view mPacket;
    std::unique_ptr<XML_ParserStruct, FreeParser> mParser;
    std::exception_ptr mThrown;
    std::vector<Declaration> mDeclarations;
    PacketMap mMap;
    int mDepth = 0;
    int mRDFDepth = -1; // of the rdf:RDF that is open
    bool mIsInDescription = false;
};

} // namespace

PacketMap ReadPacketMap(std::string_view packet) {
    return Reader(packet).Read();
}

} // namespace zonstory
