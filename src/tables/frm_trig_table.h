// When a table stores by trigger.
#pragma once

#include <string_view>

#include "conditions/condition_font.h"
#include "conditions/condition_set.h"
#include "conditions/condition_variables.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/output_table.h"

namespace ostrand {

// Start conditions and, of a dual trigger, stop conditions of one table.
class frmTrigTable final : public Screen {
 public:
  explicit frmTrigTable(const ScreenContext& context);
  // With the triggers of a table, which outlives the screen.
  frmTrigTable(const ScreenContext& context, cOutputTable& table);

  // Shows the triggers of a table until the screen ends. Done writes them back and gives true;
  // Cancel changes nothing.
  bool SetTriggers(cOutputTable& table);

  CheckBox SingleTrigger;   // else dual
  CheckBox DisableTrigger;  // the table stores as if it had none
  NumericField PreTriggerScans;
  NumericField AftTriggerScans;
  Label PreTriggerTime;
  Label AftTriggerTime;
  Label DataEventCode;

 private:
  const ConditionVariables variables_;

 public:
  // Rows "StartMeasVar1", "StartCompare1", "StartTrigValue1", "StartTrigIndvExpress1" and so on;
  // the line "DataEventCodeStart" and the whole "StartExpression". Stop likewise.
  ConditionSet Start;
  ConditionSet Stop;
  // The code as the logger gets it, and with alias names.
  Button ViewStart;
  Button ViewStop;
  Button ListStart;
  Button ListStop;
  Button ListBoth;
  ConditionFontControls Font;  // of both grouping lines

 protected:
  bool onDone() override;

 private:
  void bind();
  void load(cOutputTable& table);
  void showTimes();
  void showEvent();
  [[nodiscard]] bool isSingle() const { return SingleTrigger.Checked(); }
  [[nodiscard]] std::string eventText() const;
  void keep(const ConditionSet& set, int state);
  bool reportMissing(std::string_view what, std::string_view remedy);

  cOutputTable* table_ = nullptr;  // whose triggers are shown
};

}  // namespace ostrand
