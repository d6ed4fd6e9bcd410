// What the scan and the slow sequence share of the CAN statements.
#pragma once

#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// Whether there is a CAN module and it is enabled.
bool CanInUse(const ProjectStore& store);

// Arguments of a Canbus statement, up to a comma: array, interface and identifier with its sign.
std::string CanArguments(const ProjectStore& store, std::string_view array, std::string_view id);

// Its arguments for the item of this name: where the value is in the frame.
std::string CanPlace(std::string_view name);

}  // namespace ostrand
