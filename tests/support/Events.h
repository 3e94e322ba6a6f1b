#pragma once

#include <sstream>
#include <string>

#include <zoncore/AbstractParseHandler.h>

namespace support {

/// Delivers events written down in short: pieces parted by ";", "+name key=value ..." for a start tag,
/// "-name" for an end tag, anything else for character data. Start and end of the document are not included.
inline void Play(zoncore::AbstractParseHandler& handler, const std::string& events) {
    std::istringstream pieces(events);
    for (std::string piece; std::getline(pieces, piece, ';');) {
        if (piece.empty() || (piece.front() != '+' && piece.front() != '-')) {
            handler.Characters(zoncore::UTF8to16(piece));
            continue;
        }
        std::istringstream words(piece.substr(1));
        std::string name;
        words >> name;
        if (piece.front() == '-') {
            handler.EndElement(zoncore::UTF8to16(name));
            continue;
        }
        zoncore::AttributeMap attributes;
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            attributes[zoncore::UTF8to16(word.substr(0, equals))] = zoncore::UTF8to16(word.substr(equals + 1));
        }
        handler.StartElement(zoncore::UTF8to16(name), attributes);
    }
}

} // namespace support
