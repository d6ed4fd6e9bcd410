// Common part of the calculators.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

// A calculator without a result has no answer to its inputs yet (a divisor of 0, a number out of
// range); the shown answer then stays.

// The number at the start of a typed text, 0 for a text without one. NaN when it exceeds the range
// of a double, so that no result computed from it passes for an answer.
double TypedNumber(std::string_view text);

// Result of a failed division where the previous answer cannot stay.
inline constexpr std::string_view kErrorText = "ERROR";

// The multiplier for pulses per second, and its result for the try-out rate.
struct RateAnswers {
  std::string multiplier;
  std::string whatIf;
};

// The answer in the form of a multiplier or offset field: as shown, without thousands separators,
// which would end the number early. Nothing for a text that is not a number.
std::optional<std::string> NumberHandedBack(std::string_view shown);

// The multiplier and its product with the typed rate, each formatted by its mask. The product uses
// the unrounded multiplier. Nothing when either is not a number.
std::optional<RateAnswers> RateAnswersOf(double multiplier, std::string_view multiplierMask,
                                         std::string_view whatIf, std::string_view whatIfMask);

}  // namespace ostrand
