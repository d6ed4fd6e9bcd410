// The user's settings: initial values of new items, enabled warnings, and the order of variables in
// lists.
#pragma once

#include <array>

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "session/settings.h"

namespace ostrand {

// Edits the rows of the table of settings at Done. The caller fills the table before and reads its
// values afterwards.
class frmOptOrvus final : public Screen {
 public:
  // The settings must outlive the screen.
  frmOptOrvus(const ScreenContext& context, Settings& settings);

  // Shows it; true when it ended with Done.
  bool ShowForm() { return showModal(*this); }

  NumericField DefaultScanInterval;
  Choice DefaultScanIntervalUnits;
  NumericField DefaultNumFlags;
  Choice DefaultDataType;
  Choice DefaultIntegrationCode;
  Choice DefaultInputType;
  CheckBox DefaultTableAutoSize;
  NumericField DefaultTableNumRecs;

  Choice VariableChecks;  // by the bits of the two variable checks
  CheckBox WarnMeasTime;
  CheckBox WarnFloatingGround;
  CheckBox WarnTableIntervals;
  CheckBox ShowCompileResult;

  Choice UserVarListTypes;  // kinds of variables, by name, in order
  Button MoveUp;
  Button MoveDown;

 protected:
  bool onDone() override;

 private:
  struct WarningBox {
    CheckBox& box;
    WarningBit bit;
  };
  [[nodiscard]] std::array<WarningBox, 4> warnings();
  [[nodiscard]] SettingRow& row(std::string_view name) const;
  [[nodiscard]] i32 number(std::string_view name) const;
  void store(std::string_view name, double value);
  void load();
  void listKinds(int picked);
  void move(int step);

  Settings& settings_;
  std::vector<i32> kinds_;
};

}  // namespace ostrand
