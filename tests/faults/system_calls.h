// The system calls that a fault can hit, and how each can fail.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ostrand::faults {

// What a call does, as far as a fault depends on it.
enum Trait : unsigned {
  kNone = 0,
  kTakesSpace = 1,   // fails on a full disk
  kRemoves = 2,      // a failure can leave a file behind
  kRunsFirst = 4,    // does its work even when it reports an error
  kWrites = 8,       // can write less than was asked
  kNamesFile = 16,   // argument 0 is a path
  kNamesEntry = 32,  // argument 1 is a path, in the folder of argument 0
  kOpens = 64,       // takes space only when it may create
  kStarts = 128,     // returns the number of a new process
  kMemory = 256,     // a message need not name a file
  kLists = 512,      // looks at an open folder or what is in it
  kSyncs = 1024,     // the old file is kept when the new one may not be on the disk yet
};

struct CallRow {
  long number;
  std::string_view name;
  unsigned traits;
  std::span<const int> errors;  // empty: never made to fail
};

// Whether the call can fail: fcntl does for locks alone, everything else it is asked needs nothing.
bool CanFail(long number, long command);
// The row of a call; nullptr for one that is only killed at.
const CallRow* FindCall(long number);
// The name of a call for a message, its number if it has no row.
std::string CallName(long number);

// "ENOSPC" and back; 0 for a name that is not in the table.
std::string_view ErrorName(int error);
int ErrorByName(std::string_view name);

}  // namespace ostrand::faults
