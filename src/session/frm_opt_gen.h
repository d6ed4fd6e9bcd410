// The colours of the control and the form of numbers in the summary.
#pragma once

#include <functional>
#include <string>

#include "session/settings.h"
#include "setup/controls/choice.h"
#include "setup/controls/numeric_field.h"
#include "setup/controls/screen.h"

namespace ostrand {

enum class SummaryNumbers { kGeneral, kNumber, kScientific, kCustom };

// The mask of a form of numbers with so many digits behind the point, 0 to 8; empty for the general
// form, which has none. A custom form shows only the digits that it needs.
std::string SummaryNumberMask(SummaryNumbers form, int digits);

// Colours take effect at once; Cancel puts back those that were there.
class frmOptGen final : public Screen {
 public:
  // The settings must outlive the screen. `onChange` is told of each change of a colour.
  frmOptGen(const ScreenContext& context, Settings& settings, std::function<void()> onChange);

  Choice ColorRow;       // what is coloured
  Choice StandardColor;  // the colours to choose from
  Choice SystemColor;    // those of the system, by their numbers
  Label ColorValue;      // of the row, as it is stored

  Choice NumberFormat;  // by SummaryNumbers
  NumericField NumberDigits;
  Label NumberExample;

  // What was chosen, for the summary.
  [[nodiscard]] std::string NumberMask() const;

 protected:
  bool onCancel() override;

 private:
  void takeColor(i32 color);
  void showRow();
  void showNumbers();

  Settings& settings_;
  std::function<void()> onChange_;
  Settings::ColorTable before_;
};

}  // namespace ostrand
