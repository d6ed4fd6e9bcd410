// Input type and start channel of a block on the panel.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "controls/choice.h"
#include "controls/numeric_field.h"

namespace ostrand {

class AnalogSetup;

class PanelControls {
 public:
  Choice MeasType;
  NumericField Start;

  PanelControls(AnalogSetup& screen, std::string_view startName);
  // Called after a choice of the input type, before the sensor count is applied again.
  std::function<void()> OnInputType;

  void Show();
  [[nodiscard]] int MaxMore() const;
  // "differential channels are free"
  [[nodiscard]] std::string Capacity() const;

 private:
  [[nodiscard]] bool autoChan() const;
  [[nodiscard]] bool differential() const;
  void onMeasType();
  void limitStart();

  AnalogSetup& screen_;
};

}  // namespace ostrand
