// The colours of the control and the form of numbers in the summary.
#pragma once

#include <functional>
#include <string>

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "session/settings.h"

namespace ostrand {

// Colours and form take effect at once; Cancel puts back those that were there.
class frmOptGen final : public Screen {
 public:
  // The settings must outlive the screen. `onChange` is called after each change.
  frmOptGen(const ScreenContext& context, Settings& settings, std::function<void()> onChange);

  Choice ColorRow;       // what is coloured
  Choice StandardColor;  // the colours to choose from
  Choice SystemColor;    // those of the system, by their numbers
  Label ColorValue;      // of the row, as it is stored

  // Of the multipliers and offsets in the summary.
  Choice NumberForm;  // by ostrand::NumberForm
  NumericField NumberDigits;
  Label NumberExample;

 protected:
  bool onCancel() override;

 private:
  void takeColor(i32 color);
  void showRow();
  void takeNumbers();
  void showNumbers();

  Settings& settings_;
  std::function<void()> onChange_;
  ColorTable colorsBefore_;
  NumberFormat numbersBefore_;
};

}  // namespace ostrand
