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

// Throws the first of them. A call of it is all that an access to an element contains for that.
[[noreturn]] void FailSubscript();

}  // namespace ostrand
