#include "model/units.h"

#include <array>
#include <cstdint>

namespace ostrand {
namespace {

constexpr std::array<std::string_view, 6> kAbbreviations = {"uSec", "mSec", "Sec",
                                                            "Min",  "Hour", "Day"};
constexpr std::array<std::string_view, 6> kLongForms = {"microsecond", "millisecond", "second",
                                                        "minute",      "hour",        "day"};
constexpr std::array<std::string_view, 9> kLetters = {"-", "T", "E", "K", "J", "B", "R", "S", "N"};

template <std::size_t Count>
std::string_view entryOf(const std::array<std::string_view, Count>& table, std::int64_t at) {
  return at >= 0 && at < static_cast<std::int64_t>(Count) ? table[static_cast<std::size_t>(at)]
                                                          : std::string_view{};
}

}  // namespace

std::string_view UnitAbbreviation(int unit) { return entryOf(kAbbreviations, unit); }
std::string_view UnitLongForm(int unit) { return entryOf(kLongForms, unit); }
std::string_view ThermocoupleLetter(int typeNo) {
  return entryOf(kLetters, std::int64_t{typeNo} + 1);
}

}  // namespace ostrand
