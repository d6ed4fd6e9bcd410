// The output selection of a single value that belongs to no block.
#pragma once

#include <string>

#include "controls/choice.h"
#include "controls/screen.h"
#include "tables/output_boxes.h"

namespace ostrand {

enum class SingleValue {
  kPortBytes,  // read or written as a byte; number is the slot, from 0
  kPanelRef,   // reference temperature of the panel
  kTK40MRef,   // reference temperatures of the multiplexers
  kCalcField,  // number is the field, from 1
  kBatteryVolts
};

// Edits a copy, which the project gets at Done.
class frmPortTables final : public Screen {
 public:
  // What is edited, where it is kept.
  struct Kept {
    std::string caption;
    std::string source;  // name in the program, as LevelStem gives it
    std::string& resolution;
    flag& isPublic;
    OutputSet& output;
  };
  static Kept KeptOf(ProjectStore& store, SingleValue value, int number);

  frmPortTables(const ScreenContext& context, SingleValue value, int number = 0);
  // Of an item that has all outputs.
  frmPortTables(const ScreenContext& context, Kept kept);

  Choice DataResolution;
  CheckBox Public;
  OutputBoxes Output;

 protected:
  bool onDone() override;

 private:
  void limit(SingleValue value, int number);

  Kept kept_;
  OutputSet output_;
};

}  // namespace ostrand
