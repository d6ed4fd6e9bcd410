// The time of a POSIX machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/clock.h"

namespace ostrand::platform {

// The local time of the machine, or, when an epoch is given, always that moment in UTC, so that
// two runs on one input give the same bytes.
class PosixClock : public Clock {
 public:
  explicit PosixClock(std::optional<std::int64_t> epoch = std::nullopt) : epoch_(epoch) {}
  Moment Now() override;

  // The seconds since 1970 that the whole text is: digits only, up to the end of the year 9999.
  // Nothing for any other text.
  static std::optional<std::int64_t> EpochFromText(std::string_view text);

 private:
  std::optional<std::int64_t> epoch_;
};

}  // namespace ostrand::platform
