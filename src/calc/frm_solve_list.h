// The list of calculators behind the button "Sol&ve" of a setup screen.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "calc/calculator_screen.h"

namespace ostrand {

// The scaling that the user finds with a calculator; nothing when he goes without one. For setup
// screens: all that their button has to do.
std::optional<ScalingAnswer> SolveScaling(const ScreenContext& context,
                                          const CalculatorSource& source);

// Shows the calculators that fit the source, and ends with the Done of one.
class frmSolveList final : public Screen {
 public:
  frmSolveList(const ScreenContext& context, const CalculatorSource& source);

  // Those that don't fit are not visible.
  Button MultOff, MVPerVolt, Pot, Rs, Speed, MoreSpeed, Rpm, Flow;

  [[nodiscard]] const std::optional<ScalingAnswer>& Answer() const { return answer_; }

 private:
  using Make = std::function<std::unique_ptr<Calculator>()>;
  void offer(Button& button, std::string_view caption, std::string_view screen, const Make& make);
  void run(Calculator& calculator);

  std::optional<ScalingAnswer> answer_;
};

}  // namespace ostrand
