#include "documents/document_file.h"

#include "platform/atomic_file.h"

namespace ostrand {

bool WriteDocument(platform::FileSystem& files, platform::Forms& forms, const std::string& path,
                   std::string_view bytes) {
  const auto written = platform::WriteWhole(files, path, bytes, platform::FolderSync::kLater);
  if (!written) ReportDocument(forms, path, written.ErrorText());
  return static_cast<bool>(written);
}

void ReportDocument(platform::Forms& forms, const std::string& path, const std::string& diskError) {
  platform::MessageBox box;
  box.title = "FILE PROBLEM";
  box.text = "Permission denied to save " + path +
             "\r\nIt probably already exists and is set for \"Read Only\".  ";
  box.icon = platform::Icon::kExclamation;
  box.diskError = diskError;
  forms.ShowBox(box);
}

}  // namespace ostrand
