#include "clip/layout/ContainerLayout.h"

#include "clip/layout/AiffLayout.h"
#include "clip/layout/Id3Layout.h"
#include "clip/layout/IsoLayout.h"
#include "clip/layout/RiffLayout.h"
#include "clip/layout/UnwrittenFormats.h"

namespace zonstory {

namespace {

struct Family {
    bool (*isOfIt)(const ByteReader& file);
    std::unique_ptr<ContainerLayout> (*read)(const ByteReader& file);
};

// The first that knows a file's beginning has it.
constexpr Family kFamilies[] = {
    {IsIsoMedia, ReadIsoMedia},
    {IsRiff, ReadRiff},
    {IsAiff, ReadAiff},
    {IsMp3, ReadMp3},
};

} // namespace

std::unique_ptr<ContainerLayout> ReadLayout(const ByteReader& file, std::string_view extension) {
    if (const std::optional<std::string> reason = UnwrittenByExtension(extension)) {
        throw NoExactWay(*reason);
    }
    for (const Family& family : kFamilies) {
        if (family.isOfIt(file)) {
            return family.read(file);
        }
    }
    throw NoExactWay(UnwrittenByBytes(file));
}

} // namespace zonstory
