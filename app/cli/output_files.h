// The disk as the commands use it: outputs that would not change are left alone, or no output is
// written at all.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"
#include "platform/posix/posix_filesystem.h"

namespace ostrand::cli {

// The name of the project that comes from standard input.
inline constexpr std::string_view kStandardInputName = "stdin.VKG";

// A file of a project that a command has made.
struct Output {
  std::string path;
  bool exists = false;     // and would be replaced
  bool unchanged = false;  // but for date and time
  // Of outputs that are compared: the content on the disk, and the new one with its date and time.
  // Of outputs that are printed: the new content.
  std::string present = {};
  std::string content = {};
};

// All files but those of a project (.VKG .VKP .VKD .VKW) are as with PosixFileSystem, unless
// nothing is written: then the only ones that are written are those of the test compile.
class OutputFiles final : public platform::PosixFileSystem {
 public:
  OutputFiles(platform::Syncing syncing, Outputs outputs, bool force)
      : PosixFileSystem(syncing), outputs_(outputs), force_(force) {}

  // The bytes that kStandardInputName has.
  void TakeStandardInput(std::string bytes) { given_ = std::move(bytes); }

  // What was made since the last call.
  std::vector<Output> TakeMade() { return std::exchange(made_, {}); }
  // Whether the last output of that name was left alone.
  [[nodiscard]] bool LeftAlone(std::string_view path) const;

  bool Exists(std::string_view path) override;
  bool Taken(std::string_view path) override;
  std::string Find(std::string_view path) override;
  platform::Entry LookAt(std::string_view path) override;
  std::optional<platform::FileStamp> Stamp(std::string_view path) override;
  Result<std::string> Read(std::string_view path) override;
  Result<> ClearReadOnly(std::string_view path) override;
  bool Stays(const std::string& path, std::string_view bytes, bool replaces) override;
  Result<> Rename(std::string_view from, std::string_view to) override;
  Result<> RenameNew(std::string_view from, std::string_view to) override;
  Result<> Link(std::string_view from, std::string_view to) override;
  Result<> Delete(std::string_view path) override;
  Result<> SyncFolder(std::string_view path) override;
  Result<std::unique_ptr<platform::ProjectLock>> LockProject(
      std::string_view path, const platform::Waiting& waiting) override;
  Result<std::unique_ptr<platform::FolderLock>> LockFolder(std::string_view path) override;

 private:
  [[nodiscard]] bool isGiven(std::string_view path) const;
  [[nodiscard]] bool writes() const { return outputs_ == Outputs::kWritten; }

  Outputs outputs_;
  bool force_;
  std::optional<std::string> given_;
  std::vector<Output> made_;
};

}  // namespace ostrand::cli
