#include "tables/frm_histogram.h"

#include "tables/faces.h"

namespace ostrand {
namespace {

enum Number : std::size_t { kBins, kLower, kUpper, kForm, kWeight };
constexpr HistoOrder kOrder = {.own = {0, 1, 2, 3, 4},
                               .foreign = {0, 3, 4, 1, 2},  // bins, form, weight, lower, upper
                               .lower = kLower,
                               .upper = kUpper,
                               .form = kForm};

}  // namespace

frmHistogram::frmHistogram(const ScreenContext& context, const HistoTarget& target)
    : HistoNumberScreen(context, "frmHistogram", target, kOrder, &HistoSet::HistogramCode),
      Bins(*this, "Bins", NumberType::kInteger),
      LowerLimit(*this, "LowerLimit", NumberType::kSingle),
      UpperLimit(*this, "UpperLimit", NumberType::kSingle),
      Form(*this, "Form", NumberType::kInteger),
      Weight(*this, "Weight", NumberType::kSingle) {
  Caption = "HISTOGRAM";
  Bins.Limits(0, Bins.Max());
  Form.Limits(0, 999);
  Describe(*this, kHistogramFaces);
  load({&Bins, &LowerLimit, &UpperLimit, &Form, &Weight});
}

bool frmHistogram::onDone() {
  if (number(kBins) < 2) return refuse("Number of Bins must have a value of at least 2.", kBins);
  if (!limitsFit()) return false;
  if (number(kWeight) <= 0) return refuse("Weighted Value must be greater than zero.", kWeight);
  return keep();
}

}  // namespace ostrand
