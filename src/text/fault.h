// A runtime failure of the system, shown to the user in the box "TROUBLE".
#pragma once

#include <string>
#include <utility>

namespace ostrand {

// The one exception of the system. `number` and `description` are what the box shows.
struct Fault {
  int number = 0;
  std::string description;
};

// The failures that the system's own rules raise.
inline Fault SubscriptOutOfRange() { return {9, "Subscript out of range"}; }
inline Fault InvalidProcedureCall() { return {5, "Invalid procedure call or argument"}; }
inline Fault DivisionByZero() { return {11, "Division by zero"}; }

}  // namespace ostrand
