// A runtime failure of the system, shown to the user in the box "TROUBLE".
#pragma once

#include <string>

namespace ostrand {

// The one exception of the system. `number` and `description` are what the box shows.
struct Fault {
  int number = 0;
  std::string description;
};

// The failures that the system's own rules raise.
Fault SubscriptOutOfRange();
Fault InvalidProcedureCall();
Fault DivisionByZero();

// Throws SubscriptOutOfRange; out of line, since every access to an element contains it.
[[noreturn]] void FailSubscript();

}  // namespace ostrand
