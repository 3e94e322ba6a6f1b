#pragma once

/// Memory that runs out when a test wants it to: operator new of the whole process, and malloc of what is linked into
/// the program itself (libraries keep the system's).
namespace support {

enum class Shortage { Once, FromThenOn };

/// While it lives, the allocation of this number, counted from 1, fails; and with FromThenOn all after it.
class MemoryShortage {
public:
    MemoryShortage(long number, Shortage shortage);
    MemoryShortage(const MemoryShortage&) = delete;
    MemoryShortage& operator=(const MemoryShortage&) = delete;
    ~MemoryShortage();

    bool HasStruck() const;          ///< Whether any allocation failed yet.
    bool HasStruckInToolkit() const; ///< Whether the first of them was the XMP toolkit's own.
};

/// Pieces of memory in use now.
long LiveAllocations();

} // namespace support
