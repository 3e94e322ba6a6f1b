#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include <zoncore/UString.h>

namespace zonscreenplay {

/// Writes XML that reads back as it was, UTF-8, an element on each line.
///
///     XmlWriter out;
///     out.Start("scene").With("sceneNumber", number).Encloses([&] {
///         out.Start("textRun").Holds(text);
///     });
///     return out.Take();
///
/// All of it throws std::invalid_argument where a text holds what no XML file can carry, such as U+0001.
class XmlWriter {
public:
    /// A start tag that is still open. It is completed by Holds() or Encloses(), one of which is called once.
    class Element {
    public:
        Element(XmlWriter& writer, const char* name);

        /// An attribute; none when the value is empty.
        Element& With(const char* name, const zoncore::UString& value);
        void Holds(const zoncore::UString& text);
        template <typename Content>
        void Encloses(Content content) {
            mWriter.Open();
            content();
            mWriter.Close(mName);
        }

    private:
        XmlWriter& mWriter;
        const char* mName;
    };

    XmlWriter();

    Element Start(const char* name) { return {*this, name}; }
    std::string Take() { return std::move(mText); }

private:
    void Open();
    void Close(const char* name);

    std::string mText;
    std::size_t mDepth = 0;
};

} // namespace zonscreenplay
