// The result of a calculator.
#pragma once

#include <optional>
#include <string>

namespace ostrand {

struct ScalingAnswer {
  std::string multiplier;             // a number, in the form of a field
  std::optional<std::string> offset;  // nothing if the calculator gives none
  std::string units;                  // empty keeps the block's units
};

}  // namespace ostrand
