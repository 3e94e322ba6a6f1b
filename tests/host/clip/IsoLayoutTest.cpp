// MP4 and MOV files in all the orders that boxes can have, those too that no encoder makes.
#include <algorithm>
#include <functional>
#include <iterator>
#include <map>

#include <gmock/gmock.h>

#include "host/clip/LayoutInvariants.h"
#include "host/clip/MadeChunks.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

namespace {

using namespace std::string_literals;

std::string Number(std::uint64_t value, std::size_t width = 4) {
    return support::Number(value, true, width);
}

std::string Box(const std::string& type, const std::string& content) {
    return Number(content.size() + 8) + type + content;
}

std::string LongBox(const std::string& type, const std::string& content) {
    return Number(1) + type + Number(content.size() + 16, 8) + content;
}

std::string OpenBox(const std::string& type, const std::string& content) {
    return Number(0) + type + content;
}

const std::string kIdentifier = "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC";
const std::string kZero(4, '\0'); // a version and flags

bool Maybe(int oneIn = 2) {
    return *rc::gen::inRange(0, oneIn) == 0;
}

std::string AnyOf(std::vector<std::string> choices) {
    return *rc::gen::elementOf(std::move(choices));
}

// A file of parts whose bytes may name the places of others, so they are made twice.
struct MadeFile {
    using Places = std::map<std::string, std::uint64_t>;
    struct Part {
        std::string name;
        std::function<std::string(const Places&)> make;
    };
    std::vector<Part> parts;
    std::function<std::vector<std::uint64_t>(const Places&)> positions; // that its index must be found to name

    void Add(const std::string& name, const std::string& bytes) {
        parts.push_back({name, [bytes](const Places&) { return bytes; }});
    }
    std::string Bytes(Places& places) const {
        std::string bytes;
        for (int pass = 0; pass < 2; ++pass) {
            bytes.clear();
            for (const Part& part : parts) {
                places[part.name] = bytes.size();
                bytes += part.make(places);
            }
            places["end"] = bytes.size();
        }
        return bytes;
    }
};

std::uint64_t In(const MadeFile::Places& places, const std::string& name, std::uint64_t offset = 0) {
    const auto found = places.find(name);
    return found == places.end() ? 0 : found->second + offset;
}

// ---- Parts -----------------------------------------------------------------------------------------------------------

std::string Track(const std::vector<std::uint64_t>& chunks, bool isLong, bool isOwn) {
    std::string table = kZero + Number(chunks.size());
    for (const std::uint64_t chunk : chunks) {
        table += Number(chunk, isLong ? 8 : 4);
    }
    const std::string references = Box("dref", kZero + Number(1) + Box("url ", Number(isOwn ? 1 : 0)));
    const std::string samples = Box("stsd", kZero + Number(1) + Box("mp4v", std::string(6, '\0') + Number(1, 2)));
    return Box("trak", Box("tkhd", "x") +
                           Box("mdia", Box("minf", Box("dinf", references) +
                                                       Box("stbl", samples + Box(isLong ? "co64" : "stco", table)))));
}

std::string AnyUserData() {
    const std::string packet = support::MadePacket(*rc::gen::inRange<std::size_t>(0, 900));
    return AnyOf({"", "", Box("udta", ""), Box("udta", kZero),
                  Box("udta", Box("\xA9nam", "K\xFC"
                                             "che") +
                                  kZero),
                  Box("udta", Box("XMP_", packet) + Box("cprt", "c")),
                  Box("udta", Box("XMP_", packet)) + Box("udta", ""),
                  Box("udta", Box("XMP_", packet) + Box("free", std::string(900, '\0')))});
}

std::string AnyPadding() {
    const auto size = *rc::gen::inRange<std::size_t>(0, 9000);
    return AnyOf({Box("free", std::string(size, '\0')), Box("skip", std::string(size, '\0')),
                  Box("free", "in use" + std::string(size, 'u')), LongBox("free", std::string(size, '\0')),
                  Box("wide", "")});
}

std::string AnyTopBox() {
    const std::string packet = support::MadePacket(*rc::gen::inRange<std::size_t>(0, 900));
    return AnyOf({AnyPadding(), AnyPadding(), Box("uuid", kIdentifier + packet), LongBox("uuid", kIdentifier + packet),
                  Box("uuid", std::string(16, 'u') + "vendor"), Box("uuid", kIdentifier + packet + "\0\0"s)});
}

MadeFile AnyMovie(const std::string& kinds) {
    MadeFile file;
    for (const char* const name : {"media1", "media2"}) {
        file.Add(name, AnyOf({Box("mdat", name), LongBox("mdat", name + std::string(40, 'm'))}));
    }
    const bool isLong = Maybe();
    const bool isCompressed = Maybe(20);
    const std::string items = isCompressed || Maybe() ? "" : "meta";
    const std::string before = Maybe() ? AnyUserData() : "";
    const std::string behind = before.empty() ? AnyUserData() : AnyPadding();
    file.parts.push_back(
        {"moov", [=](const MadeFile::Places& places) {
             const std::vector<std::uint64_t> own = {In(places, "media2", 9), In(places, "media1", 8)};
             const std::string tracks =
                 isCompressed ? Box("cmov", "x") : Track({7, 30}, isLong, false) + Track(own, isLong, true);
             const std::string location = kZero + Number(0x4440, 2) + Number(1, 2) + Number(1, 2) + Number(0, 2) +
                                          Number(In(places, "media1")) + Number(1, 2) + Number(9) + Number(3);
             const std::string meta = Box("meta", kZero + Box("hdlr", "x") + Box("iloc", location));
             return Box("moov", Box("mvhd", "x") + before + tracks + (items.empty() ? "" : meta) + behind);
         }});
    file.positions = [=](const MadeFile::Places& places) {
        std::vector<std::uint64_t> all;
        if (!isCompressed) {
            all = {In(places, "media2", 9), In(places, "media1", 8)};
        }
        if (!items.empty()) {
            all.insert(all.end(), {In(places, "media1"), In(places, "media1", 9)});
        }
        return all;
    };
    for (int index = *rc::gen::inRange(0, 4); index > 0; --index) {
        file.Add("other" + std::to_string(index), AnyTopBox());
    }
    for (std::size_t left = file.parts.size(); left > 1; --left) {
        std::swap(file.parts[left - 1], file.parts[*rc::gen::inRange<std::size_t>(0, left)]);
    }
    const std::string first = kinds.empty() ? Box("wide", "") : Box("ftyp", kinds);
    file.parts.insert(file.parts.begin(), {"first", [=](const MadeFile::Places&) { return first; }});
    file.Add("rest", AnyOf({"", "", OpenBox("mdat", "live"), OpenBox("free", ""), "rest", "trailer of no box",
                            std::string(40, '\0')}));
    return file;
}

// A movie in fragments: the first counts from a place in the file, the second from itself.
MadeFile AnyFragments(const std::string& kinds) {
    MadeFile file;
    file.Add("ftyp", Box("ftyp", kinds));
    file.Add("moov", Box("moov", Track({}, false, true) + Box("mvex", Box("trex", "x")) + AnyUserData()));
    file.Add("padding", Maybe() ? AnyTopBox() : "");
    const bool isLong = Maybe();
    const std::size_t width = isLong ? 8 : 4;
    const std::string version = isLong ? "\1\0\0\0"s : kZero;
    file.parts.push_back({"sidx", [=](const MadeFile::Places& places) {
                              const std::uint64_t end = In(places, "moof1") - In(places, "gap");
                              const std::uint64_t length1 = In(places, "moof2") - In(places, "moof1");
                              const std::uint64_t length2 = In(places, "mfra") - In(places, "moof2");
                              return Box("sidx", version + Number(1) + Number(25) + Number(0, width) +
                                                     Number(end, width) + Number(2) + Number(length1) + Number(1, 8) +
                                                     Number(length2 | 0x80000000) + Number(1, 8));
                          }});
    file.Add("gap", Maybe() ? Box("free", "gap") : "");
    for (const std::string number : {"1", "2"}) {
        const bool isFirst = number == "1";
        file.parts.push_back(
            {"moof" + number, [=](const MadeFile::Places& places) {
                 const std::uint64_t media = In(places, "media" + number, 8);
                 const std::uint64_t base = isFirst ? In(places, "media1") : In(places, "moof2");
                 const std::string header =
                     isFirst ? Number(1) + Number(1) + Number(base, 8) : Number(0x20000) + Number(1);
                 const std::string run = Number(1) + Number(1) + Number(media - base);
                 const std::string extra = isFirst ? "" : Box("saio", version + Number(1) + Number(8, width));
                 return Box("moof", Box("mfhd", "x") + Box("traf", Box("tfhd", header) + Box("trun", run) + extra));
             }});
        file.Add("media" + number, Box("mdat", "media" + number));
    }
    file.parts.push_back({"mfra", [=](const MadeFile::Places& places) {
                              std::string table;
                              for (const char* const name : {"moof1", "moof2"}) {
                                  table += Number(9, width) + Number(In(places, name), width) + "\1\1\1";
                              }
                              const std::string content =
                                  Box("tfra", version + Number(1) + Number(0) + Number(2) + table);
                              return Box("mfra", content + Box("mfro", kZero + Number(content.size() + 24)));
                          }});
    file.positions = [=](const MadeFile::Places& places) {
        return std::vector<std::uint64_t>{In(places, "moof1"),     In(places, "moof2"),     In(places, "media1"),
                                          In(places, "media1", 8), In(places, "media2", 8), In(places, "moof2", 8),
                                          In(places, "moof1"),     In(places, "moof2")};
    };
    return file;
}

// What is neither packet nor free space, in file order.
std::vector<std::string> OthersIn(const std::string& bytes) {
    std::map<std::size_t, std::string> found;
    for (const char* const other :
         {"ftyp", "moov", "tkhd", "stco",    "co64",   "mdat", "media1", "media2", "moof", "sidx",
          "mfra", "wide", "gap",  "uvendor", "in use", "nam",  "cprt",   "live",   "rest", "trailer of no box"}) {
        for (std::size_t at = bytes.find(other); at != std::string::npos; at = bytes.find(other, at + 1)) {
            found[at] = other;
        }
    }
    std::vector<std::string> others;
    std::transform(found.begin(), found.end(), std::back_inserter(others),
                   [](const auto& pair) { return pair.second; });
    return others;
}

RC_GTEST_PROP(IsoLayout, ChangesNothingButThePacket, ()) {
    const std::string kinds = AnyOf({"", "isom\0\0\2\0isomiso2"s, "qt  \0\0\2\0qt  "s, "M4V \0\0\0\0M4V mp42"s});
    const bool isFragmented = !kinds.empty() && Maybe(3);
    const MadeFile file = isFragmented ? AnyFragments(kinds) : AnyMovie(kinds);
    MadeFile::Places places;
    const std::string bytes = file.Bytes(places);
    const std::string segments = isFragmented ? bytes.substr(places["sidx"], places["gap"] - places["sidx"]) : "";
    RC_ASSERT(support::LayoutOf(bytes)->Positions() == file.positions(places));
    try {
        const std::string after = support::RequireExactEdits(bytes);
        RC_ASSERT(OthersIn(after) == OthersIn(bytes));
        RC_ASSERT(after.find(segments) != std::string::npos); // they count from where they are
        RC_ASSERT(!isFragmented || after.ends_with(Box("mfro", kZero + bytes.substr(bytes.size() - 4))));
    } catch (const zonstory::NoExactWay& reason) {
        const std::string what = reason.what();
        RC_CLASSIFY(true, what);
        RC_ASSERT(what == "its index is compressed" || what == "its box uuid may hold positions that are not known");
    }
}

} // namespace
