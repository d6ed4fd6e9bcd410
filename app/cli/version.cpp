#include "version.h"

#include "commit.h"
#include "model/defaults.h"

namespace ostrand::cli {

std::string VersionText() {
  return "ostrand " + std::string(ORVUS_COMMON::kModuleVersion) +
         "\nbuild: " OSTRAND_BUILD "\ncommit: " OSTRAND_COMMIT "\n";
}

}  // namespace ostrand::cli
