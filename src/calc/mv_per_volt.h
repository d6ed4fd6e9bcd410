// The bridge output calculator: the multiplier from a sensor's rated output per volt of excitation
// and its rated capacity, and a try-out of it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// The multiplier as shown, to seven or eight significant digits: units of the capacity for each
// mV/V, or for each V/V. kErrorText for a rated output of 0.
std::string MVPerVoltMultiplier(const MVPerVoltCalcRecord& record);

// Which of the three values of the try-out is computed from the others.
enum class MVPerVoltSolves { kUnits, kMVOut, kExcite };

struct MVPerVoltState {
  MVPerVoltSolves solves;
  std::string_view name;
  std::string_view formula;  // as shown
};
inline constexpr std::array<MVPerVoltState, 3> kMVPerVoltStates = {{
    {MVPerVoltSolves::kUnits, "UNITS", "U = V / (E / 1000) * M"},
    {MVPerVoltSolves::kMVOut, "MVOUT", "V = U * (E / 1000) / M"},
    {MVPerVoltSolves::kExcite, "EXCITE", "E = V / U * M * 1000"},
}};

// The texts of the try-out's fields.
struct MVPerVoltTryOut {
  std::string units;   // U
  std::string mVOut;   // V, output of the bridge
  std::string excite;  // E, excitation in mV
};

// The value that the state computes from the other two and the shown multiplier, in single
// precision; kErrorText when a division fails.
std::string SolveMVPerVolt(MVPerVoltSolves solves, std::string_view multiplier,
                           const MVPerVoltTryOut& tryOut);

// Excitation limit of the logger in mV.
inline constexpr double kMaxExcitation = 5000;

// The question for an excitation above the limit of the logger; nothing for one within.
inline constexpr std::string_view kExcitationTitle = "VALUE TOO LARGE";
std::optional<std::string> ExcitationQuestion(std::string_view excite);

}  // namespace ostrand
