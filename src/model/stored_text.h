// What a text may hold that a project keeps.
#pragma once

#include <string_view>

namespace ostrand {

// Begins a section wherever it is in a line of a project file: with it in a text, the rest of the
// file is lost on reading. No text that a project keeps may gain one.
inline constexpr char kSectionMark = '[';

// The help line of a key or an item that is refused for it.
inline constexpr std::string_view kSectionMarkHelp =
    "A text can't hold \"[\": it begins a section of the project file.";

inline bool HoldsSectionMark(std::string_view text) {
  return text.find(kSectionMark) != std::string_view::npos;
}

}  // namespace ostrand
