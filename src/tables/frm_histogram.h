// Parameters of a histogram.
#pragma once

#include "controls/numeric_field.h"
#include "tables/histo_screen.h"

namespace ostrand {

// Done stores them as `HistogramCode`: "bins,lower,upper,form,weight".
class frmHistogram final : public HistoNumberScreen {
 public:
  frmHistogram(const ScreenContext& context, const HistoTarget& target);

  NumericField Bins;
  NumericField LowerLimit;
  NumericField UpperLimit;
  NumericField Form;
  NumericField Weight;

 protected:
  bool onDone() override;
};

}  // namespace ostrand
