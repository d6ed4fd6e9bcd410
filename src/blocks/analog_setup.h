// The setup of one block on analog inputs: common part of the screens of thermocouple, voltage and
// multiplexer blocks. Controls shared by only two of them are in PanelControls, VoltControls and
// ThermocoupleControls.
#pragma once

#include <string_view>

#include "blocks/analog_list.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "tables/output_boxes.h"

namespace ostrand {

// Every edit goes into the block's object at once; the list undoes it when the user cancels.
class AnalogSetup : public Screen {
 public:
  NumericField Reps;
  CheckBox OpenSensDetect;
  CheckBox ReverseMes;  // of a single-ended block: measures the offset
  Choice IntegrationRange;
  NumericField Integration;
  NumericField SettleTime;
  Choice DataResolution;
  CheckBox Public;
  Label Each;   // time of a measurement
  Label Block;  // time of the block
  Opener FieldNames;
  OutputBoxes Outputs;

  // For the groups of controls.
  bool Solve(SolveRequest& request) { return SolveScaling(context(), request); }
  [[nodiscard]] AnalogList& List() const { return list_; }
  [[nodiscard]] cOrvusData& Data() const { return list_.Data(block_); }
  [[nodiscard]] cAnalogConfig& Analog() const { return *Data().Analog(); }
  [[nodiscard]] std::span<RepAlias> Aliases() const { return list_.Aliases(block_); }
  [[nodiscard]] const ProjectStore& Project() const { return store(); }
  [[nodiscard]] int BlockNumber() const { return block_; }
  [[nodiscard]] bool OnThermocouples() const { return Analog().MeasureType() == ORVUS_MEASURE_TC; }

  // The scaling that the sensors follow.
  [[nodiscard]] DefaultScaling Scaling() const;
  // A new scale is written to all rows; a new kind clears them. Without sensors there are no rows
  // to write to; rows that come back follow the block.
  void GiveScaling();
  void ClearScaling();

  // Applies the sensor count again, reduced until the sensors fit.
  void TakeReps();
  // Applies the settling time again, whose minimum depends on range and integration.
  void TakeSettleTime();
  // Updates everything that depends on the object.
  void Changed();

 protected:
  AnalogSetup(const ScreenContext& context, std::string_view name,
              const AnalogSetupRequest& request);

  // Shows the block; last call of a constructor.
  void load();
  // Shows the controls that only this screen has.
  virtual void showOthers() = 0;
  // Free sensors besides those of the block; negative when there are too many.
  [[nodiscard]] virtual int maxMore() const = 0;
  // What has the capacity for the sensors of the block: "differential channels are free".
  [[nodiscard]] virtual std::string capacity() const = 0;

  bool onDone() override;

 private:
  void bind();
  void onIntegrationRange();
  void spinReps(bool up);
  void spinIntegration(bool up);
  void openFieldNames();

  AnalogList& list_;
  int block_;
  ScalingEdit scaling_;
};

}  // namespace ostrand
