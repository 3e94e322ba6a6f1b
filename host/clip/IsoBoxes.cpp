#include "clip/IsoBoxes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "clip/Clip.h"

namespace zonstory {

namespace {

constexpr std::uint64_t kShortHeader = 8;
constexpr std::uint64_t kLongHeader = 16;

constexpr std::uint32_t kIndex = FourCharacters("moov");
constexpr std::uint32_t kMedia = FourCharacters("mdat");
constexpr std::uint32_t kFragment = FourCharacters("moof");
constexpr std::uint32_t kShortTable = FourCharacters("stco");
constexpr std::uint32_t kLongTable = FourCharacters("co64");

[[noreturn]] void ThrowDamaged(const char* what) {
    throw ClipError(std::string("is damaged: ") + what);
}

IsoBox ReadBox(const ByteReader& file, std::uint64_t begin, std::uint64_t end) {
    const std::uint32_t type = file.Big32(begin + 4);
    std::uint64_t size = file.Big32(begin);
    std::uint64_t header = kShortHeader;
    if (size == 1) { // the size did not fit and stands behind the type
        header = kLongHeader;
        size = end - begin < kLongHeader ? 0 : file.Big64(begin + kShortHeader);
    } else if (size == 0) { // all there is
        size = end - begin;
    }
    if (size < header || size > end - begin) {
        ThrowDamaged("it ends too early");
    }
    return {type, begin + header, size - header};
}

// The tables of media positions, in file order: no deeper than where they belong, however deep a file nests its boxes.
void FindTables(const ByteReader& file, const IsoBox& box, std::size_t depth, std::vector<IsoBox>& tables) {
    constexpr std::uint32_t kWay[] = {FourCharacters("trak"), FourCharacters("mdia"), FourCharacters("minf"),
                                      FourCharacters("stbl")};
    for (const IsoBox& child : ReadIsoBoxes(file, box.offset, box.offset + box.size)) {
        if (depth < std::size(kWay) && child.type == kWay[depth]) {
            FindTables(file, child, depth + 1, tables);
        } else if (depth == std::size(kWay) && (child.type == kShortTable || child.type == kLongTable)) {
            tables.push_back(child);
        }
    }
}

std::vector<IsoBox> BoxesOfType(const IsoLayout& layout, std::uint32_t type) {
    std::vector<IsoBox> found;
    std::copy_if(layout.boxes.begin(), layout.boxes.end(), std::back_inserter(found),
                 [type](const IsoBox& box) { return box.type == type; });
    return found;
}

std::vector<IsoBox> TablesOf(const ByteReader& file, const IsoLayout& layout) {
    std::vector<IsoBox> tables;
    for (const IsoBox& index : BoxesOfType(layout, kIndex)) {
        FindTables(file, index, 0, tables);
    }
    return tables;
}

// The entries of a table, read a piece at a time.
class TableReader {
public:
    TableReader(const ByteReader& file, const IsoBox& table)
        : mFile(file), mWidth(table.type == kLongTable ? 8 : 4), mNext(table.offset + kShortHeader) {
        mCount = table.size < kShortHeader ? 0 : file.Big32(table.offset + 4);
        if (mCount * mWidth > table.size - std::min(table.size, kShortHeader)) {
            ThrowDamaged("its index ends too early");
        }
    }

    std::uint64_t Count() const { return mCount; }

    std::uint64_t Next() {
        if (mPosition == mBuffer.size()) {
            constexpr std::uint64_t kEntries = 8192;
            mBuffer.resize(static_cast<std::size_t>(std::min(kEntries, mCount - mRead) * mWidth));
            mFile.Read(mNext, mBuffer.data(), mBuffer.size());
            mNext += mBuffer.size();
            mRead += mBuffer.size() / mWidth;
            mPosition = 0;
        }
        std::uint64_t value = 0;
        for (std::uint64_t index = 0; index < mWidth; ++index) {
            value = value << 8 | mBuffer[mPosition++];
        }
        return value;
    }

private:
    const ByteReader& mFile;
    std::uint64_t mWidth;
    std::uint64_t mNext;
    std::uint64_t mCount = 0;
    std::uint64_t mRead = 0;
    std::vector<unsigned char> mBuffer;
    std::size_t mPosition = 0;
};

// Where a position within the media lies after the move. One outside all media belongs to another file, or to nothing.
class MediaMove {
public:
    MediaMove(const IsoLayout& before, const IsoLayout& after)
        : mBefore(BoxesOfType(before, kMedia)), mAfter(BoxesOfType(after, kMedia)) {
        if (mBefore.size() != mAfter.size()) {
            throw ClipError("its media would not be the same");
        }
    }

    bool Leads(std::uint64_t from, std::uint64_t to) const {
        const auto behind =
            std::upper_bound(mBefore.begin(), mBefore.end(), from,
                             [](std::uint64_t position, const IsoBox& box) { return position < box.offset; });
        if (behind == mBefore.begin()) {
            return true;
        }
        const auto index = static_cast<std::size_t>(behind - mBefore.begin() - 1);
        const bool isOutside = from - mBefore[index].offset >= mBefore[index].size;
        return isOutside || to - mAfter[index].offset == from - mBefore[index].offset;
    }

private:
    std::vector<IsoBox> mBefore;
    std::vector<IsoBox> mAfter;
};

void RequireSameEntries(TableReader before, TableReader after, const MediaMove& move) {
    bool fits = before.Count() == after.Count();
    for (std::uint64_t index = 0; fits && index < before.Count(); ++index) {
        const std::uint64_t from = before.Next();
        fits = move.Leads(from, after.Next());
    }
    if (!fits) {
        throw ClipError("its media would not be found again after writing inside");
    }
}

} // namespace

std::vector<IsoBox> ReadIsoBoxes(const ByteReader& file, std::uint64_t begin, std::uint64_t end) {
    std::vector<IsoBox> boxes;
    while (end - begin >= kShortHeader) { // a rest that holds no box is padding
        boxes.push_back(ReadBox(file, begin, end));
        begin = boxes.back().offset + boxes.back().size;
    }
    return boxes;
}

std::optional<IsoBox> FindIsoBox(const ByteReader& file, const IsoBox& parent, std::uint32_t type) {
    for (const IsoBox& box : ReadIsoBoxes(file, parent.offset, parent.offset + parent.size)) {
        if (box.type == type) {
            return box;
        }
    }
    return std::nullopt;
}

IsoLayout ReadIsoLayout(const ByteReader& file) {
    IsoLayout layout{ReadIsoBoxes(file, 0, file.Size())};
    const auto find = [&](std::uint32_t type) {
        return std::find_if(layout.boxes.begin(), layout.boxes.end(),
                            [type](const IsoBox& box) { return box.type == type; });
    };
    const auto index = find(kIndex);
    if (index == layout.boxes.end()) {
        ThrowDamaged("it has no index of its media");
    }
    layout.indexInFront = index < find(kMedia);
    layout.isFragmented = find(kFragment) != layout.boxes.end();
    return layout;
}

void RequireSameMediaPositions(const ByteReader& before, const IsoLayout& layoutBefore, const ByteReader& after,
                               const IsoLayout& layoutAfter) {
    const MediaMove move(layoutBefore, layoutAfter);
    const std::vector<IsoBox> tablesBefore = TablesOf(before, layoutBefore);
    const std::vector<IsoBox> tablesAfter = TablesOf(after, layoutAfter);
    if (tablesBefore.size() != tablesAfter.size()) {
        throw ClipError("its media would not be found again after writing inside");
    }
    for (std::size_t index = 0; index < tablesBefore.size(); ++index) {
        RequireSameEntries(TableReader(before, tablesBefore[index]), TableReader(after, tablesAfter[index]), move);
    }
}

} // namespace zonstory
