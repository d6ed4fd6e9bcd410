#include "documents/document_file.h"

#include "platform/atomic_file.h"

namespace ostrand {

bool WriteDocument(platform::FileSystem& files, platform::Forms& forms, const std::string& path,
                   std::string_view bytes) {
  const auto written = platform::WriteWhole(files, path, bytes, platform::FolderSync::kLater);
  if (written) return true;
  platform::MessageBox box;
  box.title = "FILE PROBLEM";
  box.text = "Permission denied to save " + path +
             "\r\nIt probably already exists and is set for \"Read Only\".  ";
  box.icon = platform::Icon::kExclamation;
  box.diskError = written.ErrorText();
  forms.ShowBox(box);
  return false;
}

}  // namespace ostrand
