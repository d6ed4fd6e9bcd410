// Signals that end the process, held back while there is something to clean up.
#pragma once

namespace ostrand::platform {

// While one lives, HUP, INT, QUIT, PIPE and TERM are noted and no longer end the process at once.
// Destroying the last one brings the former actions back; a signal that was noted takes effect
// then. Signals that are ignored stay ignored. For one thread.
class InterruptGuard {
 public:
  InterruptGuard();
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

  // Whether a signal waits to take effect: what is under way is to end soon.
  static bool Noted();
};

}  // namespace ostrand::platform
