// Fields for numbers.
#pragma once

#include <limits>
#include <string>
#include <string_view>

#include "controls/text_field.h"

namespace ostrand {

// Whether a field for singles may hold a text while it is typed.
bool SingleText(std::string_view text);

enum class NumberType { kInteger, kLong, kByte, kSingle, kDouble };

// A number within limits, shown in the form of its type. While it is typed each key is tested on
// the text as it would become; when it takes effect it is brought within type and limits and
// rewritten. A text that is not a number beeps and keeps the focus.
class NumericField : public TextField {
 public:
  // Singles are shown to 7 significant digits, doubles to 10; integers whole.
  NumericField(Screen& screen, std::string_view name, NumberType type);

  // The field's own limits, within those of the type.
  void Limits(double min, double max);
  [[nodiscard]] double Min() const { return min_; }
  [[nodiscard]] double Max() const { return max_; }
  // Whether the field has its own limit at that end, or only that of the type.
  [[nodiscard]] bool HasMin() const;
  [[nodiscard]] bool HasMax() const;
  // 2 to 9 for singles, 2 to 15 for doubles.
  void Digits(int digits) { digits_ = digits; }
  // An empty field takes effect as it is.
  bool MayBeBlank = false;
  // Fractions are cut off, not rounded, when it takes effect.
  bool WholePart = false;

  // The number of the present text; 0 if it is not a number.
  [[nodiscard]] double Value() const;
  // Shows a number in the field's form, without limits and without any event.
  void Value(double value);

 protected:
  bool normalize(std::string& text) override;

 private:
  [[nodiscard]] std::string shown(double value) const;

  NumberType type_;
  double min_;
  double max_;
  int digits_;
};

}  // namespace ostrand
