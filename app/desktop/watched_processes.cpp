#include "watched_processes.h"

#include <utility>

namespace ostrand::desktop {

class WatchedProcesses::Watched final : public platform::Process {
 public:
  Watched(WatchedProcesses& all, std::unique_ptr<platform::Process> inner)
      : all_(all), inner_(std::move(inner)) {
    ++all_.running_;
    ++all_.started_;
    all_.changed_();
  }
  ~Watched() override {
    inner_.reset();
    --all_.running_;
    all_.changed_();
  }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;

  bool Running() override {
    if (all_.cancelled_ && inner_->Running()) {
      inner_->End();
      ended_ = true;
    }
    return !ended_ && inner_->Running();
  }
  std::optional<platform::ProcessFailure> Failure() override {
    if (ended_) return platform::ProcessFailure{true, "was cancelled"};
    return inner_->Failure();
  }
  void End() override { inner_->End(); }

 private:
  WatchedProcesses& all_;
  std::unique_ptr<platform::Process> inner_;
  bool ended_ = false;  // by the user
};

void WatchedProcesses::Begin() {
  cancelled_ = false;
  started_ = 0;
}

Result<std::unique_ptr<platform::Process>> WatchedProcesses::Start(
    const platform::ProgramCall& call) {
  auto process = inner_.Start(call);
  if (!process) return process;
  return std::unique_ptr<platform::Process>(new Watched(*this, std::move(process.Value())));
}

}  // namespace ostrand::desktop
