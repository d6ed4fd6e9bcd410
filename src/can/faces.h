// How the controls of the CAN screens are shown.
#pragma once

#include <span>

#include "controls/faces.h"

namespace ostrand {

extern const std::span<const Face> kCanBusFaces;
extern const std::span<const Face> kCanAdvFaces;
extern const std::span<const Face> kCanPickFaces;

}  // namespace ostrand
