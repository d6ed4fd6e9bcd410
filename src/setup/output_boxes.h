// The boxes of a setup screen that choose what the data tables store of its block.
#pragma once

#include <array>
#include <functional>
#include <memory>

#include "setup/controls/choice.h"
#include "setup/controls/screen.h"

namespace ostrand {

// Asks for the parameters of a histogram, rainflow or level crossing (OutputCode) in a table, from
// 1; false when the user cancelled.
using AskOutputParameters = std::function<bool(OutputSet& output, int table, int code)>;

// One tab for each table, with a box for each output. The boxes of a table that is off are
// disabled.
class OutputBoxes {
 public:
  // `output` is edited in place and outlives this object. Outputs with parameters can't be chosen
  // where nobody asks for them.
  OutputBoxes(Screen& screen, const ProjectStore& store, OutputSet& output,
              AskOutputParameters askParameters);

  Choice Table;

  // Averages and standard deviations, which mean nothing for some results. To forbid them disables
  // their boxes in all tables.
  void AllowAverages(bool allow);
  // Stores samples in place of averages and deviations, in all tables; false when there were none.
  bool ReplaceAveragesBySamples();

 private:
  [[nodiscard]] int table() const { return Table.Index() + 1; }
  void show();
  void onBox(int code);

  const ProjectStore& store_;
  OutputSet& output_;
  AskOutputParameters askParameters_;
  std::array<std::unique_ptr<CheckBox>, kOutputCodes> boxes_;
  bool averages_ = true;
  bool showing_ = false;
};

}  // namespace ostrand
