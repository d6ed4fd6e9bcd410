// Parameters of a rainflow histogram.
#pragma once

#include "setup/controls/numeric_field.h"
#include "setup/histo_screen.h"

namespace ostrand {

// Done keeps them as `RainHistoCode`: "mean,amp,lower,upper,form".
class frmRainHisto final : public HistoScreen {
 public:
  frmRainHisto(const ScreenContext& context, const HistoTarget& target);

  NumericField MeanBins;
  NumericField AmpBins;
  NumericField LowerLimit;
  NumericField UpperLimit;
  NumericField Form;
  Label Code;

 protected:
  bool onDone() override;

 private:
  void load();
  [[nodiscard]] std::string codeText() const;

  std::string opened_;  // the text of what was shown first
};

}  // namespace ostrand
