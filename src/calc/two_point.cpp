#include "calc/two_point.h"

#include <algorithm>
#include <cmath>

#include "calc/answers.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

// A plain number of this length does not fit the field of an answer.
constexpr std::size_t kPlainLength = 9;

std::optional<std::string> lineText(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  std::string plain = FormatNumber(value, "0.0####");
  return plain.size() < kPlainLength ? plain : FormatNumber(value, "0.####0e-##");
}

bool isSolved(const LineAnswers& line) { return ToDouble(line.M) && ToDouble(line.B); }

}  // namespace

std::optional<LineAnswers> SolveLine(const LineCalcRecord& record) {
  const double xMin = TypedNumber(record.XMin);
  const double yMin = TypedNumber(record.YMin);
  const double span = TypedNumber(record.XMax) - xMin;
  if (span == 0) return std::nullopt;
  const auto multiplier = lineText((TypedNumber(record.YMax) - yMin) / span);
  if (!multiplier) return std::nullopt;
  const auto offset = lineText(yMin - Val(*multiplier) * xMin);
  if (!offset) return std::nullopt;
  return LineAnswers{*multiplier, *offset};
}

std::optional<std::string> LineXAt(const LineAnswers& line, std::string_view y) {
  if (!isSolved(line) || Val(line.M) == 0) return std::nullopt;
  return lineText((TypedNumber(y) - Val(line.B)) / Val(line.M));
}

std::optional<std::string> LineYAt(const LineAnswers& line, std::string_view x) {
  if (!isSolved(line)) return std::nullopt;
  return lineText(Val(line.M) * TypedNumber(x) + Val(line.B));
}

std::optional<std::string> LineYOutAt(const LineCalcRecord& record, int position) {
  const double share = static_cast<double>(std::clamp(position, 0, kLineScrollSteps)) /
                       static_cast<double>(kLineScrollSteps);
  const double yMin = TypedNumber(record.YMin);
  return lineText(yMin + (TypedNumber(record.YMax) - yMin) * share);
}

int LineScrollPosition(const LineCalcRecord& record) {
  const double yMin = TypedNumber(record.YMin);
  const double share = (TypedNumber(record.YOut) - yMin) / (TypedNumber(record.YMax) - yMin);
  if (std::isnan(share) || TypedNumber(record.YMax) == yMin) return 0;
  return static_cast<int>(RoundHalfEven(std::clamp(share, 0.0, 1.0) * kLineScrollSteps));
}

}  // namespace ostrand
