// The data table description: the meaning of each stored column, field by field.
#pragma once

#include <string>

#include "documents/document_head.h"
#include "model/store.h"
#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// The whole text of the description, lines ending in CR LF. A field's number is that of its first
// column in a record, from 1, in the order of the program's data tables.
std::string TableDescriptionText(const ProjectStore& store, const DocumentHead& head);

// Writes it to `base` + ".VKD", replacing an old one; the caller syncs the folder. On failure
// reports it, returns false and leaves the old file unchanged.
bool WriteTableDescription(platform::FileSystem& files, platform::Forms& forms,
                           const std::string& base, const ProjectStore& store,
                           const DocumentHead& head);

}  // namespace ostrand
