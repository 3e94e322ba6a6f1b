#pragma once

#include <string>

#include "files/FileDescriptor.h"

/// The lock by which runs keep out of each other's way on one file: a file of its own in the working folder, which says
/// who holds it. The system drops it when a run dies. Not the clip's own: that gives way to another file; and network file
/// systems lock no folders.
namespace zonstory {

/// What the names of all files begin with that belong to work on a file: 16 digits that follow from its name, and a dot.
/// Of one length whatever the name, which may already have the greatest there is. Upper and lower case meet in one, for
/// file systems that hold them for the same; two names that meet by chance merely wait for each other.
std::string WorkPrefix(const std::string& fileName);

/// Whether a file of the working folder may be one of this program's, and the prefix of its name; empty for others.
std::string WorkPrefixOf(const std::string& nameInFolder);

std::string LockName(const std::string& prefix);

enum class LockAttempt { Locked, Busy, Gone };

/// Takes the lock unless another run has it.
/// @param folder  The working folder.
/// @param lock    Holds it when `Locked`, until it is closed; else good for HolderOf() when `Busy`. When `Gone`, the other
///                run ended in this very moment, and the folder may have ended with it.
/// @throws ClipError when the lock cannot be made, or the file system has none.
LockAttempt TryLock(const FileDescriptor& folder, const std::string& prefix, FileDescriptor& lock);

/// Makes the lock's file without taking the lock: it says who is at work, and keeps nobody out.
/// @throws ClipError
LockAttempt MarkOnly(const FileDescriptor& folder, const std::string& prefix, FileDescriptor& lock);

/// "process 4711 on edit3 since 2026-11-21 19:20:03 UTC", or "another run".
std::string HolderOf(const FileDescriptor& lock);

} // namespace zonstory
