#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "clip/layout/Edit.h"
#include "files/ByteReader.h"
#include "files/FileError.h"

/// Where a container keeps its XMP packet, and which bytes change when the packet does. Everything here is computed from
/// bytes; nothing is opened or written.
namespace zonstory {

/// The file is no whole file of its format: cut off, or contradicting itself. Nothing may be written into it. The message
/// stands behind the clip's name: "is damaged: its box moov ends beyond the file".
class DamagedFile : public FileError {
public:
    using FileError::FileError;
};

/// The file may be sound, but no change of it can be made that leaves all else as it is; a sidecar takes the metadata. The
/// message stands behind "not written inside, since ": "its index is compressed".
class NoExactWay : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A change of a file's packet, planned.
struct EditPlan {
    EditList edits;
    std::vector<std::string> notes; ///< What the user should know, a line each: media that moves, a second packet kept.
};

/// The layout of one file, read from its bytes; one class for each family of containers.
class ContainerLayout {
public:
    virtual ~ContainerLayout() = default;

    /// The bytes of the packet that readers take, its white space and processing instructions included; nothing where the
    /// file has none.
    virtual std::optional<ByteRange> Packet() const = 0;

    /// What is picture and sound, in ascending order; compared byte by byte after a change.
    virtual std::vector<ByteRange> Media() const = 0;

    /// Every position in the file that an index of it names, in the order of the index. After a change each leads to the
    /// same bytes as before, which whoever applies a plan proves with this.
    /// @throws NoExactWay when the indexes contradict themselves.
    virtual std::vector<std::uint64_t> Positions() const = 0;

    /// The edits after which readers find `packet`.
    /// @param packet  A whole packet without padding; where the old one has room, its white space makes up the difference,
    ///                and a new unit gets white space of its own.
    /// @throws NoExactWay
    virtual EditPlan Write(std::string_view packet) const = 0;

    /// The edits after which the packet's own unit is gone: the inverse of the Write() that made it, wherever media did not
    /// have to move. No edits where there is no packet.
    /// @throws NoExactWay
    virtual EditPlan Remove() const = 0;
};

/// Reads the layout of a file by what its bytes say it is.
/// @param file       Must outlive the layout.
/// @param extension  As in the file's name, "mov" or "MOV": camera raw and a few others are known by it alone, whatever
///                   their bytes look like.
/// @throws DamagedFile  when it is of a known family and not whole.
/// @throws NoExactWay   when no layout is known for it, with the reason.
std::unique_ptr<ContainerLayout> ReadLayout(const ByteReader& file, std::string_view extension);

} // namespace zonstory
