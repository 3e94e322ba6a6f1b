#include "clip/layout/IsoBox.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "clip/layout/ContainerLayout.h"
#include "clip/layout/NumberBytes.h"

namespace zonstory {

namespace {

constexpr std::uint64_t kShortHeader = 8;
constexpr std::uint64_t kLongHeader = 16;

// Nothing where no box can stand.
std::optional<Box> BoxAt(const ByteReader& file, std::uint64_t begin, std::uint64_t end) {
    if (end - begin < kShortHeader) {
        return std::nullopt;
    }
    Box box{file.Big32(begin + 4), begin, kShortHeader, file.Big32(begin), false};
    if (box.size == 1) { // the size did not fit and stands behind the type
        box.header = kLongHeader;
        box.size = end - begin < kLongHeader ? 0 : file.Big64(begin + kShortHeader);
    } else if (box.size == 0) {
        box.isOpen = true;
        box.size = end - begin;
    }
    return box.size < box.header || box.size > end - begin ? std::nullopt : std::optional(box);
}

// Whether a name is of those that media files are made of. A file that ends within such a box has lost its end; one that
// ends with four other letters and a number has a trailer.
bool IsFileBox(std::uint32_t type) {
    static constexpr std::uint32_t kNames[] = {
        FourCharacters("ftyp"), FourCharacters("styp"), FourCharacters("moov"), FourCharacters("mdat"),
        FourCharacters("moof"), FourCharacters("mfra"), FourCharacters("free"), FourCharacters("skip"),
        FourCharacters("wide"), FourCharacters("uuid"), FourCharacters("meta"), FourCharacters("sidx"),
        FourCharacters("pdin"), FourCharacters("udta"), FourCharacters("pnot"), FourCharacters("PICT")};
    return std::find(std::begin(kNames), std::end(kNames), type) != std::end(kNames);
}

// Four characters that can be printed, the first of which may be "©".
bool IsName(std::uint32_t type) {
    const std::string name = BigBytes(type, 4);
    const auto isPrintable = [](char letter) { return letter >= ' ' && letter <= '~'; };
    return std::all_of(name.begin() + 1, name.end(), isPrintable) && (isPrintable(name[0]) || name[0] == '\xA9');
}

} // namespace

const Box* BoxList::Find(std::uint32_t type) const {
    const auto found = std::find_if(boxes.begin(), boxes.end(), [&](const Box& box) { return box.type == type; });
    return found == boxes.end() ? nullptr : &*found;
}

const Box* BoxList::At(std::uint64_t offset) const {
    const auto found = std::find_if(boxes.begin(), boxes.end(), [&](const Box& box) { return box.offset == offset; });
    return found == boxes.end() ? nullptr : &*found;
}

BoxList ReadFileBoxes(const ByteReader& file) {
    BoxList list;
    while (file.Has(list.end, kShortHeader)) {
        const std::optional<Box> box = BoxAt(file, list.end, file.Size());
        const std::uint32_t type = file.Big32(list.end + 4);
        if (!box && IsFileBox(type)) {
            throw DamagedFile("is damaged: its box " + NameOf(type) + " ends beyond the file");
        }
        if (!box || !IsName(type) || (box->isOpen && !IsFileBox(type))) {
            break;
        }
        list.boxes.push_back(*box);
        list.end = box->End();
    }
    while (list.end < file.Size() && !list.boxes.empty() && !IsFileBox(list.boxes.back().type)) {
        list.end = list.boxes.back().offset;
        list.boxes.pop_back();
    }
    return list;
}

BoxList ReadInnerBoxes(const ByteReader& file, ByteRange content) {
    BoxList list;
    list.end = content.offset;
    while (content.End() - list.end >= kShortHeader && file.Big32(list.end) != 0) {
        const std::optional<Box> box = BoxAt(file, list.end, content.End());
        if (!box) {
            list.isCut = true;
            break;
        }
        list.boxes.push_back(*box);
        list.end = box->End();
    }
    return list;
}

std::string NameOf(std::uint32_t type) {
    std::string name = BigBytes(type, 4);
    std::replace_if(
        name.begin(), name.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '?');
    return name;
}

std::string BoxHeader(std::uint32_t type, std::uint64_t size, std::uint64_t header) {
    if (header == kLongHeader) {
        return BigBytes(1, 4) + BigBytes(type, 4) + BigBytes(size, 8);
    }
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        throw NoExactWay("the size field of its box " + NameOf(type) + " would overflow");
    }
    return BigBytes(size, 4) + BigBytes(type, 4);
}

} // namespace zonstory
