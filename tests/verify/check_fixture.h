// A new project for the checks, and a user with prepared answers.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "model/defaults.h"
#include "model/new_store.h"
#include "support/scripted_forms.h"
#include "verify/check_context.h"

namespace ostrand::testing {

using platform::Answer;

struct CheckedProject {
  CheckedProject() {
    ORVUS_COMMON::SetAllDefaults(store);
    ORVUS_COMMON::SetLoggerConstants(store);
  }

  // Blocks 1 to `count` of a group, of `reps` repetitions each.
  template <class Group>
  static void use(Group& group, int count, int reps) {
    group.BlockCount = static_cast<i16>(count);
    for (int b = 1; b <= count; ++b) group[b].Reps = static_cast<i16>(reps);
  }

  // Sets the scan interval in units.
  void scan(float time, i16 units) {
    store.Scan.ExecutionTime = time;
    store.Scan.ExecTimeUnits = units;
  }
  void table(int t, i32 interval, i16 units) {
    store.Tables[t].TableOn = kTrue;
    store.Tables[t].OutInt = interval;
    store.Tables[t].OutIntUnits = units;
  }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
  ScriptedForms forms;
  CalcVarRefs refs;
  CheckContext context{store, forms, 8191, refs};
};

class CheckTest : public ::testing::Test, protected CheckedProject {};

}  // namespace ostrand::testing
