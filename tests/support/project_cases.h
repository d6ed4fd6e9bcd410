// Test cases in text files: settings of a new project, and the expected result.
//
//   # A comment.
//   === What the case is about
//   [VOLTAGE BLOCKS] BlockCount=2; Reps(1-2)=3      both keys, Reps(1) and Reps(2)
//     Units(1)=Volts                                and more of the section
//   --- kind             of the following lines, defined by the reader of the cases
//   expected lines
//   +++                  further settings of the same project
//
// `<18x>` means 18 times `x` in every line. Blank lines at the end of a part are layout.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace ostrand::testing {

struct CaseStep {
  std::string kind;  // empty for settings
  std::vector<std::string> lines;
};

struct ProjectCase {
  std::string title;  // with its file and line
  std::vector<CaseStep> steps;
};

// The cases of a file, given relative to the folder of the tests.
std::vector<ProjectCase> ReadProjectCases(std::string_view name);

// Applies the settings like the project file. One without an effect fails the test, since it is
// misspelt or useless.
void TakeSettings(ProjectStore& store, const std::vector<std::string>& lines);

// Plays the cases of a file, each on a separate `Project`, which runs the steps.
template <class Project>
void PlayProjectCases(std::string_view name) {
  for (const ProjectCase& made : ReadProjectCases(name)) {
    SCOPED_TRACE(made.title);
    Project project;
    for (const CaseStep& step : made.steps) project.Take(step);
  }
}

}  // namespace ostrand::testing
