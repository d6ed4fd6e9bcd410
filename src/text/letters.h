// Kinds of characters, in ASCII.
#pragma once

namespace ostrand {

constexpr bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

constexpr bool IsLetter(char letter) {
  const char lower = static_cast<char>(letter | 0x20);
  return lower >= 'a' && lower <= 'z';
}

}  // namespace ostrand
