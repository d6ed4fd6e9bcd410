// The differences of two texts line by line.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace ostrand {

// Lines of the first text that are replaced by lines of the second one; counted from 0. One of the
// counts can be 0: lines were only added or only removed.
struct LineChange {
  int before = 0;
  int beforeCount = 0;
  int after = 0;
  int afterCount = 0;

  friend bool operator==(const LineChange&, const LineChange&) = default;
};

// The changes that leave as many lines as possible alone, in their order. Texts that have little in
// common may get more changes than necessary, which bounds the time.
std::vector<LineChange> LineChanges(std::span<const std::string_view> before,
                                    std::span<const std::string_view> after);

// The lines of a text without their ends, which are CR LF or LF. A last line without an end counts.
std::vector<std::string_view> LinesOf(std::string_view text);

}  // namespace ostrand
