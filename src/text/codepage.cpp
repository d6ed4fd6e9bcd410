#include "text/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace ostrand {
namespace {

constexpr char32_t kNoCharacter = 0xFFFD;

// The characters of the bytes 0x80 to 0x9F; all others have their own number.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC,       kNoCharacter, 0x201A, 0x0192, 0x201E, 0x2026,       0x2020, 0x2021,
    0x02C6,       0x2030,       0x0160, 0x2039, 0x0152, kNoCharacter, 0x017D, kNoCharacter,
    kNoCharacter, 0x2018,       0x2019, 0x201C, 0x201D, 0x2022,       0x2013, 0x2014,
    0x02DC,       0x2122,       0x0161, 0x203A, 0x0153, kNoCharacter, 0x017E, 0x0178};

// Removes one character from the text; a broken sequence gives U+FFFD for its first byte.
char32_t takeUtf8(std::string_view& text) {
  const auto byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char first = byteAt(0);
  std::size_t length = first < 0x80 ? 1U : first >= 0xF0 ? 4U : first >= 0xE0 ? 3U : 2U;
  char32_t c = length == 1 ? first : first & (0x7FU >> length);
  bool whole = (first < 0x80 || first >= 0xC0) && length <= text.size();
  for (std::size_t at = 1; whole && at < length; ++at) {
    whole = (byteAt(at) & 0xC0) == 0x80;
    c = (c << 6) | (byteAt(at) & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kMin = {0, 0, 0x80, 0x800, 0x10000};  // by length
  if (!whole || c < kMin[length]) {  // overlong forms are broken, too
    length = 1;
    c = kNoCharacter;
  }
  text.remove_prefix(length);
  return c;
}

}  // namespace

std::size_t Utf8Length(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned first = byte(0);
  std::size_t length = 0;
  if (first >= 0xC2 && first <= 0xDF) length = 2;
  if (first >= 0xE0 && first <= 0xEF) length = 3;
  if (first >= 0xF0 && first <= 0xF4) length = 4;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xC0) != 0x80) return 0;
  }
  // The second byte shows overlong forms, surrogates, values above the last character, and the
  // control characters of the second block.
  const unsigned second = byte(1);
  if ((first == 0xC2 && second < 0xA0) || (first == 0xE0 && second < 0xA0) ||
      (first == 0xED && second > 0x9F) || (first == 0xF0 && second < 0x90) ||
      (first == 0xF4 && second > 0x8F)) {
    return 0;
  }
  return length;
}

char32_t CharacterOf(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0x80 && code < 0xA0 ? kHighControls[code - 0x80U] : code;
}

void AppendUtf8(std::string& to, char32_t c) {
  const auto put = [&](char32_t byte) { to += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

std::string Utf8FromWindows1252(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  for (const char byte : bytes) AppendUtf8(result, CharacterOf(byte));
  return result;
}

std::string LowBytes(std::string_view text) {
  std::string result;
  const auto put = [&](char32_t c) { result += static_cast<char>(c & 0xFF); };
  while (!text.empty()) {
    if (Utf8Length(text) == 0) {
      const char32_t c = CharacterOf(text.front());
      put(c == kNoCharacter ? static_cast<unsigned char>(text.front()) : c);
      text.remove_prefix(1);
      continue;
    }
    char32_t c = takeUtf8(text);
    if (c >= 0x10000) {  // a surrogate pair; the first holds the upper ten bits
      c -= 0x10000;
      put(c >> 10);
    }
    put(c);
  }
  return result;
}

std::string Windows1252FromUtf8(std::string_view utf8) {
  std::string result;
  while (!utf8.empty()) {
    const char32_t c = takeUtf8(utf8);
    const auto high = std::find(kHighControls.begin(), kHighControls.end(), c);
    if (c < 0x80 || (c >= 0xA0 && c < 0x100)) {
      result += static_cast<char>(c);
    } else if (c != kNoCharacter && high != kHighControls.end()) {
      result += static_cast<char>(0x80 + (high - kHighControls.begin()));
    } else {
      result += '?';
    }
  }
  return result;
}

}  // namespace ostrand
