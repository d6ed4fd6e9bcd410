// Writing a document to the disk.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// Writes the whole document to `path`, in place of an old one. When that fails the old one stands
// as it was, the user is told, and the result is false.
bool WriteDocument(platform::FileSystem& files, platform::Forms& forms, const std::string& path,
                   std::string_view bytes);

}  // namespace ostrand
