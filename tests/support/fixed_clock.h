// The time of all golden files.
#pragma once

#include "platform/clock.h"

namespace ostrand::testing {

class FixedClock : public platform::Clock {
 public:
  platform::Moment Now() override { return {2003, 3, 10, 14, 5, 0}; }
};

}  // namespace ostrand::testing
