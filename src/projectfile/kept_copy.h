// The old file of a project, kept before a save that drops lines of it.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "text/result.h"

namespace ostrand::ORVUS_GENFILE {

// If a reading skips lines of the project file `path`, copies it to `path`.bak, or .bak.1 and so on
// if that name is taken: existing files stay, and no link is followed. Returns the name of the
// copy; empty if nothing would be dropped. An error, naming the path, if the file can't be read or
// kept.
Result<std::string> KeepOldFile(platform::FileSystem& files, std::string_view path);

}  // namespace ostrand::ORVUS_GENFILE
