// The machine of a command that writes nothing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/filesystem.h"
#include "platform/settings_store.h"

namespace ostrand::cli {

// A disk to be read. Writes succeed without an effect.
class UnchangedFiles final : public platform::FileSystem {
 public:
  explicit UnchangedFiles(FileSystem& inner) : inner_(inner) {}

  bool Exists(std::string_view path) override { return inner_.Exists(path); }
  bool Taken(std::string_view path) override { return inner_.Taken(path); }
  std::string Find(std::string_view path) override { return inner_.Find(path); }
  std::string Target(std::string_view path) override { return inner_.Target(path); }
  platform::Entry LookAt(std::string_view path) override { return inner_.LookAt(path); }
  std::optional<platform::FileStamp> Stamp(std::string_view path) override {
    return inner_.Stamp(path);
  }
  bool SameFolder(std::string_view one, std::string_view other) override {
    return inner_.SameFolder(one, other);
  }
  std::string WorkingFolder() override { return inner_.WorkingFolder(); }
  Result<std::string> Read(std::string_view path) override { return inner_.Read(path); }
  std::uint64_t Size(std::string_view path) override { return inner_.Size(path); }
  Result<bool> MayReplace(std::string_view path) override { return inner_.MayReplace(path); }

  Result<std::unique_ptr<platform::OutputFile>> Create(std::string_view path,
                                                       std::string_view rightsOf) override;
  Result<> Rename(std::string_view, std::string_view) override { return Done{}; }
  Result<> RenameNew(std::string_view, std::string_view) override { return Done{}; }
  Result<> Link(std::string_view, std::string_view) override { return Done{}; }
  Result<> Delete(std::string_view) override { return Done{}; }
  Result<> ClearReadOnly(std::string_view) override { return Done{}; }
  Result<> SyncFolder(std::string_view) override { return Done{}; }

 private:
  FileSystem& inner_;
};

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
