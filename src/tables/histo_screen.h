// Common part of the parameter screens of histogram, rainflow and level crossing.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "controls/numeric_field.h"
#include "controls/screen.h"

namespace ostrand {

// The output to edit.
struct HistoTarget {
  HistoSet& histo;              // outlives the screen
  int table;                    // from 1
  std::string_view resolution;  // "FP2" or "IEEE4"
  std::string stem = {};        // of its level arrays, from LevelStem
};

class HistoScreen : public Screen {
 public:
  HistoScreen(const ScreenContext& context, std::string_view name, const HistoTarget& target);

  // The user left without Done; the box of the output is then cleared.
  bool UserCancelled = true;

  Label ScanTime;
  Label TableTime;
  Label DataPoints;  // flashes when a record has too few points for its histogram

 protected:
  [[nodiscard]] const HistoTarget& target() const { return target_; }
  // The instruction as the screen shows it: "(BinSelect,FP2,0,20,0,100,0,1)".
  [[nodiscard]] std::string codeLine(std::string_view source, std::string_view code) const;
  // Reports a fault and keeps the screen open.
  // The focus goes to the control at fault.
  bool refuse(std::string_view title, std::string_view text, Control& at);

 private:
  HistoTarget target_;
};

// --- Histogram and rainflow ----------------------------------------------------------------------

using HistoParameters = std::array<double, 5>;   // in screen order
using HistoPlaces = std::array<std::size_t, 5>;  // index of each number in the text, from 0

// Order of the numbers in the text; `foreign` is the order in texts of other origin.
struct HistoOrder {
  HistoPlaces own;
  HistoPlaces foreign;
  std::size_t lower;  // which numbers are the limits and the form
  std::size_t upper;
  std::size_t form;
};
// The numbers of a stored text. A text is in foreign order if its form is not in shortest notation
// ("000") or its limits are in the wrong order. Nothing for a text that fits neither order.
std::optional<HistoParameters> HistoNumbers(std::string_view text, const HistoOrder& order);

// The numbers in text order, in shortest notation, without blanks.
std::string HistoText(const HistoParameters& numbers, const HistoOrder& order);

// A screen of five numbers, which Done stores as one text.
class HistoNumberScreen : public HistoScreen {
 public:
  Label Code;

 protected:
  HistoNumberScreen(const ScreenContext& context, std::string_view name, const HistoTarget& target,
                    const HistoOrder& order, std::string HistoSet::*kept);

  // Shows the stored numbers in their fields; called by constructors.
  void load(const std::array<NumericField*, 5>& fields);
  [[nodiscard]] double number(std::size_t n) const { return fields_[n]->Value(); }
  // Reports an invalid number, or invalid limits.
  bool refuse(std::string_view text, std::size_t n);
  bool limitsFit();
  // Stores the numbers; an unedited text stays as written.
  bool keep();

 private:
  [[nodiscard]] std::string codeText() const;

  const HistoOrder& order_;
  std::string& kept_;
  std::array<NumericField*, 5> fields_{};
  std::string opened_;  // the text as first shown
};

}  // namespace ostrand
