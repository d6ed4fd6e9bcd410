// The output selection of a single value outside blocks.
#pragma once

#include "conditions/screen_requests.h"
#include "controls/choice.h"
#include "controls/screen.h"
#include "tables/output_boxes.h"

namespace ostrand {

// Edits a copy; Done stores it in the project.
class frmPortTables final : public Screen {
 public:
  frmPortTables(const ScreenContext& context, const ValueOutputsRequest& request);
  frmPortTables(const ScreenContext& context, ItemOutputsRequest request);

  // A value of the project as an item. `number` as in ValueOutputsRequest.
  static ItemOutputsRequest KeptOf(ProjectStore& store, SingleValue value, int number);

  Choice DataResolution;
  CheckBox Public;
  OutputBoxes Output;

 protected:
  bool onDone() override;

 private:
  void limit(SingleValue value, int number);

  ItemOutputsRequest kept_;
  OutputSet output_;
};

}  // namespace ostrand
