// Writes a document to the disk.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// Writes the whole document to `path`, replacing an old one; the caller syncs the folder, and
// commits a batch. On failure the old file is unchanged, the failure is reported, and the result is
// false.
bool WriteDocument(platform::FileSystem& files, platform::Forms& forms, const std::string& path,
                   std::string_view bytes);

// Reports that the document could not be written.
void ReportDocument(platform::Forms& forms, const std::string& path, const std::string& diskError);

}  // namespace ostrand
