// Rules for the values of a CAN item, on the screens and in lists of items.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// Positions in the 64 bits of a data frame, and lengths of a value in it.
inline constexpr int kFrameBits = 64;
// Data types of received values.
inline constexpr int kMinDataStyle = 1;
inline constexpr int kMaxDataStyle = 6;
// Milliseconds.
inline constexpr int kMinRxTimeout = 1;
inline constexpr int kMaxRxTimeout = 20000;

// "&H" and 16 hexadecimal digits, in the stored form: upper case. Nothing for any other text.
std::optional<std::string> TxDataFrameOf(std::string_view text);

// The same with "XX" for bytes that match anything.
std::optional<std::string> RxDataMatchOf(std::string_view text);

inline bool IsRxTimeout(i32 milliseconds) {
  return milliseconds >= kMinRxTimeout && milliseconds <= kMaxRxTimeout;
}

inline bool IsDataStyle(int style) { return style >= kMinDataStyle && style <= kMaxDataStyle; }

inline bool IsBitNumber(int bit) { return bit >= 1 && bit <= kFrameBits; }

// A letter, then letters, digits and "_": names of arrays in the program. Accepts an empty text, so
// that a name can be retyped.
bool ItemNameText(std::string_view text);

inline bool IsItemName(std::string_view text) { return !text.empty() && ItemNameText(text); }

// The number of a 32-bit identifier: decimal, or hexadecimal with "&H", read as unsigned. Nothing
// for any other text.
std::optional<std::int64_t> IdentifierNumber(std::string_view text);

}  // namespace ostrand
