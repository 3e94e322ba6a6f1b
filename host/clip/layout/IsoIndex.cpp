#include "clip/layout/IsoIndex.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "clip/layout/ContainerLayout.h"
#include "clip/layout/IsoPacket.h"
#include "clip/layout/Padding.h"

namespace zonstory {

namespace {

using Form = PositionTable::Form;

// Boxes of boxes and nothing else.
constexpr std::uint32_t kContainers[] = {FourCharacters("moov"), FourCharacters("trak"), FourCharacters("mdia"),
                                         FourCharacters("minf"), FourCharacters("stbl"), FourCharacters("dinf"),
                                         FourCharacters("edts"), FourCharacters("udta"), FourCharacters("mvex"),
                                         FourCharacters("moof"), FourCharacters("traf"), FourCharacters("mfra")};

// Boxes that hold no position, or none that counts from outside of them. In any other there may be one.
constexpr std::uint32_t kWithoutPositions[] = {
    // of the file
    FourCharacters("ftyp"), FourCharacters("styp"), FourCharacters("pdin"), FourCharacters("mdat"),
    FourCharacters("free"), FourCharacters("skip"), FourCharacters("wide"), FourCharacters("pnot"),
    FourCharacters("PICT"), FourCharacters("prft"), FourCharacters("emsg"), FourCharacters("ssix"),
    // of the movie and its tracks
    FourCharacters("mvhd"), FourCharacters("iods"), FourCharacters("tkhd"), FourCharacters("tref"),
    FourCharacters("trgr"), FourCharacters("elst"), FourCharacters("mdhd"), FourCharacters("hdlr"),
    FourCharacters("elng"), FourCharacters("vmhd"), FourCharacters("smhd"), FourCharacters("hmhd"),
    FourCharacters("sthd"), FourCharacters("nmhd"), FourCharacters("gmhd"), FourCharacters("clip"),
    FourCharacters("matt"), FourCharacters("ctab"), FourCharacters("load"), FourCharacters("imap"),
    FourCharacters("txas"), FourCharacters("tapt"), FourCharacters("prfl"), FourCharacters("pssh"),
    // of the samples
    FourCharacters("stsd"), FourCharacters("stts"), FourCharacters("ctts"), FourCharacters("cslg"),
    FourCharacters("stsc"), FourCharacters("stsz"), FourCharacters("stz2"), FourCharacters("stss"),
    FourCharacters("stps"), FourCharacters("stsh"), FourCharacters("padb"), FourCharacters("stdp"),
    FourCharacters("sdtp"), FourCharacters("sbgp"), FourCharacters("csgp"), FourCharacters("sgpd"),
    FourCharacters("subs"), FourCharacters("saiz"), FourCharacters("dref"),
    // of fragments
    FourCharacters("mehd"), FourCharacters("trex"), FourCharacters("leva"), FourCharacters("trep"),
    FourCharacters("mfhd"), FourCharacters("tfdt"), FourCharacters("senc"), FourCharacters("mfro"),
    // of what people wrote
    FourCharacters("XMP_"), FourCharacters("keys"), FourCharacters("ilst"), FourCharacters("iinf"),
    FourCharacters("iref"), FourCharacters("iprp"), FourCharacters("pitm"), FourCharacters("ipro"),
    FourCharacters("xml "), FourCharacters("bxml"), FourCharacters("idat"), FourCharacters("ID32"),
    FourCharacters("name"), FourCharacters("titl"), FourCharacters("auth"), FourCharacters("perf"),
    FourCharacters("gnre"), FourCharacters("dscp"), FourCharacters("albm"), FourCharacters("yrrc"),
    FourCharacters("loci"), FourCharacters("rtng"), FourCharacters("clsf"), FourCharacters("kywd"),
    FourCharacters("cprt"), FourCharacters("date"), FourCharacters("chpl"), FourCharacters("hnti"),
    FourCharacters("hinf"), FourCharacters("LOOP"), FourCharacters("SelO"), FourCharacters("AllF"),
    FourCharacters("WLOC"), FourCharacters("TAGS")};

template <std::size_t kCount>
bool IsOneOf(const std::uint32_t (&types)[kCount], std::uint32_t type) {
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

bool IsWithoutPositions(std::uint32_t type) {
    constexpr std::uint32_t kInternationalText = 0xA9; // the first of four characters, "©nam"
    return type >> 24 == kInternationalText || IsOneOf(kWithoutPositions, type);
}

// Numbers one behind the other, none beyond the box.
class Fields {
public:
    Fields(const ByteReader& file, ByteRange range) : mFile(file), mNext(range.offset), mEnd(range.End()) {}

    std::uint64_t Next() const { return mNext; }
    std::uint64_t Left() const { return mEnd - mNext; }
    bool IsShort() const { return mIsShort; }

    void Skip(std::uint64_t count) {
        mIsShort = mIsShort || count > Left();
        mNext += mIsShort ? 0 : count;
    }

    // 0 when they are not there.
    std::uint64_t Take(unsigned width) {
        const std::uint64_t offset = mNext;
        Skip(width);
        if (mIsShort || width == 0) {
            return 0;
        }
        if (width == 4) {
            return mFile.Big32(offset);
        }
        if (width == 8) {
            return mFile.Big64(offset);
        }
        // In front of any of them stand 8 bytes at least, its box's header.
        return mFile.Big64(offset + width - 8) & ((std::uint64_t{1} << 8 * width) - 1);
    }

private:
    const ByteReader& mFile;
    std::uint64_t mNext;
    std::uint64_t mEnd;
    bool mIsShort = false;
};

// Of one track: which files its chunks lie in, and its tables until that is known.
struct Track {
    std::vector<bool> isOwnFile;           // an entry for each data reference
    std::vector<std::uint64_t> references; // of the sample descriptions, from 1
    std::vector<PositionTable> tables;
};

// Of one fragment of a track: what its positions count from; nothing where that takes the sizes of its samples.
struct TrackFragment {
    std::optional<std::uint64_t> base;
};

class IndexReader {
public:
    explicit IndexReader(const ByteReader& file) : mFile(file) {}

    void ReadAll(const BoxList& list, std::size_t depth) {
        for (const Box& box : list.boxes) {
            Read(box, depth);
        }
    }

    IsoIndex Take() { return std::move(mIndex); }

private:
    void Read(const Box& box, std::size_t depth);
    bool ReadContainer(const Box& box, std::size_t depth);
    void ReadChildren(const Box& box, ByteRange content, std::size_t depth);
    void ReadTrack(const Box& box, std::size_t depth);
    void ReadFragment(const Box& box, std::size_t depth);
    void ReadTrackFragment(const Box& box, std::size_t depth);
    void ReadMeta(const Box& box, std::size_t depth);
    bool ReadTable(const Box& box);

    void ReadDataReferences(const Box& box);
    void ReadSampleDescriptions(const Box& box);
    void ReadChunkOffsets(const Box& box);
    void ReadAuxiliaryOffsets(const Box& box);
    void ReadFragmentHeader(const Box& box);
    void ReadRun(const Box& box);
    void ReadRandomAccess(const Box& box);
    void ReadSegments(const Box& box);
    void ReadItems(const Box& box);
    void ReadExtents(const Box& box, Fields& fields, const PositionTable& position, std::uint64_t numberWidth,
                     std::uint64_t lengthWidth);

    void Doubt(std::string reason) {
        if (mIndex.doubt.empty()) {
            mIndex.doubt = std::move(reason);
        }
    }
    void DoubtBox(const Box& box) { Doubt("its box " + NameOf(box.type) + " may hold positions that are not known"); }
    // A table that the fields have come to.
    void Add(const Box& box, Fields fields, PositionTable table);

    const ByteReader& mFile;
    IsoIndex mIndex;
    std::optional<Track> mTrack;
    std::optional<TrackFragment> mFragment;
    std::uint64_t mFragmentBase = 0;
    bool mIsFirstOfFragment = false;
};

void IndexReader::Read(const Box& box, std::size_t depth) {
    constexpr std::size_t kDeepest = 8; // "moov", "trak", "mdia", "minf", "stbl" are five
    if (box.type == FourCharacters("cmov")) {
        mIndex.isCompressed = true;
        Doubt("its index is compressed");
        return;
    }
    const bool isKnown = depth <= kDeepest && (ReadContainer(box, depth) || ReadTable(box) ||
                                               IsWithoutPositions(box.type) || IsXMPBox(mFile, box));
    if (!isKnown) {
        Doubt("its box " + NameOf(box.type) + " may hold positions that are not known");
    }
}

bool IndexReader::ReadContainer(const Box& box, std::size_t depth) {
    if (box.type == FourCharacters("trak")) {
        ReadTrack(box, depth);
    } else if (box.type == FourCharacters("moof")) {
        ReadFragment(box, depth);
    } else if (box.type == FourCharacters("traf")) {
        ReadTrackFragment(box, depth);
    } else if (box.type == FourCharacters("meta")) {
        ReadMeta(box, depth);
    } else if (IsOneOf(kContainers, box.type)) {
        ReadChildren(box, box.Content(), depth);
    } else {
        return false;
    }
    return true;
}

// What a box holds besides boxes may be anything, but the ways to the tables are sound or the file is not.
void IndexReader::ReadChildren(const Box& box, ByteRange content, std::size_t depth) {
    const BoxList list = ReadInnerBoxes(mFile, content);
    const bool isOnWay = box.type != FourCharacters("udta") && box.type != FourCharacters("meta");
    if (list.isCut && isOnWay) {
        throw DamagedFile("is damaged: a box in its " + NameOf(box.type) + " ends beyond it");
    }
    if (!IsAllZero(mFile, {list.end, content.End() - list.end})) {
        DoubtBox(box);
    }
    ReadAll(list, depth + 1);
}

void IndexReader::ReadTrack(const Box& box, std::size_t depth) {
    if (mTrack) {
        DoubtBox(box); // a track within a track
        return;
    }
    mTrack.emplace();
    ReadChildren(box, box.Content(), depth);
    const Track track = *std::exchange(mTrack, std::nullopt);
    const auto isOwn = [&](std::uint64_t reference) {
        return reference > 0 && reference <= track.isOwnFile.size() && track.isOwnFile[reference - 1];
    };
    const auto own = std::count_if(track.references.begin(), track.references.end(), isOwn);
    if (own != 0 && own == static_cast<std::ptrdiff_t>(track.references.size())) {
        mIndex.tables.insert(mIndex.tables.end(), track.tables.begin(), track.tables.end());
        return;
    }
    const bool areAllKnown =
        std::all_of(track.references.begin(), track.references.end(),
                    [&](std::uint64_t reference) { return reference > 0 && reference <= track.isOwnFile.size(); });
    const bool isEmpty = std::all_of(track.tables.begin(), track.tables.end(),
                                     [](const PositionTable& table) { return table.count == 0; });
    if (!isEmpty && (own != 0 || !areAllKnown || track.references.empty())) {
        Doubt("it is not known which of its media lie in other files");
    }
}

void IndexReader::ReadFragment(const Box& box, std::size_t depth) {
    mFragmentBase = box.offset;
    mIsFirstOfFragment = true;
    ReadChildren(box, box.Content(), depth);
}

void IndexReader::ReadTrackFragment(const Box& box, std::size_t depth) {
    mFragment.emplace();
    ReadChildren(box, box.Content(), depth);
    mFragment.reset();
    mIsFirstOfFragment = false;
}

// On purpose: as in ISO files with a version in front of its boxes, or as in QuickTime without.
void IndexReader::ReadMeta(const Box& box, std::size_t depth) {
    constexpr std::uint64_t kVersion = 4;
    ByteRange content = box.Content();
    const bool isPlain = content.size >= 8 && mFile.Big32(content.offset + 4) == FourCharacters("hdlr");
    if (!isPlain) {
        const std::uint64_t version = std::min(kVersion, content.size);
        content = {content.offset + version, content.size - version};
    }
    ReadChildren(box, content, depth);
}

bool IndexReader::ReadTable(const Box& box) {
    static constexpr struct {
        std::uint32_t type;
        void (IndexReader::*read)(const Box&);
    } kTables[] = {
        {FourCharacters("dref"), &IndexReader::ReadDataReferences},
        {FourCharacters("stsd"), &IndexReader::ReadSampleDescriptions},
        {FourCharacters("stco"), &IndexReader::ReadChunkOffsets},
        {FourCharacters("co64"), &IndexReader::ReadChunkOffsets},
        {FourCharacters("saio"), &IndexReader::ReadAuxiliaryOffsets},
        {FourCharacters("tfhd"), &IndexReader::ReadFragmentHeader},
        {FourCharacters("trun"), &IndexReader::ReadRun},
        {FourCharacters("tfra"), &IndexReader::ReadRandomAccess},
        {FourCharacters("sidx"), &IndexReader::ReadSegments},
        {FourCharacters("iloc"), &IndexReader::ReadItems},
    };
    const auto table =
        std::find_if(std::begin(kTables), std::end(kTables), [&](const auto& row) { return row.type == box.type; });
    if (table == std::end(kTables)) {
        return false;
    }
    (this->*table->read)(box);
    return true;
}

void IndexReader::ReadDataReferences(const Box& box) {
    if (!mTrack || box.Content().size < 8) {
        return;
    }
    constexpr std::uint32_t kSameFile = 1;
    const ByteRange content = box.Content();
    for (const Box& entry : ReadInnerBoxes(mFile, {content.offset + 8, content.size - 8}).boxes) {
        mTrack->isOwnFile.push_back(entry.Content().size >= 4 &&
                                    (mFile.Big32(entry.Content().offset) & kSameFile) != 0);
    }
}

void IndexReader::ReadSampleDescriptions(const Box& box) {
    if (!mTrack || box.Content().size < 8) {
        return;
    }
    const ByteRange content = box.Content();
    for (const Box& entry : ReadInnerBoxes(mFile, {content.offset + 8, content.size - 8}).boxes) {
        Fields fields(mFile, entry.Content());
        fields.Skip(6);
        mTrack->references.push_back(fields.Take(2));
    }
}

void IndexReader::ReadChunkOffsets(const Box& box) {
    const unsigned width = box.type == FourCharacters("co64") ? 8 : 4;
    Fields fields(mFile, box.Content());
    fields.Skip(4);
    const std::uint64_t count = fields.Take(4);
    if (fields.IsShort() || count > fields.Left() / width) {
        throw DamagedFile("is damaged: its index ends too early");
    }
    if (!mTrack) {
        DoubtBox(box);
        return;
    }
    mTrack->tables.push_back({fields.Next(), count, width, width, 0, Form::FromBase});
}

// Encryption keeps its data apart. In a fragment the positions count from where those of its media count.
void IndexReader::ReadAuxiliaryOffsets(const Box& box) {
    constexpr std::uint64_t kHasType = 1;
    Fields fields(mFile, box.Content());
    const unsigned width = fields.Take(1) == 0 ? 4 : 8;
    fields.Skip((fields.Take(3) & kHasType) != 0 ? 8 : 0);
    const std::uint64_t count = fields.Take(4);
    if (mFragment && !mFragment->base) {
        return;
    }
    Add(box, fields, {0, count, width, width, mFragment ? *mFragment->base : 0, Form::FromBase});
}

void IndexReader::ReadFragmentHeader(const Box& box) {
    constexpr std::uint64_t kHasBase = 1;
    constexpr std::uint64_t kBaseIsFragment = 0x20000;
    Fields fields(mFile, box.Content());
    const std::uint64_t flags = fields.Take(4);
    fields.Skip(4);
    if (!mFragment || fields.IsShort()) {
        DoubtBox(box);
    } else if ((flags & kHasBase) != 0) {
        Add(box, fields, {0, 1, 8, 8, 0, Form::FromBase});
        mFragment->base = fields.Take(8);
    } else if (mIsFirstOfFragment || (flags & kBaseIsFragment) != 0) {
        mFragment->base = mFragmentBase;
    }
}

void IndexReader::ReadRun(const Box& box) {
    constexpr std::uint64_t kHasOffset = 1;
    Fields fields(mFile, box.Content());
    const std::uint64_t flags = fields.Take(4);
    fields.Skip(4);
    if (mFragment && mFragment->base && (flags & kHasOffset) != 0) {
        Add(box, fields, {0, 1, 4, 4, *mFragment->base, Form::SignedFromBase});
    }
}

void IndexReader::ReadRandomAccess(const Box& box) {
    Fields fields(mFile, box.Content());
    const unsigned width = fields.Take(1) == 0 ? 4 : 8;
    fields.Skip(7);
    const std::uint64_t widths = fields.Take(4);
    const std::uint64_t count = fields.Take(4);
    const std::uint64_t numbers = (widths >> 4 & 3) + (widths >> 2 & 3) + (widths & 3) + 3;
    const std::uint64_t stride = 2 * std::uint64_t{width} + numbers;
    if (count > fields.Left() / stride) {
        DoubtBox(box);
        return;
    }
    fields.Skip(width); // of the time in front of the first position
    Add(box, fields, {0, count, stride, width, 0, Form::FromBase});
}

// Its positions count from its own end.
void IndexReader::ReadSegments(const Box& box) {
    Fields fields(mFile, box.Content());
    const unsigned width = fields.Take(1) == 0 ? 4 : 8;
    fields.Skip(11 + std::uint64_t{width});
    const Fields first = fields;
    const std::uint64_t begin = box.End() + fields.Take(width);
    fields.Skip(2);
    const std::uint64_t count = fields.Take(2);
    Add(box, first, {0, 1, width, width, box.End(), Form::FromEnd});
    Add(box, fields, {0, count, 12, 4, begin, Form::Lengths});
}

// The parts of an item: a number, a position as the table says, and a length each.
void IndexReader::ReadExtents(const Box& box, Fields& fields, const PositionTable& position, std::uint64_t numberWidth,
                              std::uint64_t lengthWidth) {
    for (std::uint64_t extents = fields.Take(2); extents > 0 && !fields.IsShort(); --extents) {
        fields.Skip(numberWidth);
        if (position.count > 0 && position.width > 0) {
            Add(box, fields, position);
        }
        fields.Skip(position.width + lengthWidth);
    }
}

void IndexReader::ReadItems(const Box& box) {
    Fields fields(mFile, box.Content());
    const std::uint64_t version = fields.Take(1);
    fields.Skip(3);
    const std::uint64_t widths = fields.Take(2);
    const auto offsetWidth = static_cast<unsigned>(widths >> 12);
    const std::uint64_t lengthWidth = widths >> 8 & 15;
    const auto baseWidth = static_cast<unsigned>(widths >> 4 & 15);
    const std::uint64_t numberWidth = version == 0 ? 0 : widths & 15;
    if (version > 2 || offsetWidth > 8 || baseWidth > 8 || offsetWidth + baseWidth == 0) {
        DoubtBox(box);
        return;
    }
    const std::uint64_t items = fields.Take(version < 2 ? 2 : 4);
    for (std::uint64_t item = 0; item < items && !fields.IsShort(); ++item) {
        fields.Skip(version < 2 ? 2 : 4);
        const bool isInFile = version == 0 || (fields.Take(2) & 15) == 0;
        if (fields.Take(2) != 0) {
            DoubtBox(box); // it may lie in another file
        }
        const Fields baseField = fields;
        const std::uint64_t base = fields.Take(baseWidth);
        if (isInFile && baseWidth != 0) {
            Add(box, baseField, {0, 1, baseWidth, baseWidth, 0, Form::FromBase});
        }
        const PositionTable position{0, isInFile ? 1U : 0U, offsetWidth, offsetWidth, base, Form::FromBase};
        ReadExtents(box, fields, position, numberWidth, lengthWidth);
    }
    if (fields.IsShort()) {
        DoubtBox(box);
    }
}

void IndexReader::Add(const Box& box, Fields fields, PositionTable table) {
    table.offset = fields.Next();
    const std::uint64_t left = fields.Left();
    if (fields.IsShort() ||
        (table.count != 0 && (table.width > left || (table.count - 1) > (left - table.width) / table.stride))) {
        DoubtBox(box);
    } else if (mTrack && box.type == FourCharacters("saio")) {
        mTrack->tables.push_back(table);
    } else {
        mIndex.tables.push_back(table);
    }
}

} // namespace

IsoIndex ReadIsoIndex(const ByteReader& file, const BoxList& boxes) {
    IndexReader reader(file);
    reader.ReadAll(boxes, 0);
    return reader.Take();
}

} // namespace zonstory
