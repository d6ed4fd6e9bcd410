#include "calc/source_kinds.h"

#include <array>

namespace ostrand {
namespace {

struct Source {
  std::string_view kind;
  InputAxis axis;
};
constexpr InputAxis kMillivolts = {"Input mV", "mVolts"};
constexpr InputAxis kVolts = {"Input V", "Volts"};
constexpr InputAxis kTemperature = {"", "Degs C"};
constexpr InputAxis kVoltsPerVolt = {"Input V/V", "Volts/Volt"};
constexpr std::array<Source, 9> kSources = {{
    {"Volts", kMillivolts},
    {"TK40M", kMillivolts},
    {"HVolt", kVolts},
    {"Isolated", kVolts},
    {"Brdg", {"Input mV/V", "mVolts/Volt"}},
    {"Pulse", {"Input Hz", "Hertz"}},
    {"Totalize", {"Input", "Counts"}},
    {"Filt", kMillivolts},
    {"Temp", kTemperature},
}};

}  // namespace

InputAxis InputAxisOf(std::string_view sourceKind, bool onTemperature, bool inVolts) {
  if (sourceKind == "TK40M" && onTemperature) return kTemperature;
  if (sourceKind == "Brdg" && inVolts) return kVoltsPerVolt;
  for (const auto& source : kSources) {
    if (source.kind == sourceKind) return source.axis;
  }
  return {};
}

}  // namespace ostrand
