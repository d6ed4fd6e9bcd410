// The date and time of writing in the files of a project.
#pragma once

#include <string>
#include <string_view>

namespace ostrand::cli {

// The content of a file with the date and time that `present` has, an older content of that file.
// `path` ends in the extension, which says where these are. Equal to `present` if the two differ in
// nothing else.
std::string WithMomentOf(std::string_view path, std::string_view content, std::string_view present);

}  // namespace ostrand::cli
