// Programs that the session starts, which the user can end.
#pragma once

#include <functional>
#include <memory>

#include "platform/process.h"

namespace ostrand::desktop {

class WatchedProcesses final : public platform::Processes {
 public:
  // `changed` is called when a program has been started and when one has ended.
  WatchedProcesses(platform::Processes& inner, std::function<void()> changed)
      : inner_(inner), changed_(std::move(changed)) {}

  // Forgets what was started and cancelled before.
  void Begin();
  // Ends the program that runs, with all that it has started, and any other until Begin.
  void Cancel() { cancelled_ = true; }
  [[nodiscard]] bool Cancelled() const { return cancelled_; }
  [[nodiscard]] bool Running() const { return running_ > 0; }
  // Programs started since Begin.
  [[nodiscard]] int Started() const { return started_; }

  Result<std::unique_ptr<platform::Process>> Start(const platform::ProgramCall& call) override;
  void Rest() override { inner_.Rest(); }

 private:
  class Watched;

  platform::Processes& inner_;
  std::function<void()> changed_;
  bool cancelled_ = false;
  int running_ = 0;
  int started_ = 0;
};

}  // namespace ostrand::desktop
