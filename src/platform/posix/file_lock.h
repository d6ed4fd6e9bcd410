// Locks between processes, which the system releases when a process dies.
#pragma once

#include <string>

#include "text/result.h"

namespace ostrand::platform {

// Whether an error number of flock means that the disk has no locks, or none for folders, as some
// network disks.
bool IsNoLock(int number);

// Locks what the descriptor has open, as long as it is open, against all others that do the same.
// Waits up to ten seconds, where a write takes a few milliseconds; then the error is `held`, with
// `path` before it. On a disk without locks it does nothing.
Result<> LockOpened(int descriptor, const std::string& path, const std::string& held);

}  // namespace ostrand::platform
