// The characters of code page 437 that draw a wiring diagram.
#pragma once

#include <algorithm>
#include <array>

namespace ostrand {

inline constexpr char kLine = '\xC4';
inline constexpr char kSide = '\xB3';
inline constexpr char kTopLeft = '\xDA';
inline constexpr char kTopRight = '\xBF';
inline constexpr char kBottomLeft = '\xC0';
inline constexpr char kBottomRight = '\xD9';
inline constexpr char kBottomTee = '\xC1';
inline constexpr char kCrossing = '\xC5';
inline constexpr char kSolid = '\xDB';     // of a connector
inline constexpr char kSolidTop = '\xDF';  // of a connector
inline constexpr char kDot = '\xFE';       // of a wired terminal

struct LineChar {
  char code;           // in code page 437
  char16_t character;  // in Unicode
  char plain;          // substitute in a font without it, in Windows-1252
};

inline constexpr std::array<LineChar, 12> kLineChars = {{{kLine, 0x2500, '-'},
                                                         {'\xCD', 0x2550, '-'},
                                                         {kTopLeft, 0x250C, '+'},
                                                         {kTopRight, 0x2510, '+'},
                                                         {kBottomLeft, 0x2514, '+'},
                                                         {kBottomRight, 0x2518, '+'},
                                                         {kCrossing, 0x253C, '+'},
                                                         {kSide, 0x2502, '\xA6'},
                                                         {kBottomTee, 0x2534, '-'},
                                                         {kSolid, 0x2588, '\xA6'},
                                                         {kDot, 0x25A0, '+'},
                                                         {kSolidTop, 0x2580, '\xAF'}}};

// The line character of a code; null if it is not one.
inline const LineChar* LineCharOf(char code) {
  const auto* const found =
      std::find_if(kLineChars.begin(), kLineChars.end(),
                   [code](const LineChar& known) { return known.code == code; });
  return found == kLineChars.end() ? nullptr : found;
}

}  // namespace ostrand
