#include "lint/key_lines.h"

#include "projectfile/file_lines.h"
#include "text/strings.h"

namespace ostrand {

KeyLines::KeyLines(std::string_view bytes) {
  VisitFileLines(
      bytes, [&](std::string_view section, int line) { lines_.emplace(section, line); },
      [&](std::string_view section, std::string_view key, std::string_view, int line) {
        lines_[std::string(section).append(Trim(key))] = line;
      });
}

int KeyLines::LineOf(std::string_view section, std::string_view key) const {
  for (const std::string& name : {std::string(section).append(key), std::string(section)}) {
    if (const auto found = lines_.find(name); found != lines_.end()) return found->second;
  }
  return 1;
}

}  // namespace ostrand
