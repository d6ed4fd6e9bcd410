// The version of the build.
#include "model/defaults.h"

namespace ostrand::ORVUS_COMMON {

constinit const std::string_view kModuleVersion = OSTRAND_VERSION;

}  // namespace ostrand::ORVUS_COMMON
