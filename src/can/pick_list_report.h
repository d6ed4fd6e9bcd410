// Reports on the content and the faults of a pick list, for people.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "can/pick_list.h"

namespace ostrand {

// A table with one line for each item and a second one for items that transmit; lines end in LF.
// Texts are in the code page of the file.
std::string CanListListing(std::string_view path, const CanList& list);

// A finding of a check. A fault makes the list, or the item, unusable; a remark points out a value
// that may not be intended.
struct CanListFinding {
  int Line = 0;  // of the file, from 1; 0 for the file itself
  bool Wrong = true;
  std::string Text;
};

// Checks the whole file, including lines after the first that cannot be read. Empty for a list
// without faults.
std::vector<CanListFinding> CheckCanList(platform::FileSystem& files, std::string_view path);
std::vector<CanListFinding> CheckCanListContent(std::string_view path, std::string_view content);

}  // namespace ostrand
