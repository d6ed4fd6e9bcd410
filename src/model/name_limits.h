// Length limits of the user's names and units.
#pragma once

#include <string>
#include <string_view>

#include "model/enums.h"
#include "model/store.h"

namespace ostrand {

// Why a name or a unit is refused, for the help line.
inline constexpr std::string_view kTooLongHelp =
    "One more letter would make a statement of the program longer than its line.";

// A value of a block or of a CAN item.
struct ValueName {
  std::string array;
  int index = 1;
  bool only = false;  // the only value of its array
  // Arrays of multipliers and offsets if the block is calibrated on site; else empty.
  std::string mult = {};
  std::string offset = {};
};

// Whether the statements of a value fit into their lines, with its alias and its separate units;
// each empty for none.
bool ValueFits(const ValueName& value, std::string_view alias, std::string_view units);

// Whether the units of a block fit, or those of a CAN item: `array` is its name.
bool UnitsFit(std::string_view array, std::string_view units);

// Whether all declarations of a CAN item and its values fit. `number` is from 1.
bool ItemFits(const CanItemData& item, int number);

// Whether name and units of a calculated field fit.
bool CalcFieldFits(std::string_view name, std::string_view units);

}  // namespace ostrand
