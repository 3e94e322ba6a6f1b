#include "clip/layout/UnwrittenFormats.h"

#include <algorithm>
#include <array>

namespace zonstory {

namespace {

using namespace std::string_view_literals;

// Some are boxes or chunks inside and could be changed, but the programs that develop them are strict and closed.
constexpr std::string_view kRaw[] = {"ari", "arw", "arx", "braw", "cdng", "cin", "cine", "cr2", "cr3",
                                     "crm", "dng", "dpx", "nef",  "nev",  "r3d", "raf",  "rmf", "rw2"};

struct Beginning {
    std::string_view bytes;
    const char* format;
};

constexpr Beginning kBeginnings[] = {
    {"\x1A\x45\xDF\xA3"sv, "Matroska or WebM"},
    {"\x06\x0E\x2B\x34"sv, "MXF"},
    {"\x00\x00\x01\xBA"sv, "an MPEG program stream"},
    {"\x00\x00\x01\xB3"sv, "an MPEG video stream"},
    {"\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv, "Windows Media"},
    {"FLV"sv, "Flash video"},
    {"OggS"sv, "Ogg"},
    {"fLaC"sv, "FLAC"},
};

std::string NoWayFor(std::string_view format) {
    return "it is " + std::string(format) + ", of which no exact way to change it is known";
}

bool StandsAt(const ByteReader& file, std::uint64_t offset, std::string_view bytes) {
    std::array<char, 16> there{};
    if (!file.Has(offset, bytes.size())) {
        return false;
    }
    file.Read(offset, there.data(), bytes.size());
    return bytes == std::string_view(there.data(), bytes.size());
}

// Packets of 188 bytes, on some cameras' cards with four more in front of each.
bool IsTransportStream(const ByteReader& file) {
    const auto hasSync = [&](std::uint64_t first, std::uint64_t packet) {
        return StandsAt(file, first, "G") && StandsAt(file, first + packet, "G") &&
               StandsAt(file, first + 2 * packet, "G");
    };
    return hasSync(0, 188) || hasSync(4, 192);
}

} // namespace

std::optional<std::string> UnwrittenByExtension(std::string_view extension) {
    std::string lower(extension);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (std::find(std::begin(kRaw), std::end(kRaw), lower) != std::end(kRaw)) {
        return "it is camera raw, which stays as the camera made it";
    }
    if (lower == "mxf") {
        return NoWayFor("MXF");
    }
    return std::nullopt;
}

std::string UnwrittenByBytes(const ByteReader& file) {
    for (const Beginning& beginning : kBeginnings) {
        if (StandsAt(file, 0, beginning.bytes)) {
            return NoWayFor(beginning.format);
        }
    }
    return IsTransportStream(file) ? NoWayFor("an MPEG transport stream") : "its format is not known";
}

} // namespace zonstory
