// Folders and file titles. Both `\` and `/` separate folders.
#pragma once

#include <string>
#include <string_view>

namespace ostrand::platform {

struct SplitPath {
  std::string folder;  // with its trailing separator, empty for a bare name
  std::string title;   // what follows the last separator
};

SplitPath Split(std::string_view path);

// The path without the last extension of its title.
std::string_view WithoutExtension(std::string_view path);

// The folder with a trailing separator: `\`, or `/` for one that holds `/` and no `\`. An empty
// folder stays empty.
std::string WithSeparator(std::string_view folder);

}  // namespace ostrand::platform
