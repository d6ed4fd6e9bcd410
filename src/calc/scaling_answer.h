// What a calculator hands back.
#pragma once

#include <optional>
#include <string>

namespace ostrand {

struct ScalingAnswer {
  std::string multiplier;             // a number, as a field takes it
  std::optional<std::string> offset;  // nothing where the calculator gives none
  std::string units;                  // empty where none were named; the block's own ones stay
};

}  // namespace ostrand
