// The condition on which a table is called.
#pragma once

#include <string>

#include "conditions/condition_font.h"
#include "conditions/condition_set.h"
#include "conditions/condition_variables.h"
#include "controls/screen.h"
#include "model/output_table.h"

namespace ostrand {

class frmWriteIf final : public Screen {
 public:
  explicit frmWriteIf(const ScreenContext& context);
  // Edits the write conditions of a table, which must outlive the screen.
  frmWriteIf(const ScreenContext& context, cOutputTable& table);

  // Shows the write conditions of a table until the screen ends. Done stores them and returns true;
  // Cancel changes nothing. A table without conditions is always called.
  bool SetWriteIf(cOutputTable& table);

  CheckBox DisableWriteIf;  // the table is called as if it had no conditions

 private:
  const ConditionVariables variables_;

 public:
  // Rows "MeasureVar1", "Compare1", "Value1", "Expression1" and so on; the line "GroupWriteIf" and
  // the whole "WriteIfExpression".
  ConditionSet Write;
  Label CallLine;
  Button View;
  ConditionFontControls Font;  // of the grouping line

 protected:
  bool onDone() override;

 private:
  void load(cOutputTable& table);

  cOutputTable* table_ = nullptr;  // whose write conditions are shown
};

}  // namespace ostrand
