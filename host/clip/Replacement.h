#pragma once

#include <filesystem>
#include <functional>
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
    explicit Replacement(TargetFile& target, KeptFolder* kept = nullptr) : mTarget(&target), mWorkspace(target, kept) {}

    /// The file as it is now, opened again under the same name; lets go of the one before. It must outlive this as well.
    /// @throws ClipError when it is another name, since no other run is kept away from that.
    void Retarget(TargetFile& target);

    /// Makes the new version, an empty file, and keeps it open. Called once.
    /// @return Open for reading and writing, until this ends or Commit() is done.
    /// @throws FileError
    const FileDescriptor& Create();
    /// The name under which it grows, absolute. Others may put another file there.
    std::filesystem::path Path() const;

    /// Puts the new version in the file's place, and closes both.
    /// @param preserveTime  The new version gets the old one's time of modification.
    /// @param confirm       Called when all but the name is done; what it throws leaves the file as it was.
    /// @return What the user should know: what of the file could not be kept, other hard links.
    /// @throws FileError when the file was changed by others since it was opened, when the name under which the new version
    ///         grew stands for another file than the one that Create() gave, or a step fails; the file is then as it was.
    std::vector<std::string> Commit(
        bool preserveTime, const std::function<void()>& confirm = [] {});
    /// Removes the file instead, which has nothing left to say.
    /// @throws FileError as Commit().
    std::vector<std::string> Remove(const std::function<void()>& confirm = [] {});

private:
    void TakeName();

    TargetFile* mTarget;
    Workspace mWorkspace;
    std::string mName; // in the working folder
    FileDescriptor mNew;
};

} // namespace zonstory
