// Cases in text files: what a user sets in a new project, and what is expected of it.
//
//   # A comment.
//   === What the case is about
//   [VOLTAGE BLOCKS] BlockCount=2; Reps(1-2)=3      both keys, Reps(1) and Reps(2)
//     Units(1)=Volts                                and more of the section
//   --- kind             of the lines behind it, as the reader of the cases knows it
//   what is expected
//   +++                  further settings of the same project
//
// `<18x>` stands for 18 times `x` in every line. Blank lines at the end of a part are layout.
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

// The cases of a file, named from the folder of the tests on.
std::vector<ProjectCase> ReadProjectCases(std::string_view name);

// Takes the settings as the project file does. One without an effect fails the test, since it is
// misspelt or says nothing.
void TakeSettings(ProjectStore& store, const std::vector<std::string>& lines);

// Plays the cases of a file, each on a `Project` of its own, which takes the steps.
template <class Project>
void PlayProjectCases(std::string_view name) {
  for (const ProjectCase& made : ReadProjectCases(name)) {
    SCOPED_TRACE(made.title);
    Project project;
    for (const CaseStep& step : made.steps) project.Take(step);
  }
}

}  // namespace ostrand::testing
