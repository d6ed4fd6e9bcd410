#include "text/fault.h"

namespace ostrand {

Fault SubscriptOutOfRange() { return {9, "Subscript out of range"}; }
Fault InvalidProcedureCall() { return {5, "Invalid procedure call or argument"}; }
Fault DivisionByZero() { return {11, "Division by zero"}; }

void FailSubscript() { throw SubscriptOutOfRange(); }

}  // namespace ostrand
