// The numbers that a project and its host exchange.
#pragma once

#include <cstdint>

namespace ostrand {

using i16 = std::int16_t;
using i32 = std::int32_t;
using flag = std::int16_t;  // 0 false, -1 true; any other value counts as true

inline constexpr flag kTrue = -1;
inline constexpr flag kFalse = 0;

}  // namespace ostrand
