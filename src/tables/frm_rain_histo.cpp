#include "tables/frm_rain_histo.h"

#include "tables/faces.h"

namespace ostrand {
namespace {

enum Number : std::size_t { kMean, kAmp, kLower, kUpper, kForm };
constexpr HistoOrder kOrder = {.own = {0, 1, 2, 3, 4},
                               .foreign = {0, 1, 3, 4, 2},  // mean, amplitude, form, lower, upper
                               .lower = kLower,
                               .upper = kUpper,
                               .form = kForm};

}  // namespace

frmRainHisto::frmRainHisto(const ScreenContext& context, const HistoTarget& target)
    : HistoNumberScreen(context, "frmRainHisto", target, kOrder, &HistoSet::RainHistoCode),
      MeanBins(*this, "MeanBins", NumberType::kInteger),
      AmpBins(*this, "AmpBins", NumberType::kInteger),
      LowerLimit(*this, "LowerLimit", NumberType::kSingle),
      UpperLimit(*this, "UpperLimit", NumberType::kSingle),
      Form(*this, "Form", NumberType::kInteger) {
  Caption = "RAINFLOW HISTOGRAM";
  MeanBins.Limits(0, MeanBins.Max());
  AmpBins.Limits(0, AmpBins.Max());
  Form.Limits(0, 999);
  Describe(*this, kRainHistoFaces);
  load({&MeanBins, &AmpBins, &LowerLimit, &UpperLimit, &Form});
}

bool frmRainHisto::onDone() {
  if (number(kMean) < 1) return refuse("Mean Bins must have a value of at least 1.", kMean);
  if (number(kAmp) < 2) return refuse("Amp Bins must have a value of at least 2.", kAmp);
  return limitsFit() && keep();
}

}  // namespace ostrand
