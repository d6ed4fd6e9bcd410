// What a pick list holds and what is wrong with it, for people.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "can/pick_list.h"

namespace ostrand {

// A table of the items, one line each and a second one for those that transmit; lines end in LF.
// Texts are in the code page of the file.
std::string CanListListing(std::string_view path, const CanList& list);

// What a check finds. Something wrong keeps the list, or a picked item, from being used; a remark
// tells of what may not be as meant.
struct CanListFinding {
  int Line = 0;  // of the file, from 1; 0 for the file itself
  bool Wrong = true;
  std::string Text;
};

// Looks at all of a file, also behind the first line that can't be read. Empty for a list without
// a fault.
std::vector<CanListFinding> CheckCanList(platform::FileSystem& files, std::string_view path);
std::vector<CanListFinding> CheckCanListContent(std::string_view path, std::string_view content);

}  // namespace ostrand
