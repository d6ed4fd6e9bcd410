// The font of the lines that group conditions, which each user chooses.
#pragma once

#include <initializer_list>
#include <vector>

#include "conditions/condition_set.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/options.h"

namespace ostrand {

// Controls "FontName", "FontStyle" and "FontSize". A choice takes effect at once and Cancel does
// not undo it: the font is not part of the project.
class ConditionFontControls {
 public:
  // Sets the font of `lines` now and after each choice. A null font disables the controls. Font and
  // lines must outlive the controls.
  ConditionFontControls(Screen& screen, TextFont* font,
                        std::initializer_list<GroupingField*> lines);

  TextField FontName;
  Choice FontStyle;
  NumericField FontSize;  // points, kMinFontSize to kMaxFontSize

 private:
  void take();
  void show();

  TextFont* font_;
  std::vector<GroupingField*> lines_;
};

}  // namespace ostrand
