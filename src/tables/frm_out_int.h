// The six output tables.
#pragma once

#include <string>
#include <string_view>

#include "conditions/flag_usage.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "tables/table_objects.h"

namespace ostrand {

// Edits copies of the tables, one at a time; Done stores them.
class frmOutInt final : public Screen {
 public:
  explicit frmOutInt(const ScreenContext& context);

  Choice Table;  // the one shown: "Table 1" to "Table 6"
  CheckBox TableOn;
  TextField TableName;
  NumericField OutInt;
  Choice OutIntUnits;
  Label PerSec;
  CheckBox SyncTable;
  NumericField Buffer;
  CheckBox AutoSize;
  CheckBox FillStop;
  CheckBox CalcTime;  // checked for compressed time, which the project stores as 0
  Choice TableLocation;
  Choice PamCard;
  Choice FlagTable;
  Choice FlagMark;
  Choice FlagFull;
  Choice HDU7;
  Opener Trigger;
  Opener WriteIf;
  Opener TableTimes;
  Button AllTables;

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  void setTexts();
  void bind();
  void bindFlag(Choice& list, i16 cOutputTable::*number, const TableFlag& use);
  void load();
  void showTable();
  void refresh();

  void onName();
  bool warnDuplicate(std::string_view name);
  void warnSimilar(std::string_view name);
  void onUnits();
  void openTimes();

  [[nodiscard]] bool isEdited() const;
  [[nodiscard]] TableSetup edited() const;
  bool agreedToFlags();
  bool keep();
  void reportFlagsInUse();

  [[nodiscard]] int current() const { return Table.Index() + 1; }
  cOutputTable& table() { return tables_[current()]; }

  TableObjects tables_;
  i16 hdu7_ = 0;
  TableSetup before_;  // what Done would have stored on opening
};

}  // namespace ostrand
