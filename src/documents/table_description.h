// The data table description: field by field what each stored column is.
#pragma once

#include <string>

#include "documents/document_head.h"
#include "model/store.h"
#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// The whole text of the description, lines ending in CR LF. The number of a field is that of its
// first column in a record, from 1, in the order of the program's data tables.
std::string TableDescriptionText(const ProjectStore& store, const DocumentHead& head);

// Writes it to `base` + ".VKD", in place of an old one; its folder is for the caller to sync. False
// when that failed, which has been reported then; the old file stays as it was.
bool WriteTableDescription(platform::FileSystem& files, platform::Forms& forms,
                           const std::string& base, const ProjectStore& store,
                           const DocumentHead& head);

}  // namespace ostrand
