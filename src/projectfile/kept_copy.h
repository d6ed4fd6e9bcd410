// The old file of a project, kept before a save that drops lines of it.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "text/result.h"

namespace ostrand::ORVUS_GENFILE {

// Keeps a copy of the project file `path` when a reading skips lines of it, beside it as
// `path`.bak, or .bak.1 and so on where that name is taken: what is there already stays, and no
// link is followed. Gives the name of the copy; empty when nothing would be dropped. An error,
// naming the path, when the file can't be read or kept.
Result<std::string> KeepOldFile(platform::FileSystem& files, std::string_view path);

}  // namespace ostrand::ORVUS_GENFILE
