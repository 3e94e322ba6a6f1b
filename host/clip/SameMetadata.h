#pragma once

#include <string>
#include <vector>

#include <zonstoryparser/XMPToolkit.h>

namespace zonstory {

/// What metadata says, in a form that can be compared: the object it is about, and every property with all beneath it as
/// one text. The order of the properties is left out, since it means nothing and a property that is deleted and written
/// again moves behind the others; the order within a property counts.
class MetadataContent {
public:
    /// @throws XMP_Error when the toolkit cannot serialize it.
    explicit MetadataContent(const SXMPMeta& xmp);

    bool operator==(const MetadataContent&) const = default;

    /// Whether `written`, read back from a file, holds all that this does and nothing else. Left out are the digests by
    /// which the toolkit's handlers recognise their own work; they are made while writing.
    bool IsWhatWasWritten(const MetadataContent& written) const;

private:
    MetadataContent WithoutDigests() const;

    std::string mAbout;
    std::vector<std::string> mProperties; // sorted
};

} // namespace zonstory
