// The settings of a command that writes nothing.
#pragma once

#include <string>
#include <vector>

#include "platform/settings_store.h"

namespace ostrand::cli {

// Settings to be read.
class UnchangedSettings final : public platform::SettingsStore {
 public:
  explicit UnchangedSettings(SettingsStore& inner) : inner_(inner) {}

  std::vector<platform::Setting> Read(std::string_view application,
                                      std::string_view section) override {
    return inner_.Read(application, section);
  }
  Result<> Write(std::string_view, std::string_view, std::span<const platform::Setting>) override {
    return Done{};
  }
  std::string TakeNotice() override { return inner_.TakeNotice(); }

 private:
  SettingsStore& inner_;
};

}  // namespace ostrand::cli
