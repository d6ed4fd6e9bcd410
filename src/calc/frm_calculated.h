// The screen of the calculated fields.
#pragma once

#include <memory>
#include <string>

#include "calc/formula.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "platform/clock.h"
#include "platform/filesystem.h"

namespace ostrand {

// The surroundings for writing a list to a file. Everything here must outlive the screen.
struct FormulaListPlace {
  platform::FileSystem& files;
  platform::Clock& clock;
  std::string workDir;
  std::string projectName;
};

// The fields as a text: a header with time and project, then name and expression of each.
std::string FormulaListText(const CalcFieldGroup& fields, const platform::Moment& time,
                            const std::string& projectName);

// The fields as rows of the columns "Field Name", "Expression" and "Units", separated by " | ". A
// row is picked by its number from 1, by the name of its field, or by its full text.
class FormulaGrid : public Choice {
 public:
  using Choice::Choice;
  void Show(const CalcFieldGroup& fields);
  bool Pick(std::string_view row) override;
};

// Edits the fields in place, so that new names are checked against all others; Cancel undoes the
// edits.
class frmCalculated final : public Screen {
 public:
  frmCalculated(const ScreenContext& context, const FormulaListPlace& place);

  FormulaGrid Formulas;
  Button Edit;       // the selected row
  Button Delete;     // the selected row
  Button New;        // leaves the row being edited
  Opener Outputs;    // of the selected row
  Label EditingRow;  // "Editing Formula 3"; empty for a new one
  TextField NewName;
  Choice cboFunct1, cboMeas1;
  Choice cboCompare;
  Choice cboFunct2, cboMeas2;
  Choice cboFunct3;           // around both
  NumericField Mult, Offset;  // of the result; blank for none
  UnitField Units;
  CheckBox Public;
  Choice DataResolution;
  CheckBox EditMode;  // the formula itself can be typed
  TextField Formula;
  Button Save;  // "&Add", or "&Replace" while a row is edited
  Button ListFormulas;

  // Deletes the selected field.
  void DeleteCalculation();
  // Writes the list of the formulas to "CalcFile.Log".
  void ListToDisk();

 protected:
  bool onCancel() override;

 private:
  [[nodiscard]] CalcFieldGroup& fields() const { return store().CalcFields; }
  [[nodiscard]] int selected() const { return Formulas.Index() + 1; }  // 0 for none
  void fillLists();
  void bind();
  void enableRowButtons();
  void showRows();
  void listMeasures();
  void startNew();
  void startEditing(int row);
  void clearParts();
  void compose();
  void takeName();
  static std::string_view whyNot(std::string_view name, std::string_view units);
  void setEditMode();
  void save();
  [[nodiscard]] bool nameIsFree(const std::string& name);
  [[nodiscard]] bool mayLoseVariable(int row);
  void writeRow(int row, const std::string& name, const std::string& expression);

  FormulaListPlace place_;
  std::unique_ptr<CalcFieldGroup> before_;
  int editing_ = 0;         // row, from 1; 0 for a new one
  std::string expression_;  // the formula while no measure is picked for it
};

}  // namespace ostrand
