#include "support/memory_filesystem.h"

#include <algorithm>
#include <utility>

#include "text/strings.h"

namespace ostrand::testing {
namespace {

std::string diskName(std::string_view path) {
  std::string name(path);
  std::replace(name.begin(), name.end(), '\\', '/');
  return name;
}

Error failure(std::string_view path, std::string_view what) {
  return {std::string(path) + ": " + std::string(what)};
}

class MemoryFile : public platform::OutputFile {
 public:
  explicit MemoryFile(std::string& bytes) : bytes_(bytes) {}
  Result<> Write(std::string_view bytes) override {
    bytes_.append(bytes);
    return Done{};
  }
  Result<> Sync() override { return Done{}; }
  Result<> Close() override { return Done{}; }

 private:
  std::string& bytes_;
};

class FaultyFile : public platform::OutputFile {
 public:
  FaultyFile(FaultyFileSystem& files, std::string path, std::unique_ptr<platform::OutputFile> inner)
      : files_(files), path_(std::move(path)), inner_(std::move(inner)) {}
  Result<> Write(std::string_view bytes) override {
    if (!files_.Fails()) return inner_->Write(bytes);
    static_cast<void>(static_cast<bool>(inner_->Write(bytes.substr(0, bytes.size() / 2))));
    return failure(path_, "No space left on device");
  }
  Result<> Sync() override {
    return files_.Fails() ? Result<>(failure(path_, "Input/output error")) : inner_->Sync();
  }
  Result<> Close() override {
    return files_.Fails() ? Result<>(failure(path_, "Input/output error")) : inner_->Close();
  }

 private:
  FaultyFileSystem& files_;
  std::string path_;
  std::unique_ptr<platform::OutputFile> inner_;
};

}  // namespace

std::string MemoryFileSystem::Find(std::string_view path) {
  const std::string name = diskName(path);
  if (files.contains(name)) return name;
  for (const auto& [other, bytes] : files) {
    if (SameText(other, name)) return other;
  }
  return std::string(path);
}

bool MemoryFileSystem::Exists(std::string_view path) { return files.contains(Find(path)); }

platform::Entry MemoryFileSystem::LookAt(std::string_view path) {
  return files.contains(diskName(path)) ? platform::Entry::kFile : platform::Entry::kNone;
}

Result<std::string> MemoryFileSystem::Read(std::string_view path) {
  if (!Exists(path)) return failure(path, "No such file");
  return files[Find(path)];
}

Result<std::unique_ptr<platform::OutputFile>> MemoryFileSystem::Create(std::string_view path,
                                                                       std::string_view) {
  const std::string name = diskName(path);
  if (files.contains(name)) return failure(path, "File exists");
  return std::unique_ptr<platform::OutputFile>(std::make_unique<MemoryFile>(files[name]));
}

Result<> MemoryFileSystem::Rename(std::string_view from, std::string_view to) {
  const std::string source = Find(from);
  const auto found = files.find(source);
  if (found == files.end()) return failure(from, "No such file");
  std::string bytes = std::move(found->second);
  files.erase(found);
  files[diskName(to)] = std::move(bytes);
  steps.push_back("rename to " + diskName(to));
  return Done{};
}

Result<> MemoryFileSystem::Link(std::string_view from, std::string_view to) {
  if (!hasLinks) return failure(to, "Operation not permitted");
  if (LookAt(to) != platform::Entry::kNone) return failure(to, "File exists");
  files[diskName(to)] = files[diskName(from)];
  return Done{};
}

Result<> MemoryFileSystem::Delete(std::string_view path) {
  if (files.erase(Find(path)) == 0) return failure(path, "No such file");
  steps.push_back("delete " + diskName(path));
  return Done{};
}

Result<bool> MemoryFileSystem::MayReplace(std::string_view path) {
  const bool marked = readOnly.contains(Find(path));
  if (marked) return failure(path, "Permission denied");
  return files.contains(diskName(path));
}

Result<> MemoryFileSystem::ClearReadOnly(std::string_view path) {
  readOnly.erase(Find(path));
  return Exists(path) ? Result<>(Done{}) : failure(path, "No such file");
}

Result<> MemoryFileSystem::SyncFolder(std::string_view path) {
  steps.push_back("sync folder of " + diskName(path));
  return Done{};
}

bool FaultyFileSystem::Fails() {
  ++calls_;
  return calls_ == failAt_ || (staysBroken_ && calls_ > failAt_);
}

Result<std::string> FaultyFileSystem::Read(std::string_view path) {
  if (Fails()) return failure(path, "Input/output error");
  return inner_.Read(path);
}

Result<std::unique_ptr<platform::OutputFile>> FaultyFileSystem::Create(std::string_view path,
                                                                       std::string_view rightsOf) {
  if (Fails()) return failure(path, "Permission denied");
  auto created = inner_.Create(path, rightsOf);
  if (!created) return created;
  return std::unique_ptr<platform::OutputFile>(
      std::make_unique<FaultyFile>(*this, std::string(path), std::move(created.Value())));
}

Result<> FaultyFileSystem::Rename(std::string_view from, std::string_view to) {
  return Fails() ? Result<>(failure(from, "Permission denied")) : inner_.Rename(from, to);
}

Result<> FaultyFileSystem::Link(std::string_view from, std::string_view to) {
  return Fails() ? Result<>(failure(to, "Operation not permitted")) : inner_.Link(from, to);
}

Result<> FaultyFileSystem::Delete(std::string_view path) {
  return Fails() ? Result<>(failure(path, "Permission denied")) : inner_.Delete(path);
}

Result<> FaultyFileSystem::ClearReadOnly(std::string_view path) {
  return Fails() ? Result<>(failure(path, "Permission denied")) : inner_.ClearReadOnly(path);
}

Result<> FaultyFileSystem::SyncFolder(std::string_view path) {
  return Fails() ? Result<>(failure(path, "Input/output error")) : inner_.SyncFolder(path);
}

}  // namespace ostrand::testing
