// The system calls that a fault can hit, and their failures.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ostrand::faults {

// The effects of a call that matter for a fault.
enum Trait : unsigned {
  kNone = 0,
  kTakesSpace = 1,   // fails on a full disk
  kRemoves = 2,      // a failure can leave a file
  kRunsFirst = 4,    // does its work even if it reports an error
  kWrites = 8,       // can write fewer bytes than asked
  kNamesFile = 16,   // argument 0 is a path
  kNamesEntry = 32,  // argument 1 is a path, in the folder of argument 0
  kOpens = 64,       // takes space only if it may create
  kStarts = 128,     // returns the number of a new process
  kMemory = 256,     // its message need not name a file
  kLists = 512,      // looks at an open folder or its entries
  kSyncs = 1024,     // the old file is kept if the new one may not be on the disk yet
};

struct CallRow {
  long number;
  std::string_view name;
  unsigned traits;
  std::span<const int> errors;  // empty: never made to fail
};

// Whether the call can fail: fcntl does for locks only, its other commands need nothing.
bool CanFail(long number, long command);
// The row of a call; null for a call at which the program is only killed.
const CallRow* FindCall(long number);
// The name of a call for a message, its number if it has no row.
std::string CallName(long number);

// "ENOSPC" and back; 0 for a name not in the table.
std::string_view ErrorName(int error);
int ErrorByName(std::string_view name);

}  // namespace ostrand::faults
