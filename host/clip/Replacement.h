#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "clip/TargetFile.h"
#include "clip/Workspace.h"
#include "files/FileDescriptor.h"

namespace zonstory {

/// The new version of a file, prepared beside it and put in its place in one step. While one lives, no other run works
/// on the file. The order of the steps is the whole point: what takes the file's name is complete, checked and on the
/// disk before it does, so that whenever the machine stops, the name stands for the old file or the new one.
class Replacement {
public:
    /// Waits until no other run works on the file.
    /// @param target  Must outlive this; need not exist.
    /// @param kept    As in Workspace.
    explicit Replacement(TargetFile& target, KeptFolder* kept = nullptr) : mTarget(target), mWorkspace(target, kept) {}

    /// Where the new version is written, absolute. Nothing is there before a copy is made or written.
    std::filesystem::path Path() const;
    /// Makes the new version a copy of the old.
    /// @param spaceFactor  How many times its size the work on it needs in all, itself included.
    /// @pre The target exists.
    void CopyTarget(int spaceFactor);
    /// Makes the new version from bytes.
    void Write(const std::string& bytes);
    /// Removes the new version.
    void Discard();
    /// Opens the new version, as it is now.
    FileDescriptor Open(int flags) const;

    /// Puts the new version in the file's place, and closes the file.
    /// @param preserveTime  The new version gets the old one's time of modification.
    /// @return What the user should know: what of the file could not be kept, other hard links.
    /// @throws ClipError when the file was changed by others since it was opened, or a step fails; it is then as it was.
    std::vector<std::string> Commit(bool preserveTime);

private:
    std::string FileName() const;
    void TakeName() const;

    TargetFile& mTarget;
    Workspace mWorkspace;
};

} // namespace zonstory
