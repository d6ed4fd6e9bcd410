// Writing a document to the disk.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// Writes the whole document to `path`, in place of an old one; its folder is for the caller to
// sync. When that fails the old one stays as it was, the failure is reported, and the result is
// false.
bool WriteDocument(platform::FileSystem& files, platform::Forms& forms, const std::string& path,
                   std::string_view bytes);

}  // namespace ostrand
