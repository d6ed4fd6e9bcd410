// Limits of the texts that a project keeps.
#pragma once

#include <string_view>

namespace ostrand {

// Begins a section wherever it is in a line of a project file: a text that contains it makes the
// rest of the file unreadable. No text of a project may get one.
inline constexpr char kSectionMark = '[';

// The help line of a key or an item that is refused because of it.
inline constexpr std::string_view kSectionMarkHelp =
    "A text can't hold \"[\": it begins a section of the project file.";

inline bool HoldsSectionMark(std::string_view text) {
  return text.find(kSectionMark) != std::string_view::npos;
}

}  // namespace ostrand
