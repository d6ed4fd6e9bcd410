// Errors of system calls.
#pragma once

#include <cstring>
#include <string>

#include "text/result.h"

namespace ostrand::platform {

// "/x/y.VKG: Permission denied", for the error number of a call on `subject`.
inline Error SystemError(const std::string& subject, int number) {
  return Error{subject + ": " + std::strerror(number)};
}

}  // namespace ostrand::platform
