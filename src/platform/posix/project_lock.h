// One save of a project at a time, across processes and machines.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/filesystem.h"
#include "text/result.h"

namespace ostrand::platform {

struct LockTimes {
  std::chrono::milliseconds patience{10'000};  // with another save
  std::chrono::milliseconds refresh{10'000};   // after which a holder refreshes its lock
};

// Takes the lock of the project file `project`, by its exact name: a hidden file beside it, which
// holds user, host, process and time of its holder and is deleted when the lock is released. Waits
// up to the patience for another save, calling `waiting` all the while; the error then names the
// holder.
// - A holder on this machine holds the system's lock of the file, which ends with its process. A
//   file that nobody has locked is taken over at once.
// - A holder on another machine, where that lock may not be seen, counts as dead when the file
//   was not touched for a minute, by the clock of its disk.
// Anything but a regular file under the name is left alone, and the next number is taken.
// Null in a folder that cannot be written, where no save can happen either.
Result<std::unique_ptr<ProjectLock>> LockProjectFile(const std::string& project,
                                                     const Waiting& waiting,
                                                     const LockTimes& times = {});

}  // namespace ostrand::platform
