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
      ADD_FAILURE() << "No end of line behind: " << bytes;
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

// A title with its bars of underscores.
inline std::string Bars(std::string_view start, std::size_t bar, std::string_view title) {
  const std::string bars(bar, '_');
  return std::string(start) + "'" + bars + std::string(title) + bars;
}

class Generated : public ::testing::Test {
 protected:
  Generated() { ORVUS_COMMON::SetAllDefaults(store); }

  // A failure that the next run reports under the routine.
  void ExpectFault(int number, std::string_view description, std::string_view routine) {
    forms.ExpectBox("TROUBLE", "Unexpected error " + std::to_string(number) + ", \"" +
                                   std::string(description) + "\" has occurred in SAVEDLD." +
                                   std::string(routine) +
                                   ".\r\n Press \"OK\" and the program will continue.");
  }

  void Run() { program = LinesOf(generator.ProgramText()); }

  [[nodiscard]] long Count(std::string_view line) const {
    return std::count(program.begin(), program.end(), line);
  }

  // The program holds these lines one behind the other.
  void ExpectRun(const Lines& expected) const {
    const auto at = std::search(program.begin(), program.end(), expected.begin(), expected.end());
    if (at != program.end()) return;
    const auto first = std::find(program.begin(), program.end(), expected.front());
    std::string found;
    for (auto line = first; line != program.end() && line < first + 60; ++line) {
      found += *line + "\n";
    }
    std::string wanted;
    for (const std::string& line : expected) wanted += line + "\n";
    ADD_FAILURE() << "Wanted:\n" << wanted << "Found:\n" << (found.empty() ? "nothing" : found);
  }

  // The same, the lines parted by "|", and "~" for the blanks up to the comment in column 66.
  void ExpectText(const std::string& text) const {
    Lines lines(1);
    for (const char c : text) {
      if (c == '|') {
        lines.emplace_back();
      } else if (c == '~') {
        lines.back().resize(65, ' ');
      } else {
        lines.back() += c;
      }
    }
    ExpectRun(lines);
  }

  // Whether some line holds the part.
  [[nodiscard]] bool AnyHolds(std::string_view part) const {
    return std::any_of(program.begin(), program.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos;
    });
  }

  // The program tells that it went on to its end.
  void ExpectEnd() const { ASSERT_EQ(program.back(), "'***** Program End *****"); }

  std::unique_ptr<ProjectStore> storage = NewStore();
  ProjectStore& store = *storage;
  ScriptedForms forms;
  platform::PosixFileSystem files;
  platform::PosixClock clock;
  SAVEDLD generator{store, files, clock, forms};
  Lines program;
};

inline constexpr char kSubscript[] = "Subscript out of range";
inline constexpr char kBadCall[] = "Invalid procedure call or argument";
inline constexpr char kNextScan[] = "   Next Scan~'Loop up for the next scan";
inline constexpr char kEndProg[] = "EndProg~'Program ends here||'***** Program End *****";

}  // namespace ostrand::testing
