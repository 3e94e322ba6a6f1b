#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zonstory {

/// What a production-sound recorder notes in a WAV's iXML chunk. UTF-8 without blanks around it; empty where the chunk
/// says nothing.
struct IXml {
    std::string project;
    std::string scene;
    std::string take;
    std::string tape;
    std::string note;
};

/// Reads a chunk's bytes as they are in the file. Recorders pad them with zeros, leave the encoding out or state a wrong
/// one; what is whole before a fault counts. Takes any bytes; no entity and no document type is ever expanded.
/// @return Nothing when this is no iXML.
std::optional<IXml> ParseIXml(std::string_view chunk);

} // namespace zonstory
