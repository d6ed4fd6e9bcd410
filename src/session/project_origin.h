// The file of a project, as a session knows it.
#pragma once

#include <string>

#include "platform/file_identity.h"
#include "projectfile/read_report.h"

namespace ostrand {

struct ProjectOrigin {
  std::string path;              // Ostrand::CurrentFileName
  platform::FileIdentity known;  // the file as last read or written
  ORVUS_GENFILE::ReadReport readReport;
};

}  // namespace ostrand
