// How the controls of the CAN screens are shown.
#pragma once

#include <span>

#include "controls/faces.h"

namespace ostrand {

[[nodiscard]] std::span<const Face> CanBusFaces();
[[nodiscard]] std::span<const Face> CanAdvFaces();
[[nodiscard]] std::span<const Face> CanPickFaces();

}  // namespace ostrand
