#pragma once

#include <string>

/// Story files, written down in short.
namespace support {

inline std::string WithBody(const std::string& body, const std::string& prolog = "") {
    return prolog + "<Talewright version=\"1.0\"><document version=\"1.0\"><stream name=\"body\"><section>" + body +
           "</section></stream></document></Talewright>";
}

inline std::string WithAction(const std::string& text, const std::string& prolog = "") {
    return WithBody("<scene sceneNumber=\"1\"><paragraph objID=\"p\" element=\"Action\"><textRun>" + text +
                        "</textRun></paragraph></scene>",
                    prolog);
}

inline std::string Repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t copy = 0; copy < count; ++copy) {
        all += text;
    }
    return all;
}

} // namespace support
