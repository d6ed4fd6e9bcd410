// The list of calculators that the button "Sol&ve" of a setup screen opens.
#pragma once

#include <initializer_list>

#include "calc/calculator_screen.h"
#include "conditions/screen_requests.h"

namespace ostrand {

// Shows the calculators that suit the source, and ends with the Done of one.
class frmSolveList final : public Screen {
 public:
  // The answer goes into the request, which must outlive the screen.
  frmSolveList(const ScreenContext& context, SolveRequest& request);

  // Unsuitable calculators are hidden.
  Opener MultOff, MVPerVolt, Pot, Rs, Speed, MoreSpeed, Rpm, Flow;

 private:
  void offer(std::initializer_list<Opener*> calculators, bool fit);
  void run(const Opener& opener);

  SolveRequest& request_;
  CalculatorRequest calculator_;
};

}  // namespace ostrand
