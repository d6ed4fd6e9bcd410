// Folders for temporary files that no other program shares.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "text/result.h"

namespace ostrand::platform {

// A folder that exists while the object lives.
class WorkFolder {
 public:
  virtual ~WorkFolder() = default;
  [[nodiscard]] virtual const std::string& Path() const = 0;
  // Removes the folder with all that is in it. The error names it. So does destroying it, without
  // a report.
  virtual Result<> Remove() = 0;
};

class WorkFolders {
 public:
  virtual ~WorkFolders() = default;
  // Creates an empty folder in `parent`, under a random name, for this user alone.
  virtual Result<std::unique_ptr<WorkFolder>> Create(std::string_view parent) = 0;
};

}  // namespace ostrand::platform
