// Parameters of a histogram.
#pragma once

#include "setup/controls/numeric_field.h"
#include "setup/histo_screen.h"

namespace ostrand {

// Done keeps them as `HistogramCode`: "bins,lower,upper,form,weight".
class frmHistogram final : public HistoScreen {
 public:
  frmHistogram(const ScreenContext& context, const HistoTarget& target);

  NumericField Bins;
  NumericField LowerLimit;
  NumericField UpperLimit;
  NumericField Form;
  NumericField Weight;
  Label Code;

 protected:
  bool onDone() override;

 private:
  void load();
  [[nodiscard]] std::string codeText() const;

  std::string opened_;  // the text of what was shown first
};

}  // namespace ostrand
