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
// written anew. A text that is no number beeps and keeps the focus.
class NumericField : public TextField {
 public:
  // Singles are shown to 7 significant digits, doubles to 10; integers whole.
  NumericField(Screen& screen, std::string_view name, NumberType type);

  // The field's own limits, within those of the type.
  void Limits(double least, double most);
  [[nodiscard]] double Least() const { return least_; }
  [[nodiscard]] double Most() const { return most_; }
  // Whether it has a limit of its own at that end, or only that of the type.
  [[nodiscard]] bool HasLeast() const;
  [[nodiscard]] bool HasMost() const;
  // 2 to 9 for singles, 2 to 15 for doubles.
  void Digits(int digits) { digits_ = digits; }
  // A field left empty is no mistake: it takes effect as it is.
  bool BlankStands = false;
  // Fractions are cut off, not rounded, when it takes effect.
  bool WholePart = false;

  // What the text stands for at present; 0 for one that is no number.
  [[nodiscard]] double Value() const;
  // Shows a number in the field's form, without limits and without any event.
  void Value(double value);

 protected:
  bool normalize(std::string& text) override;

 private:
  [[nodiscard]] std::string shown(double value) const;

  NumberType type_;
  double least_;
  double most_;
  int digits_;
};

}  // namespace ostrand
