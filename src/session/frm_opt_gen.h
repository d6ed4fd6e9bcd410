// The colours of the control and the number format of the summary.
#pragma once

#include <functional>
#include <string>

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "session/settings.h"

namespace ostrand {

// Colours and format take effect at once; Cancel restores them.
class frmOptGen final : public Screen {
 public:
  // The settings must outlive the screen. `onChange` is called after each change.
  frmOptGen(const ScreenContext& context, Settings& settings, std::function<void()> onChange);

  Choice ColorRow;       // the element to colour
  Choice StandardColor;  // the colours to choose from
  Choice SystemColor;    // system colours, by number
  Label ColorValue;      // of the row, in its stored form

  // For multipliers and offsets in the summary.
  Choice NumberForm;  // in the order of ostrand::NumberForm
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
