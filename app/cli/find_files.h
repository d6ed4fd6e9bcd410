// The files of a command line: words, folders and standard input.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"

namespace ostrand::cli {

struct FoundFiles {
  std::vector<std::string> files;
  bool complete = true;  // what could not be listed has been reported
};

// These words of a line in their order. With -r a folder means the files with the extension,
// ".VKG", in it and in its folders, in the order of their bytes; hidden folders are left out, links
// to folders are not followed, so that a loop of them does no harm.
FoundFiles FilesOf(const CommandLine& line, std::span<const std::string_view> words,
                   std::string_view extension);

// Whether a path names a folder and no project file, which is reported then; for commands that take
// one project.
bool RefuseFolder(std::string_view path);

}  // namespace ostrand::cli
