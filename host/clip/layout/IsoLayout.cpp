#include "clip/layout/IsoLayout.h"

#include <algorithm>
#include <iterator>

namespace zonstory {

bool IsIsoMedia(const ByteReader& file) {
    constexpr std::uint32_t kFirstBoxes[] = {FourCharacters("ftyp"), FourCharacters("moov"), FourCharacters("mdat"),
                                             FourCharacters("free"), FourCharacters("skip"), FourCharacters("wide"),
                                             FourCharacters("pnot")};
    return file.Has(0, 8) &&
           std::find(std::begin(kFirstBoxes), std::end(kFirstBoxes), file.Big32(4)) != std::end(kFirstBoxes);
}

std::unique_ptr<ContainerLayout> ReadIsoMedia(const ByteReader&) {
    throw NoExactWay("its layout is not read yet");
}

} // namespace zonstory
