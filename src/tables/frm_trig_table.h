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

// Start conditions of one table, and stop conditions if its trigger is dual.
class frmTrigTable final : public Screen {
 public:
  explicit frmTrigTable(const ScreenContext& context);
  // Edits the triggers of a table, which must outlive the screen.
  frmTrigTable(const ScreenContext& context, cOutputTable& table);

  // Shows the triggers of a table until the screen ends. Done stores them and returns true; Cancel
  // changes nothing.
  bool SetTriggers(cOutputTable& table);

  CheckBox SingleTrigger;   // otherwise dual
  CheckBox DisableTrigger;  // the table stores as if it had no trigger
  NumericField PreTriggerScans;
  NumericField AftTriggerScans;
  Label PreTriggerTime;
  Label AftTriggerTime;
  Label DataEventCode;

 private:
  const ConditionVariables variables_;

 public:
  // Rows "StartMeasVar1", "StartCompare1", "StartTrigValue1", "StartTrigIndvExpress1" and so on;
  // the line "DataEventCodeStart" and the whole "StartExpression". The same names with "Stop".
  ConditionSet Start;
  ConditionSet Stop;
  // The code for the logger, and with alias names.
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
  bool reportMissing(ConditionSet& set, std::string_view what, std::string_view remedy);

  cOutputTable* table_ = nullptr;  // whose triggers are shown
};

}  // namespace ostrand
