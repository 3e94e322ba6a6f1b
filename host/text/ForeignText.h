#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Text that other programs saved, and that does not say how.
namespace zonstory {

enum class TextEncoding { UTF8, UTF16Little, UTF16Big, Windows1252 };

/// How the text of a file is stored.
struct TextForm {
    TextEncoding encoding = TextEncoding::UTF8;
    std::size_t mark = 0; ///< Bytes of the byte order mark in front of it.

    std::size_t BytesPerUnit() const {
        return encoding == TextEncoding::UTF16Little || encoding == TextEncoding::UTF16Big ? 2 : 1;
    }
};

/// What ForeignToUTF8() goes by.
TextForm FindTextForm(std::string_view bytes);

/// Bytes of a known encoding, without a mark, as UTF-8.
std::string DecodeText(std::string_view bytes, TextEncoding encoding);

/// The inverse of DecodeText(); nothing where the encoding has no bytes for one of the characters.
std::optional<std::string> EncodeText(std::string_view utf8, TextEncoding encoding);

/// A file's bytes as UTF-8: from UTF-8 or UTF-16 of either order, with or without a byte order mark, else from
/// Windows-1252, in which every byte means something. No mark is left in front.
std::string ForeignToUTF8(std::string_view bytes);

/// The bytes that ForeignToUTF8 would have taken for this text had they been Windows-1252. A file's name may be made of
/// them. Characters that have none become '?', which no other byte does.
std::string ToWindows1252(std::string_view utf8);

} // namespace zonstory
