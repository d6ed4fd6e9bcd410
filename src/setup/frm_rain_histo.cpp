#include "setup/frm_rain_histo.h"

#include "text/number.h"

namespace ostrand {
namespace {

enum Number : std::size_t { kMean, kAmp, kLower, kUpper, kForm };
constexpr HistoOrder kOrder = {.own = {0, 1, 2, 3, 4},
                               .foreign = {0, 1, 3, 4, 2},  // mean, amplitude, form, lower, upper
                               .lower = kLower,
                               .upper = kUpper,
                               .form = kForm};

constexpr std::string_view kTitle = "INCORRECT VALUE";

}  // namespace

frmRainHisto::frmRainHisto(const ScreenContext& context, const HistoTarget& target)
    : HistoScreen(context, "frmRainHisto", target),
      MeanBins(*this, "MeanBins", NumberType::kInteger),
      AmpBins(*this, "AmpBins", NumberType::kInteger),
      LowerLimit(*this, "LowerLimit", NumberType::kSingle),
      UpperLimit(*this, "UpperLimit", NumberType::kSingle),
      Form(*this, "Form", NumberType::kInteger),
      Code(*this, "Code") {
  MeanBins.Limits(0, 32767);
  AmpBins.Limits(0, 32767);
  Form.Limits(0, 999);
  const auto show = [this] { Code.Text("Code = " + codeLine("BinSelect", codeText())); };
  for (NumericField* field : {&MeanBins, &AmpBins, &LowerLimit, &UpperLimit, &Form}) {
    field->OnTake = show;
  }
  load();
  show();
}

void frmRainHisto::load() {
  const Loading loading(*this);
  const auto numbers =
      HistoNumbers(target().histo.RainHistoCode, kOrder).value_or(HistoParameters{});
  MeanBins.Value(numbers[kMean]);
  AmpBins.Value(numbers[kAmp]);
  LowerLimit.Value(numbers[kLower]);
  UpperLimit.Value(numbers[kUpper]);
  Form.Value(numbers[kForm]);
  opened_ = codeText();
}

std::string frmRainHisto::codeText() const {
  return HistoText(
      {MeanBins.Value(), AmpBins.Value(), LowerLimit.Value(), UpperLimit.Value(), Form.Value()},
      kOrder);
}

bool frmRainHisto::onDone() {
  if (MeanBins.Value() < 1) return refuse(kTitle, "Mean Bins must have a value of at least 1.");
  if (AmpBins.Value() < 2) return refuse(kTitle, "Amp Bins must have a value of at least 2.");
  if (LowerLimit.Value() == UpperLimit.Value()) {
    return refuse(kTitle, "Lower Limit and Upper Limit are the same values.");
  }
  if (LowerLimit.Value() > UpperLimit.Value()) {
    return refuse(kTitle, "Lower Limit must be less then  Upper Limit.");
  }
  // What was only looked at stays as it was written.
  const std::string code = codeText();
  if (code != opened_) target().histo.RainHistoCode = code;
  UserCancelled = false;
  return true;
}

}  // namespace ostrand
