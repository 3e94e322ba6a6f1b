#include "clip/packet/PropertyChanges.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zonstory {

namespace {

/// Reads what the toolkit serializes: elements one inside another, each with text, with others, or with nothing in it.
class RdfReader {
public:
    explicit RdfReader(std::string_view rdf) : mRest(rdf) {}

    std::map<std::string, std::string> Read() {
        while (!mRest.empty()) {
            const std::string_view text = Until('<');
            const std::string_view tag = Until('>');
            if (tag.starts_with('/')) {
                Close(text);
            } else if (!tag.empty()) {
                Open(tag);
            }
        }
        return std::move(mValues);
    }

private:
    struct Element {
        std::string path;
        bool isList = false;
        bool hasOthers = false; // inside
        std::size_t items = 0;
    };

    // What comes before a character, which goes as well.
    std::string_view Until(char end) {
        const std::size_t length = mRest.find(end);
        const std::string_view found = mRest.substr(0, length);
        mRest.remove_prefix(length == std::string_view::npos ? mRest.size() : length + 1);
        return found;
    }

    std::string PathOf(std::string_view name) {
        if (mOpen.empty()) {
            return std::string(name);
        }
        Element& parent = mOpen.back();
        parent.hasOthers = true;
        if (parent.isList) {
            return parent.path + '[' + std::to_string(++parent.items) + ']';
        }
        const bool isSame = IsList(name) || name == "rdf:value";
        return isSame ? parent.path : parent.path + '/' + std::string(name);
    }

    static bool IsList(std::string_view name) { return name == "rdf:Seq" || name == "rdf:Bag" || name == "rdf:Alt"; }

    void Open(std::string_view tag) {
        const std::string_view name = tag.substr(0, tag.find_first_of(" /\n"));
        const Element element = {PathOf(name), IsList(name)};
        if (const auto language = Attribute(tag, " xml:lang=\"")) {
            mValues[element.path + "/?xml:lang"] = Decoded(*language);
        }
        const std::optional<std::string_view> link = Attribute(tag, " rdf:resource=\"");
        if (tag.ends_with('/')) {
            mValues[element.path] = link ? Decoded(*link) : std::string();
        } else {
            mOpen.push_back(element);
        }
    }

    void Close(std::string_view text) {
        if (mOpen.empty()) {
            return;
        }
        if (!mOpen.back().hasOthers && !mOpen.back().isList) {
            mValues[mOpen.back().path] = Decoded(text);
        }
        mOpen.pop_back();
    }

    static std::optional<std::string_view> Attribute(std::string_view tag, std::string_view start) {
        const std::size_t found = tag.find(start);
        if (found == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view value = tag.substr(found + start.size());
        return value.substr(0, value.find('"'));
    }

    static std::string Decoded(std::string_view text) {
        std::string decoded;
        while (!text.empty()) {
            const std::size_t length = std::min(text.find('&'), text.size());
            decoded += text.substr(0, length);
            text.remove_prefix(length);
            if (!text.empty()) {
                const std::size_t end = std::min(text.find(';'), text.size() - 1);
                decoded += Character(text.substr(0, end + 1));
                text.remove_prefix(end + 1);
            }
        }
        return decoded;
    }

    static std::string Character(std::string_view reference) {
        static const std::map<std::string_view, const char*> kNamed = {
            {"&lt;", "<"},   {"&gt;", ">"},   {"&amp;", "&"},  {"&quot;", "\""}, {"&apos;", "'"}, {"&#xA;", "\n"},
            {"&#xD;", "\r"}, {"&#x9;", "\t"}, {"&#10;", "\n"}, {"&#13;", "\r"},  {"&#9;", "\t"}};
        const auto found = kNamed.find(reference);
        return found == kNamed.end() ? std::string(reference) : found->second;
    }

    std::string_view mRest;
    std::vector<Element> mOpen;
    std::map<std::string, std::string> mValues;
};

std::optional<std::string> ValueAt(const std::map<std::string, std::string>& values, const std::string& path) {
    const auto found = values.find(path);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

std::map<std::string, std::string> ValuesOf(std::string_view rdf) {
    return RdfReader(rdf).Read();
}

std::vector<PropertyChange> ChangesBetween(const MetadataContent& before, const MetadataContent& after) {
    std::vector<PropertyChange> changes;
    for (const PropertyName& name : after.Differences(before)) {
        const std::map<std::string, std::string> old = ValuesOf(before.Text(name));
        std::map<std::string, std::string> paths = ValuesOf(after.Text(name));
        const std::map<std::string, std::string> now = paths;
        paths.insert(old.begin(), old.end());
        for (const auto& [path, either] : paths) {
            PropertyChange change{path, ValueAt(old, path), ValueAt(now, path)};
            if (change.before != change.after) {
                changes.push_back(std::move(change));
            }
        }
    }
    return changes;
}

} // namespace zonstory
