// What the calculators share.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

// Where a calculator gives nothing, its inputs have no answer yet (a divisor of 0, a number past
// the range): what is shown stays as it is.

// The number that stands at the head of a typed text, 0 for a text without one. NaN for one past
// the range of a double, so that nothing that is computed from it can pass for an answer.
double TypedNumber(std::string_view text);

// A division that fails in an answer that can't stay as it is.
inline constexpr std::string_view kErrorText = "ERROR";

// The multiplier for pulses per second, and what the try-out rate gives with it.
struct RateAnswers {
  std::string multiplier;
  std::string whatIf;
};

// The answer as a multiplier or offset field takes it: what is shown, without the separators of
// thousands, which would end the number early. Nothing for a text that is not a number.
std::optional<std::string> NumberHandedBack(std::string_view shown);

// The multiplier and its product with the rate typed, each by its mask. The product is that of the
// unrounded multiplier. Nothing when either is no number.
std::optional<RateAnswers> RateAnswersOf(double multiplier, std::string_view multiplierMask,
                                         std::string_view whatIf, std::string_view whatIfMask);

}  // namespace ostrand
