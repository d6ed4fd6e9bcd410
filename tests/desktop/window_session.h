// The main window on files in memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "main_window.h"
#include "model/new_store.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/test_surroundings.h"

namespace ostrand::testing {

class WindowTest : public ::testing::Test {
 protected:
  MemoryFileSystem files_;
  FixedClock clock_;
  desktop::QtForms forms_;
  TestSurroundings around_{files_, clock_, forms_, "/tmp/"};
  std::unique_ptr<ProjectStore> store_ = NewStore();
  desktop::MainWindow window_{*store_, around_.all, forms_};
};

}  // namespace ostrand::testing
