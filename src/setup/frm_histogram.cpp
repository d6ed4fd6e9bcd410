#include "setup/frm_histogram.h"

#include "text/number.h"

namespace ostrand {
namespace {

enum Number : std::size_t { kBins, kLower, kUpper, kForm, kWeight };
constexpr HistoOrder kOrder = {.own = {0, 1, 2, 3, 4},
                               .foreign = {0, 3, 4, 1, 2},  // bins, form, weight, lower, upper
                               .lower = kLower,
                               .upper = kUpper,
                               .form = kForm};

constexpr std::string_view kTitle = "INCORRECT VALUE";

}  // namespace

frmHistogram::frmHistogram(const ScreenContext& context, const HistoTarget& target)
    : HistoScreen(context, "frmHistogram", target),
      Bins(*this, "Bins", NumberType::kInteger),
      LowerLimit(*this, "LowerLimit", NumberType::kSingle),
      UpperLimit(*this, "UpperLimit", NumberType::kSingle),
      Form(*this, "Form", NumberType::kInteger),
      Weight(*this, "Weight", NumberType::kSingle),
      Code(*this, "Code") {
  Bins.Limits(0, 32767);
  Form.Limits(0, 999);
  const auto show = [this] { Code.Text("Code = " + codeLine("BinSelect", codeText())); };
  for (NumericField* field : {&Bins, &LowerLimit, &UpperLimit, &Form, &Weight}) {
    field->OnTake = show;
  }
  load();
  show();
}

void frmHistogram::load() {
  const Loading loading(*this);
  const auto numbers =
      HistoNumbers(target().histo.HistogramCode, kOrder).value_or(HistoParameters{});
  Bins.Value(numbers[kBins]);
  LowerLimit.Value(numbers[kLower]);
  UpperLimit.Value(numbers[kUpper]);
  Form.Value(numbers[kForm]);
  Weight.Value(numbers[kWeight]);
  opened_ = codeText();
}

std::string frmHistogram::codeText() const {
  return HistoText(
      {Bins.Value(), LowerLimit.Value(), UpperLimit.Value(), Form.Value(), Weight.Value()}, kOrder);
}

bool frmHistogram::onDone() {
  if (Bins.Value() < 2) return refuse(kTitle, "Number of Bins must have a value of at least 2.");
  if (LowerLimit.Value() == UpperLimit.Value()) {
    return refuse(kTitle, "Lower Limit and Upper Limit are the same values.");
  }
  if (LowerLimit.Value() > UpperLimit.Value()) {
    return refuse(kTitle, "Lower Limit must be less then  Upper Limit.");
  }
  if (Weight.Value() <= 0) return refuse(kTitle, "Weighted Value must be greater than zero.");
  // What was only looked at stays as it was written.
  const std::string code = codeText();
  if (code != opened_) target().histo.HistogramCode = code;
  UserCancelled = false;
  return true;
}

}  // namespace ostrand
