#include "setup/output_boxes.h"

#include <string>
#include <string_view>

#include "text/number.h"

namespace ostrand {
namespace {

struct OutputBox {
  std::string_view name;
  std::string_view toolTip;
  bool parameters;  // asked for when it is checked; the tool tip names the table
};
constexpr std::array<OutputBox, kOutputCodes> kBoxes = {{
    {"Smp", "The last value scanned will be stored", false},
    {"Max", "The largest value scanned will be stored", false},
    {"Min", "The smallest value scanned will be stored", false},
    {"Avg", "The mean of all values scanned will be stored", false},
    {"Std", "The standard deviation of all values scanned will be stored", false},
    {"Histogram", "Displays a window to set up parameters. A histogram is made", true},
    {"RainFlow", "Displays a window to set up parameters. A rainflow histogram is made", true},
    {"LevelCrossing", "Displays a window to set up parameters. A level crossing histogram is made",
     true},
}};

const OutputBox& boxOf(int code) { return kBoxes[static_cast<std::size_t>(code)]; }

bool isAverage(int code) { return code == kAverage || code == kStdDev; }

}  // namespace

OutputBoxes::OutputBoxes(Screen& screen, const ProjectStore& store, OutputSet& output,
                         AskOutputParameters askParameters)
    : Table(screen, "Table"),
      store_(store),
      output_(output),
      askParameters_(std::move(askParameters)) {
  Table.SetItems({"1", "2", "3", "4", "5", "6"});
  for (int code = 0; code < kOutputCodes; ++code) {
    auto& box = boxes_[static_cast<std::size_t>(code)];
    box = std::make_unique<CheckBox>(screen, boxOf(code).name);
    box->Caption = boxOf(code).name;
    box->OnClick = [this, code] { onBox(code); };
  }
  Table.OnPick = [this] { show(); };
  Table.Index(0);
}

void OutputBoxes::AllowAverages(bool allow) {
  averages_ = allow;
  show();
}

bool OutputBoxes::ReplaceAveragesBySamples() {
  bool replaced = false;
  for (auto& selection : output_.OutputSelect) {
    for (const int code : {kAverage, kStdDev}) {
      if (selection[code] == 0) continue;
      selection[code] = 0;
      selection[kSample] = 1;
      replaced = true;
    }
  }
  show();
  return replaced;
}

void OutputBoxes::show() {
  showing_ = true;
  const bool tableOn = store_.Tables[table()].TableOn != kFalse;
  for (int code = 0; code < kOutputCodes; ++code) {
    CheckBox& box = *boxes_[static_cast<std::size_t>(code)];
    box.Checked(output_.OutputSelect[table()][code] != 0);
    box.ToolTip = boxOf(code).toolTip;
    if (boxOf(code).parameters) {
      box.ToolTip += " each time table " + NumberText(table()) + " outputs a record.";
    }
    const bool askable = !boxOf(code).parameters || askParameters_ || box.Checked();
    box.Enabled = tableOn && askable && (averages_ || !isAverage(code));
  }
  showing_ = false;
}

void OutputBoxes::onBox(int code) {
  if (showing_) return;
  const bool on = boxes_[static_cast<std::size_t>(code)]->Checked();
  const bool asked = on && boxOf(code).parameters;
  const bool kept = !asked || (askParameters_ && askParameters_(output_, table(), code));
  output_.OutputSelect[table()][code] = on && kept ? 1 : 0;
  show();
}

}  // namespace ostrand
