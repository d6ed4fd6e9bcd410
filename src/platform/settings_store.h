// Values of a user that outlive a project, by application, section and name.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/result.h"

namespace ostrand::platform {

struct Setting {
  std::string name;
  std::string value;
};

// Applications, sections and names are compared without regard to case. An application may
// name its place in several parts, separated by `\`. A store that cannot be read has no values and
// a notice; it never stops a session.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // All values of a section, read at one moment; empty when there are none.
  virtual std::vector<Setting> Read(std::string_view application, std::string_view section) = 0;
  // Replaces or adds these values, all of them or none; other values of the section stay. The
  // error names the place and the reason.
  virtual Result<> Write(std::string_view application, std::string_view section,
                         std::span<const Setting> values) = 0;
  // Notices for the user about the state of the store, each one once; empty for none.
  // Several are separated by CR LF.
  virtual std::string TakeNotice() = 0;
};

}  // namespace ostrand::platform
