// Arbitrary bytes as a sound file, and as the chunk in it that notes the scene.
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Target.h"
#include "TextInvariants.h"
#include "clip/IXml.h"
#include "clip/layout/Chunks.h"
#include "host/files/MemoryFile.h"

namespace {

using namespace zonstory;

constexpr std::string IXml::*kValues[] = {&IXml::project, &IXml::scene, &IXml::take, &IXml::tape, &IXml::note};

void CheckValue(const std::string& value, std::size_t chunkSize) {
    REQUIRE(fuzz::IsUTF8(value));
    REQUIRE(fuzz::IsTrimmed(value));
    REQUIRE(value.size() <= 3 * chunkSize); // nothing is expanded
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
}

void CheckIXml(std::string_view chunk) {
    const std::optional<IXml> whole = ParseIXml(chunk);
    const std::optional<IXml> padded = ParseIXml(std::string(chunk) + std::string(3, '\0'));
    REQUIRE(!whole || padded); // padding takes nothing away; it may complete a last unit of UTF-16
    const std::optional<IXml> cut = IsAscii(chunk) ? ParseIXml(chunk.substr(0, chunk.size() / 2)) : std::nullopt;
    REQUIRE(!cut || whole);
    for (const auto value : kValues) {
        if (whole) {
            CheckValue((*whole).*value, chunk.size());
            REQUIRE(((*whole).*value).empty() || (*whole).*value == (*padded).*value);
        }
        if (cut) { // what is whole in front of a fault counts
            REQUIRE(((*cut).*value).empty() || (*cut).*value == (*whole).*value);
        }
    }
}

} // namespace

void fuzz::TryInput(std::string_view file) {
    static support::MemoryFile memory;
    memory.Fill(file);
    if (const std::optional<std::string> chunk =
            FindRiffChunk(ByteReader(memory.Descriptor(), file.size()), FourCharacters("iXML"))) {
        REQUIRE(file.substr(12).find("iXML") != std::string_view::npos);
        REQUIRE(file.find(*chunk) != std::string_view::npos);
        CheckIXml(*chunk);
    }
    CheckIXml(file);
}
