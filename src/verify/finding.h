// What a check finds, as data. The boxes of the checks are made from it, and a report that asks
// nobody lists it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand {

struct Finding {
  std::string_view title;  // of the box that tells it
  std::string text;        // what the box says of it alone; lines are parted by CR LF
  // Where it stands in the project file: "[TABLE SETUP]" and "OutInt(2)"; of two places that
  // collide the second one. Empty when no one key is at fault.
  std::string_view section;
  std::string key;
  // The box is asked in a save, and a user who does not say otherwise stops it.
  bool againstSaving = false;
};

using Findings = std::vector<Finding>;

inline void Append(Findings& findings, Findings more) {
  for (Finding& finding : more) findings.push_back(std::move(finding));
}

}  // namespace ostrand
