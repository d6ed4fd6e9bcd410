// A disk in memory, and one that fails at a chosen call.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/filesystem.h"

namespace ostrand::testing {

class MemoryFileSystem : public platform::FileSystem {
 public:
  std::map<std::string, std::string> files;  // by name, `\` as `/`
  std::set<std::string> readOnly;            // names of `files` with the read-only mark
  bool hasLinks = true;
  std::vector<std::string> steps;  // renames, deletions and syncs of folders

  bool Exists(std::string_view path) override;
  std::string Find(std::string_view path) override;
  platform::Entry LookAt(std::string_view path) override;
  std::string WorkingFolder() override { return "/"; }
  Result<std::string> Read(std::string_view path) override;
  Result<std::unique_ptr<platform::OutputFile>> Create(std::string_view path,
                                                       std::string_view rightsOf) override;
  Result<> Rename(std::string_view from, std::string_view to) override;
  Result<> Link(std::string_view from, std::string_view to) override;
  Result<> Delete(std::string_view path) override;
  Result<bool> MayReplace(std::string_view path) override;
  Result<> ClearReadOnly(std::string_view path) override;
  Result<> SyncFolder(std::string_view path) override;
};

// Passes all calls on; of those that can fail, the `failAt`-th (from 1) does, and with
// `staysBroken` all later ones too. A failing write leaves half of its bytes.
class FaultyFileSystem : public platform::FileSystem {
 public:
  FaultyFileSystem(platform::FileSystem& inner, int failAt, bool staysBroken = false)
      : inner_(inner), failAt_(failAt), staysBroken_(staysBroken) {}

  // Calls so far that could have failed.
  [[nodiscard]] int Calls() const { return calls_; }
  // Counts a call; true if it should fail.
  bool Fails();

  bool Exists(std::string_view path) override { return inner_.Exists(path); }
  std::string Find(std::string_view path) override { return inner_.Find(path); }
  std::string Target(std::string_view path) override { return inner_.Target(path); }
  platform::Entry LookAt(std::string_view path) override { return inner_.LookAt(path); }
  std::string WorkingFolder() override { return inner_.WorkingFolder(); }
  Result<std::string> Read(std::string_view path) override;
  Result<std::unique_ptr<platform::OutputFile>> Create(std::string_view path,
                                                       std::string_view rightsOf) override;
  Result<> Rename(std::string_view from, std::string_view to) override;
  Result<> Link(std::string_view from, std::string_view to) override;
  Result<> Delete(std::string_view path) override;
  Result<bool> MayReplace(std::string_view path) override { return inner_.MayReplace(path); }
  Result<> ClearReadOnly(std::string_view path) override;
  Result<> SyncFolder(std::string_view path) override;

 private:
  platform::FileSystem& inner_;
  int failAt_;
  bool staysBroken_;
  int calls_ = 0;
};

}  // namespace ostrand::testing
