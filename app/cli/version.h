// Which program this is.
#pragma once

#include <string>

namespace ostrand::cli {

// Three lines: the version, the build, the commit.
std::string VersionText();

}  // namespace ostrand::cli
