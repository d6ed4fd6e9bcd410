#include "platform/posix/interrupts.h"

#include <array>
#include <csignal>
#include <cstddef>

namespace ostrand::platform {
namespace {

constexpr std::array<int, 5> kSignals = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM};

volatile std::sig_atomic_t notedSignal = 0;
int guards = 0;
std::array<struct sigaction, kSignals.size()> formerActions;

void note(int signal) {
  if (notedSignal == 0) notedSignal = signal;
}

}  // namespace

InterruptGuard::InterruptGuard() {
  if (guards++ > 0) return;
  struct sigaction noting {};
  noting.sa_handler = note;  // without SA_RESTART: a write that waits returns
  for (std::size_t at = 0; at < kSignals.size(); ++at) {
    struct sigaction& former = formerActions[at];
    ::sigaction(kSignals[at], nullptr, &former);
    if (former.sa_handler != SIG_IGN) ::sigaction(kSignals[at], &noting, nullptr);
  }
}

InterruptGuard::~InterruptGuard() {
  if (--guards > 0) return;
  for (std::size_t at = 0; at < kSignals.size(); ++at) {
    ::sigaction(kSignals[at], &formerActions[at], nullptr);
  }
  const int signal = notedSignal;
  notedSignal = 0;
  if (signal != 0) ::raise(signal);
}

bool InterruptGuard::Noted() { return notedSignal != 0; }

}  // namespace ostrand::platform
