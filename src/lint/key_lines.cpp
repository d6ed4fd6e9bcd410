#include "lint/key_lines.h"

#include "text/line_diff.h"
#include "text/strings.h"

namespace ostrand {

KeyLines::KeyLines(std::string_view bytes) {
  std::string section;
  int number = 0;
  for (const std::string_view line : LinesOf(bytes)) {
    ++number;
    if (line.starts_with('[')) {
      section = Trim(line);
      lines_.emplace(section, number);
    } else if (Holds(line, "=")) {
      lines_[section + std::string(Trim(Before(line, "=")))] = number;
    }
  }
}

int KeyLines::LineOf(std::string_view section, std::string_view key) const {
  for (const std::string& name : {std::string(section).append(key), std::string(section)}) {
    if (const auto found = lines_.find(name); found != lines_.end()) return found->second;
  }
  return 1;
}

}  // namespace ostrand
