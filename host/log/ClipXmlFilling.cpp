#include "log/ClipXmlFilling.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include <zoncore/UString.h>

#include "log/OneLine.h"

namespace zonstory {

namespace {

enum Column : std::size_t { kScene, kTake, kNote, kKeywords };

std::string Escape(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        switch (byte) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&apos;";
            break;
        default:
            escaped += byte;
        }
    }
    return escaped;
}

// "Ä" as "&#xC4;", for an encoding that may not have it.
std::string InAscii(const std::string& utf8) {
    std::string ascii;
    const zoncore::UString units = zoncore::UTF8to16(utf8);
    for (std::size_t at = 0; at < units.size(); ++at) {
        char32_t character = units[at];
        if (character >= 0xD800 && character < 0xDC00 && at + 1 < units.size()) {
            character = 0x10000 + ((character - 0xD800) << 10) + (units[++at] - 0xDC00U);
        }
        ascii += character < 0x80 ? std::string(1, static_cast<char>(character))
                                  : fmt::format("&#x{:X};", static_cast<std::uint32_t>(character));
    }
    return ascii;
}

class ClipXmlFiller {
public:
    ClipXmlFiller(const ClipXml& xml, std::span<const XmlClipWords> words, bool replace)
        : mXml(xml), mWords(words), mReplace(replace) {}

    Filling Fill() {
        for (mRow = 0; mRow < mXml.clips.size(); ++mRow) {
            FillClip(mXml.clips[mRow], mWords[mRow]);
        }
        std::stable_sort(mFilling.edits.begin(), mFilling.edits.end(),
                         [](const ByteEdit& left, const ByteEdit& right) { return left.begin < right.begin; });
        return std::move(mFilling);
    }

private:
    void FillClip(const XmlClip& clip, const XmlClipWords& words) {
        mInTag.clear();
        FillNote(clip, OneLine(words.note));
        AddKeywords(clip, words.keywords);
        FillMetadata(clip, words);
        if (!mInTag.empty()) {
            OpenTag(clip.tagEnd, mInTag + LineOf(clip, 0), clip.element);
        }
    }

    void FillNote(const XmlClip& clip, const std::string& note) {
        const std::string old = clip.note ? OneLine(clip.note->text) : "";
        if (!MayFill(kNote, old, note)) {
            return;
        }
        if (!clip.note) {
            AddElement(clip, clip.tagEnd, "<note>" + Escape(note) + "</note>");
        } else if (clip.note->isEmptyTag) {
            OpenTag(clip.note->end, Escape(note), "note");
        } else {
            AddEdit(clip.note->begin, old.empty() ? clip.note->begin : clip.note->end, Escape(note));
        }
    }

    void AddKeywords(const XmlClip& clip, const std::vector<std::string>& keywords) {
        std::vector<std::string> all = clip.keywords;
        std::string added;
        for (const std::string& keyword : keywords) {
            std::string word = OneLine(keyword);
            std::replace(word.begin(), word.end(), ',', ' ');
            if (!word.empty() && std::find(all.begin(), all.end(), word) == all.end()) {
                added += (added.empty() ? "" : ", ") + word;
                all.push_back(std::move(word));
            }
        }
        if (MayFill(kKeywords, "", added)) {
            AddElement(clip, clip.keywordsAt,
                       "<keyword" + Attribute("start", clip.start) + Attribute("duration", clip.duration) +
                           Attribute("value", added) + "/>");
        }
    }

    void FillMetadata(const XmlClip& clip, const XmlClipWords& words) {
        std::string added;
        const auto fill = [&](Column column, std::string_view key, const std::optional<XmlClip::Datum>& datum,
                              const std::string& wanted) {
            const std::string value = OneLine(wanted);
            if (!MayFill(column, datum ? OneLine(datum->text) : "", value)) {
                return;
            }
            if (datum) {
                AddEdit(datum->begin, datum->end, datum->hasValue ? Escape(value) : Attribute("value", value));
            } else {
                added += LineOf(clip, 2) + "<md" + Attribute("key", key) + Attribute("value", value) + "/>";
            }
        };
        fill(kScene, kSceneKey, clip.scene, words.scene);
        fill(kTake, kTakeKey, clip.take, words.take);
        if (added.empty()) {
            return;
        }
        if (!clip.metadata) {
            AddElement(clip, clip.lastAt, "<metadata>" + added + LineOf(clip, 1) + "</metadata>");
        } else if (clip.metadata->isEmptyTag) {
            OpenTag(clip.metadata->end, added + LineOf(clip, 1), "metadata");
        } else {
            AddEdit(clip.metadata->end, clip.metadata->end, added);
        }
    }

    // Whether the value takes the place of the old one; what becomes of it is told.
    bool MayFill(Column column, const std::string& old, const std::string& value) {
        if (value.empty() || value == old) {
            return false;
        }
        const bool isEmpty = old.empty();
        mFilling.cells.push_back({mRow, column,
                                  isEmpty    ? CellState::Filled
                                  : mReplace ? CellState::Replaced
                                             : CellState::Kept,
                                  old, value});
        return isEmpty || mReplace;
    }

    static std::string Attribute(std::string_view name, std::string_view value) {
        return value.empty() ? std::string() : fmt::format(" {}=\"{}\"", name, Escape(value));
    }

    // A line's end and the indent of what stands so many levels below the clip; nothing where the file has no such lines.
    std::string LineOf(const XmlClip& clip, std::size_t levels) const {
        return clip.indent ? mXml.lineEnd + *clip.indent + std::string(levels * 4, ' ') : std::string();
    }

    void AddElement(const XmlClip& clip, std::size_t at, const std::string& element) {
        if (clip.isEmptyTag) {
            mInTag += LineOf(clip, 1) + element;
        } else {
            AddEdit(at, at, LineOf(clip, 1) + element);
        }
    }

    // `<note/>` becomes `<note>text</note>`.
    void OpenTag(std::size_t end, const std::string& content, const std::string& name) {
        const std::size_t sign =
            mXml.encoding == TextEncoding::UTF8 || mXml.encoding == TextEncoding::Windows1252 ? 1 : 2;
        AddEdit(end - 2 * sign, end, ">" + content + "</" + name + ">");
    }

    void AddEdit(std::size_t begin, std::size_t end, const std::string& text) {
        mFilling.edits.push_back({begin, end, mXml.isAsciiOnly ? InAscii(text) : *EncodeText(text, mXml.encoding)});
    }

    const ClipXml& mXml;
    std::span<const XmlClipWords> mWords;
    bool mReplace;
    std::size_t mRow = 0;
    std::string mInTag; ///< What goes into a clip that is a single tag so far.
    Filling mFilling;
};

} // namespace

Filling FillClipXml(const ClipXml& xml, std::span<const XmlClipWords> words, bool replace) {
    return ClipXmlFiller(xml, words, replace).Fill();
}

} // namespace zonstory
