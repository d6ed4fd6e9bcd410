// The output selection of a single value that belongs to no block.
#pragma once

#include <functional>
#include <string>

#include "setup/controls/choice.h"
#include "setup/controls/screen.h"
#include "setup/output_boxes.h"

namespace ostrand {

enum class SingleValue {
  kPortBytes,  // read or written as a byte; number is the slot, from 0
  kPanelRef,   // reference temperature of the panel
  kTK40MRef,   // reference temperatures of the multiplexers
  kCalcField,  // number is the field, from 1
  kBatteryVolts
};

// Edits a copy, which the project gets at Done.
class frmPortTables : public Screen {
 public:
  // Asks for the parameters of a histogram, a rainflow or a level crossing of the value named.
  using AskParameters =
      std::function<bool(OutputCode code, int table, const std::string& source, HistoSet& histo)>;

  frmPortTables(const ScreenContext& context, SingleValue value, int number = 0,
                AskParameters askParameters = {});

  Choice DataResolution;
  CheckBox Public;
  OutputBoxes Output;

 protected:
  bool onDone() override;

 private:
  // Where the store keeps the value's output.
  struct Kept {
    std::string caption;
    std::string source;  // name in the program
    std::string& resolution;
    flag& isPublic;
    OutputSet& output;
  };
  static Kept keptOf(ProjectStore& store, SingleValue value, int number);
  void load(SingleValue value, int number);

  Kept kept_;
  OutputSet output_;
};

}  // namespace ostrand
