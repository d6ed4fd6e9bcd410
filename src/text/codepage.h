// Between the code pages of the files and UTF-8, for terminals and desktops.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ostrand {

// The character of a byte of Windows-1252; U+FFFD for the five bytes without one.
char32_t CharacterOf(char byte);

// Appends a character below U+10000 to a text of UTF-8.
void AppendUtf8(std::string& to, char32_t c);

// The byte order mark that an editor may put before a text in UTF-8.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// A text of Windows-1252 in UTF-8. The five bytes without a character become U+FFFD.
std::string Utf8FromWindows1252(std::string_view bytes);

// A text of UTF-8 in Windows-1252. Characters not in the code page become "?".
std::string Windows1252FromUtf8(std::string_view utf8);

// The low byte of each 16-bit character of a text in UTF-8 or Windows-1252: each well-formed UTF-8
// sequence counts as one character.
std::string LowBytes(std::string_view text);

// Length of the well-formed UTF-8 sequence of two to four bytes at the start of `text`, which is
// not empty; 0 for any other start. Two-byte control characters count as none.
std::size_t Utf8Length(std::string_view text);

}  // namespace ostrand
