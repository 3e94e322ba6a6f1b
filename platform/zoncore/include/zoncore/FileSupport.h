#pragma once

#include <zoncore/Export.h>
#include <zoncore/UString.h>

namespace zoncore {

/// The name of a directory. Nothing is looked up or created. File names are UTF-8 on disk; a name that is not, such as a
/// TMPDIR in another encoding, cannot be told, and stands for a file that does not exist.
class ZONCORE_API Dir {
public:
    /// The system's temporary directory: the value of TMPDIR when that is set and not empty, else "/tmp".
    static Dir TempDir();

    /// The entry `child` of `parent`, whether or not it exists.
    Dir(const Dir& parent, const UString& child);

    /// The full path, without a trailing separator (except for the root directory).
    UString FullPath() const;

private:
    ZONCORE_LOCAL explicit Dir(UString path);

    UString mPath;
};

/// The name of a file.
class ZONCORE_API File {
public:
    explicit File(const UString& path);

    /// Whether the directory has an entry of this name. A symbolic link counts by itself, even one that leads nowhere.
    bool Exists() const;

    /// Removes the directory's entry: a symbolic link is removed, never what it leads to; a directory never.
    /// @return true when it was removed.
    bool Delete();

private:
    UTF8String mPath;
};

} // namespace zoncore
