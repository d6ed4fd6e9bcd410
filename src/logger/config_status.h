// The panel that watches fields of the logger's status table.
#pragma once

#include <functional>
#include <string>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// The name of a field in the logger's status table, "Status.SkippedScan(1,1)": an item of the list
// or any other. Adds the table's name when the user leaves it out.
class StatusFieldName : public ListField {
 public:
  StatusFieldName(Screen& screen, std::string_view name);

 protected:
  bool normalize(std::string& text) override;
};

class StatusMonitorPanel {
 public:
  // Edits the configuration in place.
  StatusMonitorPanel(Screen& screen, Configuration& config);

  Choice StatusRows;  // the grid; the fields below it show the picked row
  StatusFieldName StatusField;
  Choice StatusCompare;
  NumericField StatusValue;
  Choice StatusFlag;
  Choice StatTrueFalse;
  Label StatusCode;
  Button AddStatus;     // adds a row from the fields
  Button ChangeStatus;  // sets the picked row from the fields
  Button DeleteStatus;  // deletes the picked row

  // Called when a row that sets a flag, from 1, was entered.
  std::function<void(int flagNumber)> OnFlag;
  // Called when the rows changed; their fields are variables that conditions can name.
  std::function<void()> OnRows;

  // Shows the configuration while the screen is loading.
  void Load();
  void Show(bool visible);

 private:
  using StatusRow = Row<std::string, 1, 4>;

  void bind();
  [[nodiscard]] int count() const;  // of rows, clamped to the maximum
  [[nodiscard]] StatusRow entered() const;
  void showRow();
  void showCode();
  void listRows(int picked);
  void keepRow(int row);
  void deleteRow();

  Screen& screen_;
  Configuration& config_;
};

}  // namespace ostrand
