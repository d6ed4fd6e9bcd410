// The lines of a project file by section and key.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace ostrand {

class KeyLines {
 public:
  // The bytes of a project file.
  explicit KeyLines(std::string_view bytes);

  // The line of a key, from 1. Of a key that is repeated it is the last one, which counts in
  // reading; of one that is not in the file the line of its section; 1 without that.
  [[nodiscard]] int LineOf(std::string_view section, std::string_view key) const;

 private:
  std::map<std::string, int, std::less<>> lines_;  // by "[SECTION]" and "[SECTION]Key"
};

}  // namespace ostrand
