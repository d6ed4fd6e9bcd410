// A project set up in code and the lines of its program.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "generator/savedld.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "support/scripted_forms.h"

namespace ostrand::testing {

using Lines = std::vector<std::string>;

// The lines of a file; every one must end in CR LF.
inline Lines LinesOf(std::string_view bytes) {
  Lines lines;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find("\r\n");
    if (end == std::string_view::npos) {
      ADD_FAILURE() << "No line end after: " << bytes;
      break;
    }
    lines.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(end + 2);
  }
  return lines;
}

// A line with its comment in column 66.
inline std::string At66(std::string line, std::string_view comment) {
  line.resize(65, ' ');
  return line.append(comment);
}

// Replaces "~" before a comment by blanks up to column 66; other texts are unchanged.
inline std::string Filled(const std::string& text) {
  const std::size_t tilde = text.find('~');
  if (tilde == std::string::npos) return text;
  return At66(text.substr(0, tilde), std::string_view(text).substr(tilde + 1));
}

// A new project and its generator.
class ProgramMaker {
 public:
  ProgramMaker() { ORVUS_COMMON::SetAllDefaults(store); }

  // Expects a failure that the next run reports under the routine.
  void ExpectFault(int number, std::string_view description, std::string_view routine) {
    forms.ExpectBox("TROUBLE", "Unexpected error " + std::to_string(number) + ", \"" +
                                   std::string(description) + "\" has occurred in SAVEDLD." +
                                   std::string(routine) +
                                   ".\r\n Press \"OK\" and the program will continue.");
  }

  void MakeProgram() { program = LinesOf(generator.ProgramText()); }

  // Expects these consecutive lines in the program; "~" as in Filled.
  void ExpectRun(Lines expected) const {
    for (std::string& line : expected) line = Filled(line);
    const auto at = std::search(program.begin(), program.end(), expected.begin(), expected.end());
    if (at != program.end()) return;
    const auto joined = [](auto from, auto to) {
      std::string text;
      for (; from != to; ++from) text += *from + "\n";
      return text;
    };
    const auto first = std::find(program.begin(), program.end(), expected.front());
    const auto last = first + std::min<std::ptrdiff_t>(60, program.end() - first);
    ADD_FAILURE() << "Wanted:\n"
                  << joined(expected.begin(), expected.end()) << "Found:\n"
                  << joined(first, last);
  }

  // The number of lines that contain the part.
  [[nodiscard]] std::ptrdiff_t Holding(std::string_view part) const {
    return std::count_if(program.begin(), program.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos;
    });
  }

  std::unique_ptr<ProjectStore> storage = NewStore();
  ProjectStore& store = *storage;
  ScriptedForms forms;
  platform::PosixFileSystem files;
  platform::PosixClock clock;
  SAVEDLD generator{store, files, clock, forms};
  Lines program;
};

class Generated : public ::testing::Test, protected ProgramMaker {};

}  // namespace ostrand::testing
