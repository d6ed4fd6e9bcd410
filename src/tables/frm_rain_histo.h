// Parameters of a rainflow histogram.
#pragma once

#include "controls/numeric_field.h"
#include "tables/histo_screen.h"

namespace ostrand {

// Done stores them as `RainHistoCode`: "mean,amp,lower,upper,form".
class frmRainHisto final : public HistoNumberScreen {
 public:
  frmRainHisto(const ScreenContext& context, const HistoTarget& target);

  NumericField MeanBins;
  NumericField AmpBins;
  NumericField LowerLimit;
  NumericField UpperLimit;
  NumericField Form;

 protected:
  bool onDone() override;
};

}  // namespace ostrand
