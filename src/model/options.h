// The user's options for new items and for display.
#pragma once

#include <string>

#include "model/measurement_options.h"
#include "model/store.h"

namespace ostrand {

// Initial values of new items.
struct OptionValues {
  i32 DefaultScanInterval = 10;
  i32 DefaultScanIntervalUnits = 1;  // 0 microseconds, 1 milliseconds, 2 seconds, 3 minutes
  i32 DefaultNumFlags = 8;
  MeasurementOptions Measurement;  // for cOrvusData and cAnalogConfig
  i32 DefaultTableAutoSize = 0;
  i32 DefaultTableNumRecs = 1000;
};

inline constexpr i32 kMinFontSize = 6;  // points
inline constexpr i32 kMaxFontSize = 72;

struct TextFont {
  std::string Name;
  std::string Style;  // "Regular", "Bold", "Italic", "Bold Italic"
  i32 Size = 0;       // points

  friend bool operator==(const TextFont&, const TextFont&) = default;
};

// The form of a number: shortest, with thousands separators, with an exponent, or with only as many
// digits as needed.
enum class NumberForm { kGeneral, kNumber, kScientific, kCustom };

// A form with its digits after the point, 0 to kMaxFormDigits; the general form ignores them.
struct NumberFormat {
  NumberForm form = NumberForm::kScientific;
  i32 digits = 1;

  friend bool operator==(const NumberFormat&, const NumberFormat&) = default;
};
inline constexpr i32 kMaxFormDigits = 8;

struct ViewOptions {
  TextFont ConditionFont = {"Courier New", "Regular", 10};  // of lines that group conditions
  NumberFormat SummaryNumbers;                              // of multipliers and offsets there

  friend bool operator==(const ViewOptions&, const ViewOptions&) = default;
};

}  // namespace ostrand
