// A finding of a check, as data. The boxes of the checks are made from it, and reports list it
// without questions.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand {

struct Finding {
  std::string_view title;  // of its box
  std::string text;        // its own text in the box; lines are separated by CR LF
  // Its place in the project file: "[TABLE SETUP]" and "OutInt(2)"; of two colliding places the
  // second one. Empty if no single key is at fault.
  std::string_view section;
  std::string key;
  // A save asks about it and stops unless the user decides otherwise.
  bool againstSaving = false;
};

using Findings = std::vector<Finding>;

inline void Append(Findings& findings, Findings more) {
  for (Finding& finding : more) findings.push_back(std::move(finding));
}

}  // namespace ostrand
