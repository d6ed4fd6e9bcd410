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

// The name of a field in the logger's status table, "Status.SkippedScan(1,1)": one of those
// offered, or any other. What is typed without the table's name gets it in front.
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

  Choice StatusRows;  // the grid, and the row that the fields below it show
  StatusFieldName StatusField;
  Choice StatusCompare;
  NumericField StatusValue;
  Choice StatusFlag;
  Choice StatTrueFalse;
  Label StatusCode;
  Button AddStatus;     // a row of what the fields show
  Button ChangeStatus;  // the picked row to what they show
  Button DeleteStatus;  // the picked row

  // A row was entered that sets a flag, from 1.
  std::function<void(int flagNumber)> OnFlag;
  // There are other rows; their fields are variables that conditions can name.
  std::function<void()> OnRows;

  // Shows what the configuration holds, while the screen is loading.
  void Load();
  void Show(bool visible);

 private:
  using StatusRow = Row<std::string, 1, 4>;

  void bind();
  [[nodiscard]] int count() const;  // of rows, whatever the configuration says
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
