// The two-point calculators: multiplier and offset of the straight line through two points of a
// sensor's data sheet. `MultOffCalc` and `PotCalc` are records of the same kind.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// y = M * x + B, as shown.
struct LineAnswers {
  std::string M;
  std::string B;
};

// The line through (XMin, YMin) and (XMax, YMax). The offset is calculated with the shown
// multiplier, so that the two agree. Nothing while XMax equals XMin.
std::optional<LineAnswers> SolveLine(const LineCalcRecord& record);

// The other coordinate of a point of the line shown. Nothing without a line, and for X on a level
// line.
std::optional<std::string> LineXAt(const LineAnswers& line, std::string_view y);
std::optional<std::string> LineYAt(const LineAnswers& line, std::string_view x);

// The scroll bar of `YOut` has the positions 0, at YMin, to kLineScrollSteps, at YMax.
inline constexpr int kLineScrollSteps = 1000;

// `YOut` at a position; positions outside the range count as the nearer end.
std::optional<std::string> LineYOutAt(const LineCalcRecord& record, int position);

// The position nearest to the record's `YOut`, an end if it is outside YMin to YMax. 0 while YMax
// equals YMin.
int LineScrollPosition(const LineCalcRecord& record);

}  // namespace ostrand
