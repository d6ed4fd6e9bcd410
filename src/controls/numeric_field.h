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

// A number within limits, formatted by its type. Each key is checked against the resulting text.
// When the text takes effect, the number is clamped to type and limits and reformatted. A text that
// is not a number beeps and keeps the focus.
class NumericField : public TextField {
 public:
  // Singles are shown to 7 significant digits, doubles to 10; integers whole.
  NumericField(Screen& screen, std::string_view name, NumberType type);
  ~NumericField() override;

  // The field's limits, within those of the type.
  void Limits(double min, double max);
  [[nodiscard]] double Min() const { return min_; }
  [[nodiscard]] double Max() const { return max_; }
  // Whether the field has an explicit limit at that end, besides that of the type.
  [[nodiscard]] bool HasMin() const;
  [[nodiscard]] bool HasMax() const;
  // 2 to 9 for singles, 2 to 15 for doubles.
  void Digits(int digits) { digits_ = digits; }
  [[nodiscard]] int Digits() const { return digits_; }  // 0 for whole numbers
  // An empty field is accepted unchanged.
  bool MayBeBlank = false;
  // Fractions are truncated when the text takes effect.
  bool WholePart = false;

  // The number in the text; 0 if it is not a number.
  [[nodiscard]] double Value() const;
  // Shows a number in the field's format, without limits and events.
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
