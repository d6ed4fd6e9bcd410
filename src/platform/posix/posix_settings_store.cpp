#include "platform/posix/posix_settings_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/paths.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/system_error.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::platform {
namespace {

constexpr int kMaxDamaged = 100;

std::string sectionOf(std::string_view application, std::string_view section) {
  return std::string(application).append("\\").append(section);
}

// Creates the missing folders of `path`, for the user alone. Existing ones stay unchanged.
Result<> makeFolders(const std::string& path) {
  for (std::size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1)) {
    const std::string folder = path.substr(0, at);
    if (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) continue;
    const int number = errno;  // an existing folder may be on a disk that cannot be written
    struct stat info {};
    if (::stat(folder.c_str(), &info) != 0) return SystemError(folder, number);
  }
  return Done{};
}

// The file to replace: of a symbolic link its target, and not the link.
Result<std::string> targetOf(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                         &std::free);
  if (real != nullptr) return std::string(real.get());
  if (errno == ENOENT) return path;
  return SystemError(path, errno);
}

// Whether the file already holds all the values, so that nothing needs to be written.
bool holdsAll(const SettingsFile& file, std::string_view section, std::span<const Setting> values) {
  return file.damage.empty() && file.unread.empty() &&
         std::all_of(values.begin(), values.end(), [&](const Setting& row) {
           const auto there = file.text.Find(section, row.name);
           return there && there->text == row.value;
         });
}

// Keeps other writers of the settings out while it lives, of this process and of others.
class WriteLock {
 public:
  WriteLock() = default;
  ~WriteLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;

  // Errors name `path`, the settings file.
  Result<> Take(const std::string& path) {
    const SplitPath parts = Split(path);
    const std::string name = parts.folder + "." + parts.title + ".lock";
    descriptor_ = ::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor_ < 0) return SystemError(path, errno);
    return LockOpened(descriptor_, path, "Another program keeps the settings locked");
  }

 private:
  int descriptor_ = -1;
};

// Revokes other users' access to a file that is not rewritten. A failure here happens again, and
// is reported, at the next change.
void closeToOthers(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) == 0 && (info.st_mode & 077) != 0) {
    static_cast<void>(::chmod(path.c_str(), 0600));
  }
}

}  // namespace

PosixSettingsStore::PosixSettingsStore(FileSystem& files, std::string path)
    : files_(files), path_(std::move(path)), reader_(files, path_) {}

const SettingsFile& PosixSettingsStore::load() {
  const SettingsFile& file = reader_.Now();
  for (const std::string& why : {file.damage, file.unread}) {
    if (why.empty()) continue;
    notices_.Add("The settings cannot be read, the defaults are in use: " + why);
  }
  if (!file.strange.empty()) {
    notices_.Add("A line of the settings is not understood and is ignored: " + file.strange);
  }
  return file;
}

std::vector<Setting> PosixSettingsStore::Read(std::string_view application,
                                              std::string_view section) {
  const std::string place = sectionOf(application, section);
  const SettingsFile& file = load();
  unread_[Upper(place)] = file.unread;
  return file.text.Rows(place);
}

Result<> PosixSettingsStore::Write(std::string_view application, std::string_view section,
                                   std::span<const Setting> values) {
  if (path_.empty()) {
    return Error{"No folder for settings: neither XDG_CONFIG_HOME nor HOME is set"};
  }
  const std::string place = sectionOf(application, section);
  if (const std::string& why = unread_[Upper(place)]; !why.empty()) return Error{why};
  if (const SettingsFile& file = load(); holdsAll(file, place, values)) {
    closeToOthers(path_);
    return Done{};
  }
  if (auto made = makeFolders(path_); !made) return made;
  WriteLock lock;
  if (auto taken = lock.Take(path_); !taken) return taken;
  SettingsFile file = LoadSettingsFile(files_, path_);
  if (!file.unread.empty()) return Error{file.unread};
  return replace(file, place, values);
}

Result<> PosixSettingsStore::replace(SettingsFile& file, std::string_view section,
                                     std::span<const Setting> values) {
  for (const Setting& row : values) {
    if (auto set = file.text.Set(section, row.name, row.value); !set) return set;
  }
  const std::string bytes = file.text.Bytes();
  if (bytes.size() > SettingsText::kMaxBytes) return SystemError(path_, EFBIG);
  const auto target = targetOf(path_);
  if (!target) return Error{target.ErrorText()};
  if (!file.damage.empty()) {
    if (auto moved = moveAside(target.Value()); !moved) return moved;
  }
  return WriteWhole(files_, target.Value(), bytes);
}

Result<> PosixSettingsStore::moveAside(const std::string& path) {
  for (int number = 1; number <= kMaxDamaged; ++number) {
    std::string aside = path + ".damaged";
    if (number > 1) aside += "-" + NumberText(number);
    if (files_.Taken(aside)) continue;
    if (auto renamed = files_.Rename(path, aside); !renamed) return renamed;
    notices_.Add("The damaged settings are kept as " + aside);
    return Done{};
  }
  return Error{path + ": Too many damaged settings beside it"};
}

}  // namespace ostrand::platform
