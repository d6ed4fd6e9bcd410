// What the parameter screens of histogram, rainflow and level crossing share.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "controls/numeric_field.h"
#include "controls/screen.h"

namespace ostrand {

// The output whose parameters are edited.
struct HistoTarget {
  HistoSet& histo;              // outlives the screen
  int table;                    // from 1
  std::string_view resolution;  // "FP2" or "IEEE4"
  std::string stem = {};        // of the arrays of its levels, as LevelStem gives it
};

class HistoScreen : public Screen {
 public:
  HistoScreen(const ScreenContext& context, std::string_view name, const HistoTarget& target);

  // The user left it by Cancel, or in any other way than Done; its box is cleared then.
  bool UserCancelled = true;

  Label ScanTime;
  Label TableTime;
  Label DataPoints;  // flashes when a record has too few points for its histogram

 protected:
  [[nodiscard]] const HistoTarget& target() const { return target_; }
  // The instruction as the screen shows it: "(BinSelect,FP2,0,20,0,100,0,1)".
  [[nodiscard]] std::string codeLine(std::string_view source, std::string_view code) const;
  // Reports what is wrong and keeps the screen open.
  bool refuse(std::string_view title, std::string_view text);

 private:
  HistoTarget target_;
};

// --- Histogram and rainflow ----------------------------------------------------------------------

using HistoParameters = std::array<double, 5>;   // as the screen lists them
using HistoPlaces = std::array<std::size_t, 5>;  // of each number in the text, from 0

// The places of the numbers in the text. Texts of other origin hold them in `foreign` order.
struct HistoOrder {
  HistoPlaces own;
  HistoPlaces foreign;
  std::size_t lower;  // which of the numbers are the limits and the form
  std::size_t upper;
  std::size_t form;
};
// The numbers of a stored text. One in foreign order is known by a form in other than its shortest
// text ("000"), or by limits in the wrong order. Nothing for a text that is
// neither.
std::optional<HistoParameters> HistoNumbers(std::string_view text, const HistoOrder& order);

// The numbers in the order of the text, in their shortest form, without blanks.
std::string HistoText(const HistoParameters& numbers, const HistoOrder& order);

// A screen of five numbers, which Done keeps as one text.
class HistoNumberScreen : public HistoScreen {
 public:
  Label Code;

 protected:
  HistoNumberScreen(const ScreenContext& context, std::string_view name, const HistoTarget& target,
                    const HistoOrder& order, std::string HistoSet::*kept);

  // Shows what is stored; to be called by the constructor. The fields are those of the numbers.
  void load(const std::array<NumericField*, 5>& fields);
  [[nodiscard]] double number(std::size_t n) const { return fields_[n]->Value(); }
  // Reports what is wrong with a number, or with the limits.
  bool refuse(std::string_view text);
  bool limitsFit();
  // Keeps the numbers; what was only looked at stays as it was written.
  bool keep();

 private:
  [[nodiscard]] std::string codeText() const;

  const HistoOrder& order_;
  std::string& kept_;
  std::array<NumericField*, 5> fields_{};
  std::string opened_;  // the text of what was shown first
};

}  // namespace ostrand
