// Surroundings for measuring: a fixed clock, no disk, no settings, a user who is never asked or
// refuses everything.
#pragma once

#include <cstdio>
#include <cstdlib>

#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/quiet_forms.h"
#include "platform/surroundings.h"

namespace ostrand::bench {

class FixedClock : public platform::Clock {
 public:
  platform::Moment Now() override { return {2003, 3, 10, 14, 5, 0}; }
};

class NoFiles : public platform::FileSystem {
 public:
  bool Exists(std::string_view) override { return false; }
  std::string Find(std::string_view path) override { return std::string(path); }
  std::string WorkingFolder() override { return "/"; }
  Result<std::string> Read(std::string_view) override { return none(); }
  Result<std::unique_ptr<platform::OutputFile>> Create(std::string_view,
                                                       std::string_view) override {
    return none();
  }
  Result<> Rename(std::string_view, std::string_view) override { return none(); }
  Result<> Link(std::string_view, std::string_view) override { return none(); }
  Result<> Delete(std::string_view) override { return none(); }
  Result<> ClearReadOnly(std::string_view) override { return none(); }
  Result<> SyncFolder(std::string_view) override { return none(); }

 private:
  static Error none() { return {"no disk here"}; }
};

// A box in a measured run is an error of the measurement.
class SilentForms : public platform::QuietForms {
 public:
  platform::Answer ShowBox(const platform::MessageBox& box) override {
    std::fprintf(stderr, "unexpected box: %s\n%s\n", box.title.c_str(), box.text.c_str());
    std::abort();
  }
};

// A user who refuses everything.
class RefusingForms : public SilentForms {
 public:
  platform::Answer ShowBox(const platform::MessageBox& box) override {
    if (box.buttons == platform::Buttons::kOk) return platform::Answer::kOk;
    return box.buttons == platform::Buttons::kOkCancel ? platform::Answer::kCancel
                                                       : platform::Answer::kNo;
  }
};

class NoProcesses : public platform::Processes {
 public:
  Result<std::unique_ptr<platform::Process>> Start(const platform::ProgramCall&) override {
    return Error{"no processes here"};
  }
};

class NoSettings : public platform::SettingsStore {
 public:
  std::vector<platform::Setting> Read(std::string_view, std::string_view) override { return {}; }
  Result<> Write(std::string_view, std::string_view, std::span<const platform::Setting>) override {
    return Done{};
  }
  std::string TakeNotice() override { return {}; }
};

class NoRegistry : public platform::MachineRegistry {
 public:
  platform::RegistryReading Read(std::string_view, std::string_view, std::string_view) override {
    return {{}, platform::RegistryFailure::kOpenKey};
  }
  std::string TakeNotice() override { return {}; }
};

class Machine {
 public:
  platform::Surroundings Around() {
    return {files_, clock_, forms_, processes_, settings_, registry_, "/"};
  }

 private:
  NoFiles files_;
  FixedClock clock_;
  RefusingForms forms_;
  NoProcesses processes_;
  NoSettings settings_;
  NoRegistry registry_;
};

}  // namespace ostrand::bench
