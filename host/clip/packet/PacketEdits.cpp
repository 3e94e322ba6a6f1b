#include "clip/packet/PacketEdits.h"

#include <algorithm>

#include "clip/packet/PacketMap.h"

namespace zonstory {

namespace {

using Prefixes = std::map<std::string, std::string>;

constexpr std::string_view kSpace = " \t\r\n";
constexpr const char* kRDF = "rdf"; // as the texts of properties have it

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(kSpace) == std::string_view::npos;
}

// Keeps edits apart that would touch, by making one of them.
void Add(EditList& edits, std::size_t offset, std::size_t taken, std::string put) {
    if (!edits.empty() && edits.back().offset + edits.back().taken == offset) {
        edits.back().taken += taken;
        edits.back().put += put;
    } else {
        edits.push_back({offset, taken, std::move(put)});
    }
}

std::string Escaped(const std::string& value) {
    std::string escaped;
    for (const char character : value) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

// Those that a text may use: one too many does no harm.
Prefixes UsedPrefixes(std::string_view text, const Prefixes& all) {
    Prefixes used;
    for (const auto& [prefix, uri] : all) {
        if (text.find('<' + prefix + ':') != std::string_view::npos ||
            text.find(' ' + prefix + ':') != std::string_view::npos) {
            used.emplace(prefix, uri);
        }
    }
    return used;
}

// What has to be declared so that the prefixes stand for what they are used for.
std::string Declarations(const Prefixes& used, const Prefixes& declared, const char* space) {
    std::string text;
    for (const auto& [prefix, uri] : used) {
        if (const auto found = declared.find(prefix); found == declared.end() || found->second != uri) {
            text += space + ("xmlns:" + prefix) + "=\"" + Escaped(uri) + '"';
        }
    }
    return text;
}

/// The change of one packet.
class PacketChange {
public:
    PacketChange(std::string_view packet, const std::vector<PropertyName>& changed, const MetadataContent& wanted)
        : mPacket(packet), mMap(ReadPacketMap(packet)), mChanged(changed), mWanted(wanted),
          mIsToBePut(std::any_of(changed.begin(), changed.end(),
                                 [&](const PropertyName& name) { return !wanted.Text(name).empty(); })) {}

    EditList Edits() {
        for (const PacketDescription& description : mMap.descriptions) {
            Change(description);
        }
        if (mIsToBePut) {
            PutDescription();
        }
        return std::move(mEdits);
    }

private:
    bool IsChanged(const PacketProperty& property) const {
        return std::find(mChanged.begin(), mChanged.end(), property.name) != mChanged.end();
    }

    void Change(const PacketDescription& description) {
        std::vector<PacketProperty> going;
        std::copy_if(description.properties.begin(), description.properties.end(), std::back_inserter(going),
                     [this](const PacketProperty& property) { return IsChanged(property); });
        const bool hasPlace = mIsToBePut && std::any_of(going.begin(), going.end(), [](const PacketProperty& property) {
                                  return property.isElement;
                              });
        if (!hasPlace && !going.empty() && IsEmptied(description, going)) {
            const auto [begin, end] = description.range;
            return Add(mEdits, begin, end - begin, {});
        }
        for (const auto& [name, range, isElement] : going) {
            const bool isPlace = mIsToBePut && isElement;
            Add(mEdits, range.begin, range.end - range.begin, isPlace ? Elements(description.prefixes) : std::string());
            mIsToBePut = mIsToBePut && !isPlace;
        }
    }

    // Whether nothing is left in it, not even a comment.
    bool IsEmptied(const PacketDescription& description, const std::vector<PacketProperty>& going) const {
        std::size_t done = description.content.begin;
        std::string rest;
        for (const PacketProperty& property : going) {
            if (property.isElement) {
                rest += mPacket.substr(done, property.range.begin - done);
                done = property.range.end;
            }
        }
        rest += mPacket.substr(done, description.content.end - done);
        return description.isPlain && going.size() == description.properties.size() && IsBlank(rest);
    }

    std::string Elements(const Prefixes& declared) const {
        std::string elements;
        for (const PropertyName& name : mChanged) {
            const std::string_view text = mWanted.Text(name);
            const std::size_t nameEnd = text.find_first_of(" />", text.find(':'));
            elements += text.substr(0, nameEnd);
            if (!text.empty()) {
                elements += Declarations(UsedPrefixes(text, mWanted.Prefixes()), declared, " ");
                elements += text.substr(nameEnd);
            }
        }
        return elements;
    }

    void PutDescription() {
        const std::string elements = Elements(mWanted.Prefixes());
        Prefixes used = UsedPrefixes(elements, mWanted.Prefixes());
        used.insert(*mWanted.Prefixes().find(kRDF));
        const Prefixes declared{{kRDF, mMap.rdf == "rdf:" ? used[kRDF] : std::string()}};
        const std::size_t last = mPacket.substr(0, mMap.end).find_last_not_of(kSpace) + 1;
        std::string text = " <rdf:Description rdf:about=";
        text += mMap.about.empty() ? "\"\"" : mMap.about;
        text += Declarations(used, declared, "\n    ") + '>' + elements + "\n  </rdf:Description>";
        text += mPacket.substr(last, mMap.end - last);
        Add(mEdits, mMap.end, 0, std::move(text));
    }

    std::string_view mPacket;
    PacketMap mMap;
    const std::vector<PropertyName>& mChanged;
    const MetadataContent& mWanted;
    bool mIsToBePut;
    EditList mEdits;
};

} // namespace

std::string EmptyPacket(bool hasInstructions) {
    constexpr const char* kBody = "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\" x:xmptk=\"zonstory\">\n"
                                  " <rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
                                  " </rdf:RDF>\n"
                                  "</x:xmpmeta>\n";
    return hasInstructions ? std::string("<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n") +
                                 kBody + "<?xpacket end=\"w\"?>"
                           : kBody;
}

EditList PacketEdits(std::string_view packet, const std::vector<PropertyName>& changed, const MetadataContent& wanted) {
    return PacketChange(packet, changed, wanted).Edits();
}

std::string Edited(std::string_view bytes, const EditList& edits) {
    std::string edited;
    std::size_t done = 0;
    for (const Edit& edit : edits) {
        const auto offset = static_cast<std::size_t>(edit.offset);
        edited.append(bytes.substr(done, offset - done)).append(edit.put);
        done = offset + static_cast<std::size_t>(edit.taken);
    }
    return edited.append(bytes.substr(done));
}

std::string WithoutPadding(std::string_view packet) {
    constexpr std::string_view kSpaceAndZeros(" \t\r\n\0", 5);
    std::string text(packet.substr(0, packet.find_last_not_of(kSpaceAndZeros) + 1));
    if (const std::size_t end = text.rfind("<?xpacket end"); end != std::string::npos) {
        const std::size_t body = text.find_last_not_of(kSpace, end - 1) + 1;
        text.replace(body, end - body, "\n");
    }
    return text;
}

} // namespace zonstory
