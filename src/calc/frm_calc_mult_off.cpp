#include "calc/frm_calc_mult_off.h"

#include "controls/faces.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Fill in the X & Y Max and Min boxes. Enter the Units. The multiplier (M) and offset (B) will "
    "be computed. Scroll or enter (Y) and (X).";

constexpr Face kLineFaces[] = {
    {"YMax", "Points of the line", "Y max"},
    {"YMin", "Points of the line", "Y min"},
    {"XMax", "Points of the line", "X max"},
    {"XMin", "Points of the line", "X min"},
    {"Units", "Axes", "Y units"},
    {"XAxis", "Axes", "X axis"},
    {"XUnits", "Axes", "X units"},
    {"M", "Result", "Multiplier (M)", ControlKind::kFigure},
    {"B", "Result", "Offset (B)", ControlKind::kFigure},
    {"YOut", "Try-out", "Y"},
    {"XOut", "Try-out", "X"},
    {"Scroll", "Try-out", "Scroll Y"},
};

constexpr int kScrollStep = kLineScrollSteps / 100;

}  // namespace

LineCalculator::LineCalculator(const ScreenContext& context, std::string_view name,
                               LineCalcRecord& record, const InputAxis& axis)
    : Calculator(context, name, kHelp),
      YMax(*this, "YMax"),
      YMin(*this, "YMin"),
      XMax(*this, "XMax"),
      XMin(*this, "XMin"),
      Units(*this, "Units"),
      XAxis(*this, "XAxis"),
      XUnits(*this, "XUnits"),
      M(*this, "M"),
      B(*this, "B"),
      YOut(*this, "YOut"),
      XOut(*this, "XOut"),
      Scroll(*this, "Scroll", NumberType::kInteger),
      stored_(record),
      record_(record) {
  Caption = "X-Y CALCULATOR";
  XAxis.Text(axis.label);
  XUnits.Text(axis.units);
  Scroll.Limits(0, kLineScrollSteps);
  bind(YMax, record_.YMax);
  bind(YMin, record_.YMin);
  bind(XMax, record_.XMax);
  bind(XMin, record_.XMin);
  bindUnits(Units, record_.Units);
  YOut.Text(record_.YOut);
  YOut.OnChange = [this] { onYOut(); };
  XOut.OnChange = [this] { onXOut(); };
  Scroll.OnChange = [this] { onScroll(); };
  Scroll.OnSpin = [this](bool up) {
    Scroll.Value(Scroll.Value() + (up ? kScrollStep : -kScrollStep));
    Scroll.Take();
    onScroll();
  };
  solveAndSettle();
  Describe(*this, kLineFaces);
}

void LineCalculator::solve() {
  kept_.Take(SolveLine(record_));
  if (const auto& line = kept_.Shown()) {
    M.Text(line->M);
    B.Text(line->B);
  }
  showXOut();
  showScroll();
}

void LineCalculator::showXOut() {
  if (!kept_.Shown()) return;
  if (const auto x = LineXAt(*kept_.Shown(), record_.YOut)) XOut.Text(*x);
}

void LineCalculator::showScroll() { Scroll.Value(LineScrollPosition(record_)); }

void LineCalculator::onYOut() {
  record_.YOut = YOut.Text();
  showXOut();
  showScroll();
}

void LineCalculator::onXOut() {
  if (!kept_.Shown()) return;
  const auto y = LineYAt(*kept_.Shown(), XOut.Text());
  if (!y) return;
  record_.YOut = *y;
  YOut.Text(*y);
  showScroll();
}

void LineCalculator::onScroll() {
  const double position = TypedNumber(Scroll.Text());
  const auto y = LineYOutAt(record_, RoundToInt16(position).value_or(kLineScrollSteps));
  if (!y) return;
  record_.YOut = *y;
  YOut.Text(*y);
  showXOut();
}

std::optional<ScalingAnswer> LineCalculator::answerShown() const {
  const auto multiplier = NumberHandedBack(M.Text());
  const auto offset = NumberHandedBack(B.Text());
  if (!multiplier || !offset) return std::nullopt;
  return ScalingAnswer{*multiplier, offset, std::string(Trim(record_.Units))};
}

}  // namespace ostrand
