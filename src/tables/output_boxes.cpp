#include "tables/output_boxes.h"

#include <string>

#include "controls/faces.h"
#include "model/record_layout.h"
#include "tables/output_parameters.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::array<std::string_view, kOutputCodes> kToolTips = {
    "The last value scanned will be stored",
    "The largest value scanned will be stored",
    "The smallest value scanned will be stored",
    "The mean of all values scanned will be stored",
    "The standard deviation of all values scanned will be stored",
    "Displays a window to set up parameters. A histogram is made",
    "Displays a window to set up parameters. A rainflow histogram is made",
    "Displays a window to set up parameters. A level crossing histogram is made",
};

constexpr std::string_view kGroup = "Outputs";
constexpr Face kFaces[] = {
    {"Table", kGroup, "Output table", ControlKind::kOptions},
    {"TableName", kGroup, "Table name"},
    {"Smp", kGroup, "Smp"},
    {"Max", kGroup, "Max"},
    {"Min", kGroup, "Min"},
    {"Avg", kGroup, "Avg"},
    {"Std", kGroup, "Std"},
    {"Hst", kGroup, "Histogram"},
    {"RFH", kGroup, "Rainflow"},
    {"LCr", kGroup, "Level crossing"},
    {"HstSetup", kGroup, "Histogram..."},
    {"RFHSetup", kGroup, "Rainflow..."},
    {"LCrSetup", kGroup, "Level crossing..."},
};

bool hasParameters(int code) { return code >= kHistogram; }

}  // namespace

OutputBoxes::OutputBoxes(Screen& screen, const ProjectStore& store)
    : Table(screen, "Table"),
      TableName(screen, "TableName"),
      Boxes{{{screen, "Smp"},
             {screen, "Max"},
             {screen, "Min"},
             {screen, "Avg"},
             {screen, "Std"},
             {screen, "Hst"},
             {screen, "RFH"},
             {screen, "LCr"}}},
      Setups{{{screen, "HstSetup", ParameterScreenOf(kHistogram)},
              {screen, "RFHSetup", ParameterScreenOf(kRainFlow)},
              {screen, "LCrSetup", ParameterScreenOf(kLevelCrossing)}}},
      store_(store) {
  for (int t = 1; t <= kTables; ++t) {
    Table.Add("Table " + NumberText(t));
  }
  Describe(screen, kFaces);
  bind();
}

void OutputBoxes::bind() {
  Table.OnPick = [this] { Refresh(); };
  for (int code = 0; code < kOutputCodes; ++code) {
    CheckBox& box = Boxes[static_cast<std::size_t>(code)];
    box.OnClick = [this, code] { onClick(code); };
    if (!hasParameters(code)) continue;
    Opener& button = Setups[static_cast<std::size_t>(code - kHistogram)];
    button.OnPress = [this, code] {
      if (setUp(static_cast<OutputCode>(code))) changed();
    };
  }
}

void OutputBoxes::AskBy(const ScreenContext& context, const Choice& resolution, std::string stem) {
  AskParameters = [context, &resolution, stem = std::move(stem)](OutputCode code, int table,
                                                                 HistoSet& histo) {
    const std::string type = resolution.Text();
    return AskOutputParameters(context, code, {histo, table, type, stem});
  };
}

void OutputBoxes::Show(OutputSet& output) {
  output_ = &output;
  Table.PickAt(FirstTableUsed(store_, &output) - 1);
}

void OutputBoxes::Refresh() {
  if (output_ == nullptr) return;
  const int table = TableShown();
  const OutputTable& settings = store_.Tables[table];
  const bool tableOn = settings.TableOn != kFalse;
  TableName.Text(settings.TableName);
  showing_ = true;
  for (int code = 0; code < kOutputCodes; ++code) {
    CheckBox& box = Boxes[static_cast<std::size_t>(code)];
    box.Check(isSelected(code));
    // A checked box can always be unchecked, even if it could not be checked again.
    const bool canTakeAway = tableOn && hasParameters(code) && box.Checked();
    const std::string whyNotBox = whyNoBox(code);
    box.Enable(whyNotBox.empty() || canTakeAway, whyNotBox);
    box.ToolTip = kToolTips[static_cast<std::size_t>(code)];
    if (!hasParameters(code)) continue;
    box.ToolTip += " each time table " + NumberText(table) + " outputs a record.";
    const std::string whyNot = whyNoSetup(code);
    Setups[static_cast<std::size_t>(code - kHistogram)].Enable(whyNot.empty(), whyNot);
  }
  showing_ = false;
}

void OutputBoxes::Offer(OutputCode code, std::string_view whyNot) {
  whyNot_[static_cast<std::size_t>(code)] = whyNot;
  Refresh();
}

bool OutputBoxes::SampleInstead(std::initializer_list<OutputCode> codes) {
  if (output_ == nullptr) return false;
  bool any = false;
  for (int t = 1; t <= kTables; ++t) {
    auto& selected = output_->OutputSelect[t];
    for (const OutputCode code : codes) {
      if (selected[code] == 0) continue;
      selected[code] = 0;
      selected[kSample] = 1;
      any = true;
    }
  }
  if (any) changed();
  return any;
}

// Why an output cannot be chosen; empty when it can.
std::string OutputBoxes::whyNoBox(int code) const {
  if (store_.Tables[TableShown()].TableOn == kFalse) {
    return "Table " + NumberText(TableShown()) + " is off.";
  }
  const std::string_view whyNot = whyNot_[static_cast<std::size_t>(code)];
  if (!whyNot.empty() || !hasParameters(code) || AskParameters) return std::string(whyNot);
  return "No screen asks for its parameters.";
}

// Why the parameters of an output cannot be shown; empty when they can.
std::string OutputBoxes::whyNoSetup(int code) const {
  const CheckBox& box = Boxes[static_cast<std::size_t>(code)];
  std::string whyNot = whyNoBox(code);
  if (whyNot.empty() && !box.Checked()) whyNot = box.Caption + " is not selected.";
  return whyNot;
}

bool OutputBoxes::isSelected(int code) const { return IsSelected(*output_, TableShown(), code); }

// A chosen instruction is stored as 1.
void OutputBoxes::select(int code, bool on) {
  output_->OutputSelect[TableShown()][code] = on ? 1 : 0;
}

void OutputBoxes::changed() {
  Refresh();
  if (OnChange) OnChange();
}

// Cancelling the parameters unchecks the box again; unchecking a box keeps its parameters for the
// next time.
void OutputBoxes::onClick(int code) {
  if (showing_ || output_ == nullptr) return;
  const bool on = Boxes[static_cast<std::size_t>(code)].Checked();
  if (on && hasParameters(code) && !setUp(static_cast<OutputCode>(code))) return Refresh();
  select(code, on);
  changed();
}

bool OutputBoxes::setUp(OutputCode code) {
  if (!AskParameters || output_ == nullptr) return false;
  HistoSet& histo = output_->Histo[TableShown()];
  HistoSet edited = histo;
  if (!AskParameters(code, TableShown(), edited)) return false;
  histo = edited;
  return true;
}

}  // namespace ostrand
