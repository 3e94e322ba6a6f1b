#include "clip/layout/Chunks.h"

#include <algorithm>
#include <map>

namespace zonstory {

namespace {

constexpr std::size_t kFormHeader = 12;   ///< "RIFF", size, "WAVE"
constexpr std::size_t kChunkHeader = 8;   ///< id, size
constexpr std::size_t kMostChunks = 4096; ///< No recorder writes more; a file that does is made to waste time.
constexpr std::uint64_t kStandsElsewhere = 0xFFFFFFFF;

std::uint64_t Little(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint64_t number = 0;
    for (std::size_t byte = count; byte-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(bytes[at + byte]);
    }
    return number;
}

class Chunks {
public:
    Chunks(const ReadBytesAt& read, std::uint64_t fileSize) : mRead(read), mFileSize(fileSize) {}

    bool IsRiff() {
        const std::string header = Read(0, kFormHeader);
        const std::string form = header.substr(0, std::min<std::size_t>(4, header.size()));
        return header.size() == kFormHeader && (form == "RIFF" || form == "RF64" || form == "BW64");
    }

    std::optional<std::string> Find(std::string_view id, std::size_t most) {
        std::uint64_t offset = kFormHeader;
        for (std::size_t count = 0; count < kMostChunks; ++count) {
            const std::string header = Read(offset, kChunkHeader);
            if (header.size() < kChunkHeader) {
                return std::nullopt;
            }
            const std::string name = header.substr(0, 4);
            const std::uint64_t size = SizeOf(name, Little(header, 4, 4));
            const std::uint64_t body = offset + kChunkHeader;
            if (name == id) {
                return Read(body, static_cast<std::size_t>(std::min<std::uint64_t>(size, most)));
            }
            if (name == "ds64") {
                ReadLongSizes(Read(body, static_cast<std::size_t>(std::min<std::uint64_t>(size, most))));
            }
            if (size >= mFileSize - body) {
                return std::nullopt;
            }
            offset = body + size + size % 2; // chunks begin at even places
        }
        return std::nullopt;
    }

private:
    // Fewer bytes where the file has fewer.
    std::string Read(std::uint64_t offset, std::size_t count) {
        const std::uint64_t left = offset < mFileSize ? mFileSize - offset : 0;
        std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, left)), '\0');
        bytes.resize(bytes.empty() ? 0 : std::min(mRead(offset, bytes.data(), bytes.size()), bytes.size()));
        return bytes;
    }

    std::uint64_t SizeOf(const std::string& name, std::uint64_t size) const {
        const auto known = mLongSizes.find(name);
        return size == kStandsElsewhere && known != mLongSizes.end() ? known->second : size;
    }

    // RIFF size, data size, sample count, then a table of further chunks.
    void ReadLongSizes(const std::string& ds64) {
        constexpr std::size_t kTable = 28;
        constexpr std::size_t kEntry = 12;
        if (ds64.size() >= 16) {
            mLongSizes["data"] = Little(ds64, 8, 8);
        }
        for (std::size_t at = kTable; at + kEntry <= ds64.size() && mLongSizes.size() < kMostChunks; at += kEntry) {
            mLongSizes[ds64.substr(at, 4)] = Little(ds64, at + 4, 8);
        }
    }

    const ReadBytesAt& mRead;
    std::uint64_t mFileSize;
    std::map<std::string, std::uint64_t> mLongSizes;
};

} // namespace

std::optional<std::string> FindRiffChunk(const ReadBytesAt& read, std::uint64_t fileSize, std::string_view id,
                                         std::size_t most) {
    Chunks chunks(read, fileSize);
    return chunks.IsRiff() ? chunks.Find(id, most) : std::nullopt;
}

} // namespace zonstory
