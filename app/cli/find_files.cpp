#include "find_files.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "text/strings.h"

namespace ostrand::cli {
namespace {

bool isFolder(const std::string& path) {
  struct stat info = {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// A folder of the tree, not a link to one.
bool isOwnFolder(const std::string& path) {
  struct stat info = {};
  return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

class Walk {
 public:
  Walk(std::string_view extension, FoundFiles& found) : extension_(extension), found_(found) {}

  void Folder(const std::string& folder) {
    std::vector<std::string> names;
    if (!list(folder, names)) return;
    std::sort(names.begin(), names.end());
    const std::string within = folder.ends_with('/') ? folder : folder + '/';
    for (const std::string& name : names) {
      std::string path = within;
      path += name;
      if (isOwnFolder(path)) {
        Folder(path);
      } else if (hasExtension(name) && !isFolder(path)) {
        found_.files.push_back(std::move(path));
      }
    }
  }

 private:
  bool list(const std::string& folder, std::vector<std::string>& names) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), &::closedir);
    errno = entries ? 0 : errno;
    while (entries) {
      errno = 0;
      const dirent* entry = ::readdir(entries.get());
      if (entry == nullptr) break;
      if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
    }
    if (errno == 0) return true;
    ReportError(folder + ": " + std::strerror(errno));
    found_.complete = false;
    return false;
  }

  [[nodiscard]] bool hasExtension(std::string_view name) const {
    return name.size() > extension_.size() && EndsWithText(name, extension_);
  }

  std::string_view extension_;
  FoundFiles& found_;
};

// Whether a word names a folder and no file: "a" means a project "a.VKG" first.
bool isOnlyFolder(const std::string& path, std::string_view extension) {
  if (!isFolder(path)) return false;
  const bool isNamed = path.ends_with('/') || EndsWithText(path, extension);
  return isNamed || !platform::PosixFileSystem().Taken(path + std::string(extension));
}

}  // namespace

bool RefuseFolder(std::string_view path) {
  const bool refused = isOnlyFolder(std::string(path), ".VKG");
  if (refused) ReportError(std::string(path) + ": is a folder, not a project file");
  return refused;
}

FoundFiles FilesOf(const CommandLine& line, std::span<const std::string_view> words,
                   std::string_view extension) {
  FoundFiles found;
  for (const std::string_view word : words) {
    std::string path(word);
    if (line.takesFolders && !line.recursive && isOnlyFolder(path, extension)) {
      ReportError(path + ": is a folder; -r takes the " + std::string(extension) + " files in it");
      found.complete = false;
      continue;
    }
    if (!line.recursive || !isFolder(path)) {
      found.files.push_back(std::move(path));
      continue;
    }
    const std::size_t before = found.files.size();
    Walk(extension, found).Folder(path);
    if (found.files.size() == before && found.complete) {
      ReportError(path + ": no " + std::string(extension) + " files");
      found.complete = false;
    }
  }
  return found;
}

}  // namespace ostrand::cli
