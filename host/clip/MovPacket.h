#pragma once

#include <zonstoryparser/XMPToolkit.h>

#include "files/FileDescriptor.h"

namespace zonstory {

/// Writes metadata over the packet that a MOV's index holds, in the same number of bytes. The toolkit leaves xmp:CreateDate
/// out of every packet that it writes into a MOV, taking the container's own date for the same thing; what it makes is
/// room for a packet.
/// @param file  Open for reading and writing. Damaged if this throws halfway, so it is to be a copy.
/// @return false, and nothing was written, when there is no packet or the metadata does not fit in.
bool OverwriteMovPacket(const FileDescriptor& file, const SXMPMeta& xmp);

} // namespace zonstory
