// The present time; the only source of it.
#pragma once

namespace ostrand::platform {

// A moment in the calendar of the place, as it is shown to people.
struct Moment {
  int year = 1970;
  int month = 1;  // 1 to 12
  int day = 1;
  int hour = 0;  // 0 to 23
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual Moment Now() = 0;
};

}  // namespace ostrand::platform
