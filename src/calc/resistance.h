// The resistor calculator: the multiplier of a resistance bridge from its reference resistor.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

inline constexpr std::string_view kOhms = "Ohms";
inline constexpr std::string_view kKiloOhms = "kOhms";

// The multiplier as shown. A record without units is in Ohms.
std::optional<std::string> ResistanceMultiplier(const RsCalcRecord& record);

// The shown multiplier in the form of the setup's field. Nothing for a text that is not a number.
std::optional<std::string> ResistanceHandedBack(std::string_view shown);

}  // namespace ostrand
