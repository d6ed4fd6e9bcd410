#include "calc/frm_calculated.h"

#include <utility>

#include "calc/variable_uses.h"
#include "conditions/screen_requests.h"
#include "controls/faces.h"
#include "model/defaults.h"
#include "model/name_limits.h"
#include "model/names.h"
#include "model/record_layout.h"
#include "model/variables.h"
#include "platform/box.h"
#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "platform/paths.h"
#include "text/number.h"
#include "text/strings.h"
#include "verify/names_check.h"

namespace ostrand {
namespace {

constexpr std::string_view kListFile = "CalcFile.Log";
constexpr std::string_view kCells = " | ";

constexpr std::string_view kParts = "Formula from parts";
constexpr std::string_view kText = "Formula as text";
constexpr std::string_view kNeedsRow = "Select a row first.";
constexpr std::string_view kNeedsParts = "The formula is edited as a text.";
constexpr std::string_view kNeedsEditMode = "Needs the check that allows editing.";
constexpr Face kCalculatedFaces[] = {
    {"Formulas", "Formulas", "Field Name | Expression | Units", ControlKind::kTable},
    {"Edit", "Formulas", "&Edit", {}, kNeedsRow},
    {"Delete", "Formulas", "&Delete", {}, kNeedsRow},
    {"New", "Formulas", "&New"},
    {"Outputs", "Formulas", "&Outputs"},
    {"EditingRow", kParts, "Formula being edited"},
    {"NewName", kParts, "Field name", {}, kNeedsParts},
    {"cboFunct1", kParts, "Function of measurement 1", {}, kNeedsParts},
    {"cboMeas1", kParts, "Measurement 1", {}, kNeedsParts},
    {"cboCompare", kParts, "Operator", {}, kNeedsParts},
    {"cboFunct2", kParts, "Function of measurement 2", {}, kNeedsParts},
    {"cboMeas2", kParts, "Measurement 2", {}, kNeedsParts},
    {"cboFunct3", kParts, "Outer function", {}, kNeedsParts},
    {"Mult", kParts, "Multiplier", {}, kNeedsParts},
    {"Offset", kParts, "Offset", {}, kNeedsParts},
    {"Units", "Storage", "Units"},
    {"Public", "Storage", "Public"},
    {"DataResolution", "Storage", "Resolution", ControlKind::kOptions},
    {"EditMode", kText, "Check to allow editing of the formula."},
    {"Formula", kText, "Formula", {}, kNeedsEditMode},
    {"Save", kText},
    {"ListFormulas", "List in a file", "&List"},
};

bool variableNameInTheMaking(std::string_view text) { return text.empty() || IsVariableName(text); }

// The picked item, empty for "none".
std::string picked(const Choice& choice) {
  std::string text = choice.Text();
  return text == kNoChoice ? std::string() : text;
}

void fillFunctions(Choice& choice) {
  for (const std::string_view function : kFormulaFunctions) {
    choice.Add(function);
  }
}

// Whether a formula of a variable is accepted. An element is refused when its array does not have
// the name of a known function.
bool isOffered(const std::string& variable) { return FormulaMistakes("x = " + variable).empty(); }

// The two sides of the first equal sign.
std::string nameIn(std::string_view formula) { return std::string(Trim(Before(formula, "="))); }
std::string expressionIn(std::string_view formula) {
  return std::string(Trim(After(formula, "=")));
}

std::string formulaOf(const CalcFieldData& field) {
  return field.CalcField[1] + " = " + field.CalcField[2];
}

}  // namespace

std::string FormulaListText(const CalcFieldGroup& fields, const platform::Moment& time,
                            const std::string& projectName) {
  std::string text =
      JoinLines({"CALCULATED FIELDS FORMULA LIST", "Time Printed: " + ShortMomentText(time),
                 "Program Name: " + projectName, ""});
  for (int f = 1; f <= fields.CalcFieldCount; ++f) text += formulaOf(fields.Field[f]) + "\r\n";
  return text;
}

void FormulaGrid::Show(const CalcFieldGroup& fields) {
  Items.clear();
  Index(-1);
  for (int f = 1; f <= fields.CalcFieldCount; ++f) {
    const auto& field = fields.Field[f].CalcField;
    std::string row = field[1];
    row.append(kCells).append(field[2]).append(kCells).append(field[3]);
    Add(row);
  }
}

bool FormulaGrid::Pick(std::string_view row) {
  if (const auto number = ToInt32(row)) {
    if (*number < 1 || *number > static_cast<i32>(Items.size())) return false;
    PickAt(*number - 1);
    return true;
  }
  for (std::size_t at = 0; at < Items.size(); ++at) {
    if (!SameText(Trim(Before(Items[at].Text, kCells)), Trim(row))) continue;
    PickAt(static_cast<int>(at));
    return true;
  }
  return Choice::Pick(row);
}

frmCalculated::frmCalculated(const ScreenContext& context, const FormulaListPlace& place)
    : Screen(context, "frmCalculated"),
      Formulas(*this, "Formulas"),
      Edit(*this, "Edit"),
      Delete(*this, "Delete"),
      New(*this, "New"),
      Outputs(*this, "Outputs", "frmPortTables"),
      EditingRow(*this, "EditingRow"),
      NewName(*this, "NewName", variableNameInTheMaking),
      cboFunct1(*this, "cboFunct1"),
      cboMeas1(*this, "cboMeas1"),
      cboCompare(*this, "cboCompare"),
      cboFunct2(*this, "cboFunct2"),
      cboMeas2(*this, "cboMeas2"),
      cboFunct3(*this, "cboFunct3"),
      Mult(*this, "Mult", NumberType::kSingle),
      Offset(*this, "Offset", NumberType::kSingle),
      Units(*this, "Units"),
      Public(*this, "Public"),
      DataResolution(*this, "DataResolution"),
      EditMode(*this, "EditMode"),
      Formula(*this, "Formula"),
      Save(*this, "Save"),
      ListFormulas(*this, "ListFormulas"),
      place_(place),
      before_(std::make_unique<CalcFieldGroup>(context.store.CalcFields)) {
  Caption = "CALCULATED FIELDS";
  fillLists();
  bind();
  showRows();
  startNew();
  Describe(*this, kCalculatedFaces);
}

void frmCalculated::fillLists() {
  Formula.Enabled = false;
  for (Choice* choice : {&cboFunct1, &cboFunct2, &cboFunct3}) fillFunctions(*choice);
  for (const std::string_view sign : kFormulaOperators) {
    cboCompare.Add(sign);
  }
  DataResolution.SetItems({"FP2", "IEEE4"});
  Mult.MayBeBlank = Offset.MayBeBlank = true;
}

void frmCalculated::bind() {
  for (Choice* choice : {&cboFunct1, &cboMeas1, &cboCompare, &cboFunct2, &cboMeas2, &cboFunct3}) {
    choice->OnPick = [this] { compose(); };
  }
  for (NumericField* field : {&Mult, &Offset}) {
    field->OnChange = [this] { compose(); };
    field->OnTake = [this] { compose(); };
  }
  NewName.WhyNot = [this](std::string_view name) { return whyNot(name, Trim(Units.Text())); };
  Units.WhyNot = [this](std::string_view units) { return whyNot(NewName.Text(), Trim(units)); };
  NewName.OnChange = [this] { takeName(); };
  EditMode.OnClick = [this] { setEditMode(); };
  Formulas.OnPick = [this] { enableRowButtons(); };
  Edit.OnPress = [this] { startEditing(selected()); };
  Delete.OnPress = [this] { DeleteCalculation(); };
  New.OnPress = [this] { startNew(); };
  Outputs.OnPress = [this] {
    ValueOutputsRequest request{SingleValue::kCalcField, selected()};
    OpenScreen(context(), Outputs.Opens(), request);
  };
  Save.OnPress = [this] { save(); };
  ListFormulas.OnPress = [this] { ListToDisk(); };
}

void frmCalculated::showRows() {
  Formulas.Show(fields());
  enableRowButtons();
  listMeasures();
}

void frmCalculated::enableRowButtons() {
  const bool any = selected() > 0;
  Edit.Enabled = any;
  Delete.Enabled = any;
  Outputs.Enable(any, kNeedsRow);
}

void frmCalculated::listMeasures() {
  const VarPickList list(store(), context().UserVarListTypes);
  for (Choice* choice : {&cboMeas1, &cboMeas2}) {
    choice->SetItems({kNoChoice});
    for (const PickVariable& variable : list.Variables()) {
      const std::string name(Trim(variable.name));
      if (isOffered(name)) choice->Add(name);
    }
  }
}

void frmCalculated::clearParts() {
  const Loading loading(*this);
  for (Choice* choice : {&cboFunct1, &cboMeas1, &cboCompare, &cboFunct2, &cboMeas2, &cboFunct3}) {
    choice->PickAt(0);
  }
  Mult.Text("");
  Offset.Text("");
}

void frmCalculated::startNew() {
  editing_ = 0;
  expression_.clear();
  Save.Caption = "&Add";
  EditingRow.Text("");
  clearParts();
  NewName.Text("CalcVar" + NumberText(fields().CalcFieldCount + 1));
  Units.Text("");
  Public.Checked(false);
  DataResolution.Pick("FP2");
  compose();
  if (EditMode.Checked()) Formula.Text(NewName.Text() + " = ");
}

void frmCalculated::startEditing(int row) {
  if (row < 1) return Refuse("Pick a formula in the list.");
  const CalcFieldData& field = fields().Field[row];
  editing_ = row;
  expression_ = field.CalcField[2];
  Save.Caption = "&Replace";
  EditingRow.Text("Editing Formula " + NumberText(row));
  clearParts();
  NewName.Text(Trim(field.CalcField[1]));
  Formula.Text(formulaOf(field));
  Units.Text(field.CalcField[3]);
  Public.Checked(field.Public != 0);
  DataResolution.Index(-1);
  DataResolution.Pick(field.DataResolution);
}

void frmCalculated::compose() {
  if (IsLoading() || EditMode.Checked()) return;
  FormulaParts parts;
  parts.name = NewName.Text();
  parts.measure1 = picked(cboMeas1);
  parts.function1 = picked(cboFunct1);
  parts.compare = cboCompare.Text();
  parts.measure2 = picked(cboMeas2);
  parts.function2 = picked(cboFunct2);
  parts.function3 = picked(cboFunct3);
  parts.multiplier = Trim(Mult.Text());
  parts.offset = Trim(Offset.Text());
  const bool stays = parts.measure1.empty() && !expression_.empty();
  Formula.Text(stays ? parts.name + " = " + expression_ : ComposeFormula(parts));
}

// A new name leaves the expression unchanged; the lists may not be able to compose it.
void frmCalculated::takeName() {
  const std::string formula = Formula.Text();
  Formula.Text(NewName.Text() + " =" + std::string(After(formula, "=")));
}

// Why a field with this name and these units does not fit into the program.
std::string_view frmCalculated::whyNot(std::string_view name, std::string_view units) {
  return CalcFieldFits(name, units) ? "" : kTooLongHelp;
}

void frmCalculated::setEditMode() {
  const bool on = EditMode.Checked();
  if (on) {
    ShowWarning(Forms(), "EDIT CAUTION",
                JoinLines({"IT IS POSSIBLE IN THIS MODE TO CREATE A FORMULA",
                           "THAT WILL NOT RUN PROPERLY OR WILL CAUSE A",
                           "COMPILE TIME ERROR IN THE LOGGER.",
                           "The following is tested when \"Add\" is pressed:",
                           "1.  Equal count of left and right parenthesis.",
                           "2.  One and only one equal sign (=).", "3.  Proper function names.",
                           "4.  Validity of variable name on left of equal sign (=).",
                           "YOU ARE ON YOUR OWN - USE CAUTION!"}));
  } else {
    NewName.Text(nameIn(Formula.Text()));
    expression_ = expressionIn(Formula.Text());
    clearParts();
  }
  Formula.Enabled = on;
  for (Control* part :
       std::initializer_list<Control*>{&NewName, &cboFunct1, &cboMeas1, &cboCompare, &cboFunct2,
                                       &cboMeas2, &cboFunct3, &Mult, &Offset}) {
    part->Enabled = !on;
  }
}

void frmCalculated::save() {
  const std::string formula = Formula.Text();
  bool ok = false;
  TestFormula(Forms(), formula, ok);
  if (!ok) return;
  const std::string name = nameIn(formula);
  const std::string expression = expressionIn(formula);
  // Typed formulas are free, but a picked one must have a measure to multiply.
  const bool nothingPicked = !EditMode.Checked() && expression.starts_with('*');
  if (!IsVariableName(name)) {
    return Refuse("A name takes letters, digits and \"_\", a letter first.");
  }
  if (expression.empty() || nothingPicked) return Refuse("The formula has no measurement.");
  // The name of an edited formula is not checked key by key.
  if (const std::string_view why = whyNot(name, Trim(Units.Text())); !why.empty()) {
    return Refuse(std::string(why));
  }
  if (!nameIsFree(name)) return;
  if (editing_ != 0 && !SameText(name, Trim(fields().Field[editing_].CalcField[1])) &&
      !mayLoseVariable(editing_)) {
    return;
  }
  if (editing_ == 0 && fields().CalcFieldCount >= kCalcFields) {
    return Refuse("A project has at most " + NumberText(kCalcFields) + " formulas.");
  }
  writeRow(editing_ == 0 ? ++fields().CalcFieldCount : editing_, name, expression);
  showRows();
  startNew();
}

// Reports a name that is used elsewhere. Names that collide without the new one do not count.
bool frmCalculated::nameIsFree(const std::string& name) {
  std::string none;
  std::string& own = editing_ == 0 ? none : fields().Field[editing_].CalcField[1];
  const std::string before = std::exchange(own, {});
  const auto collisions = [&](const std::string& newName) {
    return DuplicateNames(store(), newName).size() + KeywordNames(store(), newName).size();
  };
  bool bad = false;
  if (collisions(name) != collisions({})) {
    const CalcVarRefs noRefs;
    ORVUS_COMMON::CheckNames({store(), Forms(), context().WarningMessageMask, noRefs}, bad, name);
  }
  own = before;
  return !bad;
}

void frmCalculated::writeRow(int row, const std::string& name, const std::string& expression) {
  CalcFieldData& field = fields().Field[row];
  field.CalcField[1] = name;
  field.CalcField[2] = expression;
  field.CalcField[3] = Trim(Units.Text());
  if ((field.Public != 0) != Public.Checked()) field.Public = Public.Checked() ? kTrue : kFalse;
  if (DataResolution.Index() >= 0) field.DataResolution = DataResolution.Text();
}

// Whether the variable of a row may be deleted: it is unused, or the user agrees.
bool frmCalculated::mayLoseVariable(int row) {
  return !IsVariableUsed(store(), row) ||
         Ask(Forms(), "DELETE VARIABLE WARNING",
             "Other Place Uses This Variable, Do You Want to Delete?",
             platform::Buttons::kYesNo) == platform::Answer::kYes;
}

void frmCalculated::DeleteCalculation() {
  const int row = selected();
  if (row < 1) return Refuse("Pick a formula in the list.");
  if (!mayLoseVariable(row)) return;
  CalcFieldGroup& group = fields();
  for (int f = row; f < group.CalcFieldCount; ++f) {
    group.Field[f] = group.Field[f + 1];
    RenameLevelArrays(group.Field[f].Output, CalcFieldStem(f + 1), CalcFieldStem(f));
  }
  ORVUS_COMMON::SetCalcFieldDefaults(store(), group.CalcFieldCount - 1);
  showRows();
  startNew();
}

void frmCalculated::ListToDisk() {
  guarded("ListToDisk", [&] {
    const std::string path = platform::WithSeparator(place_.workDir).append(kListFile);
    const auto written = platform::WriteWhole(
        place_.files, path, FormulaListText(fields(), place_.clock.Now(), place_.projectName));
    if (!written) throw FileAccess(written.ErrorText());
    platform::MessageBox box;
    box.title = "CALCULATED FIELDS";
    box.text = "File list has been saved as " + path;
    box.icon = platform::Icon::kInformation;
    Forms().ShowBox(box);
  });
}

bool frmCalculated::onCancel() {
  fields() = *before_;
  return true;
}

}  // namespace ostrand
