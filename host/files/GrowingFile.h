#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "files/FileDescriptor.h"

namespace zonstory {

/// A file of results that is whole at every moment: what comes behind the last result is written anew behind each. A pipe or
/// device gets the same bytes one after the other.
class GrowingFile {
public:
    /// Makes the file, or empties it.
    /// @param behind  What ends the file.
    /// @throws OutputError
    GrowingFile(std::filesystem::path path, std::string_view before, std::string_view behind);

    /// Never fails; after a failure nothing more is written.
    /// @param behind  What ends the file from now on; not shorter than before, the text included.
    void Add(std::string_view text, std::string_view behind);
    /// Flushes. Called once, last.
    /// @throws OutputError for whatever failed first.
    void Finish();

private:
    void Write(std::string_view text, std::string_view behind);

    std::filesystem::path mPath;
    FileDescriptor mFile;
    bool mIsRegular = false;
    std::uint64_t mSize = 0; ///< Without what ends it.
    std::string mBehind;
    std::string mProblem;
};

} // namespace zonstory
