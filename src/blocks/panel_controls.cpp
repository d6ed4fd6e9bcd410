#include "blocks/panel_controls.h"

#include "blocks/analog_setup.h"

namespace ostrand {
namespace {

constexpr int kInputs[] = {PanelSEChans / 2, PanelSEChans};  // by OrvusAnalogInputTypes

}  // namespace

PanelControls::PanelControls(AnalogSetup& screen, std::string_view startName)
    : MeasType(screen, "MeasType"),
      Start(screen, startName, NumberType::kInteger),
      screen_(screen) {
  MeasType.SetItems({"Diff", "SE"});
  const Face faces[] = {
      {"MeasType", "Sensors", "Input type", ControlKind::kOptions},
      {startName, "Sensors", "Start channel", {}, kAutomaticStart},
  };
  Describe(screen, faces);
  MeasType.OnPick = [this] { onMeasType(); };
  Start.OnTake = [this] {
    screen_.Data().StartChannel = static_cast<i16>(Start.Value());
    screen_.TakeReps();
  };
}

bool PanelControls::autoChan() const { return screen_.Project().Config.AutoChan != kFalse; }

bool PanelControls::differential() const { return screen_.Analog().InputType == ORVUS_INPUT_DIFF; }

void PanelControls::limitStart() { Start.Limits(1, kInputs[differential() ? 0 : 1]); }

void PanelControls::onMeasType() {
  screen_.Analog().InputType = static_cast<OrvusAnalogInputTypes>(MeasType.Index());
  if (OnInputType) OnInputType();
  limitStart();
  // The start first, so that as many sensors as possible fit.
  if (!autoChan()) Start.Take();
  screen_.TakeReps();
}

void PanelControls::Show() {
  MeasType.Index(screen_.Analog().InputType);
  limitStart();
  Start.Enabled = !autoChan();
  Start.Value(autoChan() ? screen_.List().StartOf(screen_.BlockNumber())
                         : screen_.Data().StartChannel);
}

int PanelControls::MaxMore() const {
  return ostrand::MaxMore(autoChan(), screen_.List().ChannelsAvailable(screen_.Analog().InputType),
                          differential(), screen_.Data().StartChannel, screen_.Data().Reps);
}

std::string PanelControls::Capacity() const {
  return std::string(differential() ? "differential" : "single-ended") +
         (autoChan() ? " channels are free" : " channels are on the panel from its start");
}

}  // namespace ostrand
