#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

/// The names that stand in hash lists: in what md5sum, sha1sum, xxhsum and their like write, in SFV, and in MHL.
namespace zonstory {

enum class HashListKind {
    None, ///< No hash list.
    Sums, ///< A hash and a name a line, in either of the two orders, or a hash alone.
    Sfv,  ///< A name and a CRC a line.
    Mhl,  ///< XML, of the older kind and of the ASC's.
};

/// Told by the ending of the file's name, in upper or lower case.
HashListKind KindOfHashList(std::string_view fileName);

/// Why a list does not say what it names: "cannot be read in line 12".
class HashListError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Called with each name: UTF-8, with "/" between folders, from the list's place on or absolute. What stood there in
/// Windows-1252 is told as UTF-8.
using NameReceiver = std::function<void(std::string&&)>;

/// Takes any bytes.
/// @param fileName  The list's own: a hash without a name belongs to the file that the list is named after, A001.mov for
///                  A001.mov.md5.
/// @throws HashListError, after those names that stand in front of the fault.
void ReadHashListNames(std::string_view bytes, HashListKind kind, std::string_view fileName,
                       const NameReceiver& receive);

} // namespace zonstory
