#include "log/ClipXml.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "log/LogText.h"
#include "log/PlacedXml.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

enum class Element { Other, Clip, Asset, Metadata, Datum, Note, Behind };

// What stands behind keywords in a clip.
constexpr std::string_view kBehind[] = {"audio-channel-source", "audio-role-source", "filter-video",
                                        "filter-video-mask",    "filter-audio",      "metadata"};

std::string Value(const PlacedTag& tag, const std::string& name) {
    const auto found = tag.attributes.find(name);
    return found == tag.attributes.end() ? std::string() : found->second;
}

int HexValue(char digit) {
    const char small = LowerCase(digit);
    return small >= '0' && small <= '9' ? small - '0' : small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

// The path of "file:///Volumes/A001/C0001.MP4"; other texts as they are.
std::string PathOf(std::string_view url) {
    constexpr std::string_view kScheme = "file://";
    if (url.starts_with(kScheme)) {
        url.remove_prefix(std::min(url.find('/', kScheme.size()), url.size()));
    }
    std::string path;
    for (std::size_t at = 0; at < url.size(); ++at) {
        const int high = url[at] == '%' && at + 2 < url.size() ? HexValue(url[at + 1]) : -1;
        const int low = high >= 0 ? HexValue(url[at + 2]) : -1;
        path += low >= 0 ? static_cast<char>(high * 16 + low) : url[at];
        at += low >= 0 ? 2 : 0;
    }
    return path;
}

struct Asset {
    std::string file;
    std::string scene;
    std::string take;
};

class ClipXmlReader : public PlacedXmlHandler {
public:
    explicit ClipXmlReader(std::string_view bytes) : mBytes(bytes), mText(bytes) {}

    ClipXml Read(const std::string& name) {
        const std::string encoding = ParsePlacedXml(mBytes, mText, name, *this);
        mXml.isAsciiOnly = mText.BytesPerSign() == 1 && !encoding.empty() && encoding != "utf-8";
        mXml.encoding = mText.Encoding();
        const std::string_view signs = mText.Signs();
        const std::size_t lineEnd = std::min(signs.find_first_of("\r\n"), signs.size());
        mXml.lineEnd = signs.substr(lineEnd, signs.substr(lineEnd, 2) == "\r\n" ? 2 : 1);
        for (std::size_t clip = 0; clip < mXml.clips.size(); ++clip) {
            if (const auto asset = mAssets.find(mMedia[clip]); asset != mAssets.end()) {
                mXml.clips[clip].file = asset->second.file;
                mXml.clips[clip].assetScene = asset->second.scene;
                mXml.clips[clip].assetTake = asset->second.take;
            }
        }
        return std::move(mXml);
    }

    const char* Start(const PlacedTag& tag) override {
        if (mOpen.empty() && tag.name != "fcpxml") {
            return "is no FCPXML";
        }
        const Open parent = mOpen.empty() ? Open() : mOpen.back();
        Open open = {Element::Other, Element::Other, parent.clip, parent.asset};
        if (tag.name == "clip" || tag.name == "asset-clip") {
            StartClip(tag, open);
        } else if (tag.name == "asset") {
            open.element = Element::Asset;
            open.asset = Value(tag, "id");
            mAssets[open.asset].file = PathOf(Value(tag, "src"));
        } else if (parent.element == Element::Clip) {
            StartInClip(tag, open);
        } else if (parent.element == Element::Asset) {
            StartInAsset(tag, open);
        } else if (parent.element == Element::Metadata && tag.name == "md") {
            open.element = Element::Datum;
            StartDatum(tag, parent);
        }
        mOpen.push_back(std::move(open));
        return nullptr;
    }

    void Text(std::string_view text) override {
        if (!mOpen.empty() && mOpen.back().element == Element::Note) {
            mXml.clips[mOpen.back().clip].note->text += text;
        }
    }

    void End(std::size_t begin, std::size_t end) override {
        const Open closed = std::move(mOpen.back());
        mOpen.pop_back();
        if (closed.element == Element::Note) {
            mXml.clips[closed.clip].note->end = begin;
        }
        if (mOpen.empty()) {
            return;
        }
        const Open& parent = mOpen.back();
        if (parent.element == Element::Clip) {
            XmlClip& clip = mXml.clips[parent.clip];
            const bool isBehind = closed.element == Element::Behind || closed.element == Element::Metadata;
            clip.keywordsAt = isBehind ? clip.keywordsAt : end;
            clip.lastAt = end;
        } else if (parent.element == Element::Metadata && parent.owner == Element::Clip) {
            mXml.clips[parent.clip].metadata->end = end;
        }
    }

private:
    struct Open {
        Element element = Element::Other;
        Element owner = Element::Other; ///< Of metadata: Clip or Asset.
        std::size_t clip = 0;           ///< Of mXml.clips, where it is or belongs to one.
        std::string asset;              ///< Its name, where it is or belongs to one.
    };

    void StartClip(const PlacedTag& tag, Open& open) {
        open.element = Element::Clip;
        open.clip = mXml.clips.size();
        XmlClip clip;
        clip.line = tag.line;
        clip.element = tag.name;
        clip.name = Value(tag, "name");
        clip.start = Value(tag, "start");
        clip.duration = Value(tag, "duration");
        clip.tagEnd = clip.keywordsAt = clip.lastAt = tag.end;
        clip.isEmptyTag = tag.isEmpty;
        clip.indent = Indent(mText.SignAt(tag.begin));
        mXml.clips.push_back(std::move(clip));
        mMedia.push_back(Value(tag, "ref"));
    }

    void StartInClip(const PlacedTag& tag, Open& open) {
        XmlClip& clip = mXml.clips[open.clip];
        if (tag.name == "metadata") {
            open.element = Element::Metadata;
            open.owner = Element::Clip;
            clip.metadata = {tag.end, tag.isEmpty};
        } else if (tag.name == "note" && !clip.note) {
            open.element = Element::Note;
            clip.note = {tag.end, tag.end, "", tag.isEmpty};
        } else if (tag.name == "keyword") {
            AddKeywords(Value(tag, "value"), clip);
        } else if (std::find(std::begin(kBehind), std::end(kBehind), tag.name) != std::end(kBehind)) {
            open.element = Element::Behind;
        } else if ((tag.name == "video" || tag.name == "audio") && mMedia[open.clip].empty()) {
            mMedia[open.clip] = Value(tag, "ref");
        }
    }

    void StartInAsset(const PlacedTag& tag, Open& open) {
        Asset& asset = mAssets[open.asset];
        if (tag.name == "metadata") {
            open.element = Element::Metadata;
            open.owner = Element::Asset;
        } else if (tag.name == "media-rep" && asset.file.empty()) {
            asset.file = PathOf(Value(tag, "src"));
        }
    }

    void StartDatum(const PlacedTag& tag, const Open& metadata) {
        const std::string key = Value(tag, "key");
        if (key != kSceneKey && key != kTakeKey) {
            return;
        }
        if (metadata.owner == Element::Asset) {
            Asset& asset = mAssets[metadata.asset];
            (key == kSceneKey ? asset.scene : asset.take) = Value(tag, "value");
            return;
        }
        XmlClip& clip = mXml.clips[metadata.clip];
        if (auto& datum = key == kSceneKey ? clip.scene : clip.take; !datum) {
            datum = FindValue(tag);
        }
    }

    static void AddKeywords(std::string_view list, XmlClip& clip) {
        while (!list.empty()) {
            const std::string_view one = list.substr(0, list.find(','));
            clip.keywords.emplace_back(WithoutBlanks(one));
            list.remove_prefix(std::min(one.size() + 1, list.size()));
        }
    }

    std::optional<std::string> Indent(std::size_t tag) const {
        const std::string_view before = mText.Signs().substr(0, tag);
        const std::size_t last = before.find_last_not_of(" \t");
        if (last == std::string_view::npos || (before[last] != '\n' && before[last] != '\r')) {
            return std::nullopt;
        }
        return std::string(before.substr(last + 1));
    }

    // In a tag that the parser has found well-formed. Where there is no such attribute: the place behind the tag's name.
    XmlClip::Datum FindValue(const PlacedTag& tag) const {
        const std::string_view signs = mText.Signs().substr(0, mText.SignAt(tag.end));
        const std::size_t nameEnd = signs.find_first_of(" \t\r\n/>", mText.SignAt(tag.begin));
        std::size_t at = signs.find_first_not_of(" \t\r\n", nameEnd);
        while (at < signs.size() && signs[at] != '/' && signs[at] != '>') {
            const std::size_t sign = signs.find('=', at);
            const std::size_t open = signs.find_first_of("\"'", sign);
            const std::size_t close = signs.find(signs[open], open + 1);
            if (WithoutBlanks(signs.substr(at, sign - at)) == "value") {
                return {mText.ByteAt(open + 1), mText.ByteAt(close), Value(tag, "value"), true};
            }
            at = signs.find_first_not_of(" \t\r\n", close + 1);
        }
        return {mText.ByteAt(nameEnd), mText.ByteAt(nameEnd), "", false};
    }

    std::string_view mBytes;
    LogText mText;
    ClipXml mXml;
    std::vector<std::string> mMedia; ///< The asset of each clip.
    std::unordered_map<std::string, Asset> mAssets;
    std::vector<Open> mOpen;
};

} // namespace

bool IsXml(std::string_view bytes) {
    const LogText text(bytes);
    return WithoutBlanks(text.Signs()).starts_with('<');
}

ClipXml ReadClipXml(std::string_view bytes, const std::string& name) {
    return ClipXmlReader(bytes).Read(name);
}

} // namespace zonstory
