// Whether a file still has the content that was read from it or written to it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/filesystem.h"

namespace ostrand::platform {

struct FileIdentity {
  std::string path;                // as FileSystem::Target gives it; empty for no file
  bool exists = false;             // or was looked for and not found
  std::optional<FileStamp> stamp;  // from before the bytes were read; nothing when not known
  std::size_t size = 0;
  std::size_t hash = 0;
};

// Of a file that holds `bytes`.
FileIdentity IdentityOf(std::string path, std::string_view bytes,
                        std::optional<FileStamp> stamp = std::nullopt);

// Of the present file `path`; nothing when it cannot be read.
std::optional<FileIdentity> IdentityNow(FileSystem& files, const std::string& path);

// Whether both are one file by their names, however these and their folder are spelled.
bool SameFile(FileSystem& files, std::string_view one, std::string_view other);

// The identity of `path`, a name that Target gave, when it exists and has other content than
// `known`, which may also mean that there was no file. A file that is gone, was only touched or
// cannot be read counts as unchanged.
std::optional<FileIdentity> ChangedSince(FileSystem& files, const FileIdentity& known,
                                         const std::string& path);

}  // namespace ostrand::platform
