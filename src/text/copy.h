// Copies of short texts.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace ostrand {

// The first and last `Size` bytes of a text with at least as many; the two may overlap.
template <std::size_t Size>
void CopyEnds(char* to, std::string_view text) {
  std::memcpy(to, text.data(), Size);
  std::memcpy(to + text.size() - Size, text.data() + text.size() - Size, Size);
}

// Copies a text to `to`, which must have the capacity; returns the end of the copy. The pieces of a
// line are short: a call of memcpy would cost more than the copy.
inline char* CopyText(char* to, std::string_view text) {
  const std::size_t size = text.size();
  if (size > 32) {
    std::memcpy(to, text.data(), size);
  } else if (size >= 16) {
    CopyEnds<16>(to, text);
  } else if (size >= 8) {
    CopyEnds<8>(to, text);
  } else if (size >= 4) {
    CopyEnds<4>(to, text);
  } else if (size >= 2) {
    CopyEnds<2>(to, text);
  } else if (size == 1) {
    *to = text.front();
  }
  return to + size;
}

}  // namespace ostrand
