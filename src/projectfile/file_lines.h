// The lines of a project file, without a project to read them into.
#pragma once

#include <string_view>

#include "text/strings.h"

namespace ostrand {

// Calls `section(header, line)` for each section, "[TABLE SETUP]", and `key(header, name, value,
// line)` for each key after it, both as they are in the file but for line ends and the blanks
// around a header. The header is empty before the first section. Lines are counted from 1.
template <class Section, class Key>
void VisitFileLines(std::string_view bytes, Section section, Key key) {
  std::string_view header;
  for (int number = 1; !bytes.empty(); ++number) {
    const std::string_view line = TakeLine(bytes);
    if (line.starts_with('[')) {
      header = Trim(line);
      section(header, number);
    } else if (const std::size_t equal = line.find('='); equal != std::string_view::npos) {
      key(header, line.substr(0, equal), line.substr(equal + 1), number);
    }
  }
}

}  // namespace ostrand
