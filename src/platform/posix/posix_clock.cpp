#include "platform/posix/posix_clock.h"

#include <ctime>

#include "text/number.h"

namespace ostrand::platform {

Moment PosixClock::Now() {
  std::tm parts{};
  if (epoch_) {
    const std::time_t fixed = *epoch_;
    ::gmtime_r(&fixed, &parts);
  } else {
    const std::time_t present = std::time(nullptr);
    ::localtime_r(&present, &parts);
  }
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

std::optional<std::int64_t> PosixClock::EpochFromText(std::string_view text) {
  constexpr double kLast = 253402300799.0;  // 9999-12-31 23:59:59
  if (text.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  const std::optional<double> seconds = ToDouble(text);
  if (!seconds || *seconds > kLast) return std::nullopt;
  return static_cast<std::int64_t>(*seconds);
}

}  // namespace ostrand::platform
