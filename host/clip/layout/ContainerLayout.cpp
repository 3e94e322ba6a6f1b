#include "clip/layout/ContainerLayout.h"

#include "clip/layout/AiffLayout.h"
#include "clip/layout/IsoLayout.h"
#include "clip/layout/RiffLayout.h"

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
};

} // namespace

std::unique_ptr<ContainerLayout> ReadLayout(const ByteReader& file, std::string_view) {
    for (const Family& family : kFamilies) {
        if (family.isOfIt(file)) {
            return family.read(file);
        }
    }
    throw NoExactWay("its format is not known");
}

} // namespace zonstory
