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
    MetadataContent() = default; ///< That of no metadata at all, as far as IsWhatWasWritten() is concerned.
    /// @throws XMP_Error when the toolkit cannot serialize it.
    explicit MetadataContent(const SXMPMeta& xmp);

    bool operator==(const MetadataContent&) const = default;

    /// Whether `written`, read back from a file that held `before`, says what this does. The toolkit's handlers may add
    /// what they take from other metadata of the file, and digests by which they recognise their own work; but nothing
    /// that this lacks may have stayed from before.
    bool IsWhatWasWritten(const MetadataContent& written, const MetadataContent& before) const;

private:
    std::string mAbout;
    std::vector<std::string> mProperties; // sorted
};

} // namespace zonstory
