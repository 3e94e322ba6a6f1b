#pragma once

#include <string>
#include <string_view>

/// Text that other programs saved, and that does not say how.
namespace zonstory {

/// A file's bytes as UTF-8: from UTF-8 or UTF-16 of either order, with or without a byte order mark, else from
/// Windows-1252, in which every byte means something. No mark is left in front.
std::string ForeignToUTF8(std::string_view bytes);

/// The bytes that ForeignToUTF8 would have taken for this text had they been Windows-1252. A file's name may be made of
/// them. Characters that have none become '?', which no other byte does.
std::string ToWindows1252(std::string_view utf8);

} // namespace zonstory
