// A session with a new project for the windows.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "qt_forms.h"
#include "script/screen_script.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "support/test_surroundings.h"

namespace ostrand::testing {

struct DesktopSession {
  // Enables the buttons of the screens that are connected.
  void OpenNew() {
    files.files["/new.VKG"] = "[GEN VERSION]\r\nVersion=6.0\r\n";
    bool cancelled = true;
    control.OpenFile("/new.VKG", cancelled);
    EXPECT_FALSE(cancelled);
  }
  std::string Bytes() { return ORVUS_GENFILE::ProjectFileText(*store, platform::Moment{}); }

  MemoryFileSystem files;
  FixedClock clock;
  desktop::QtForms windows;
  ScriptedForms inner;  // fails the test when a box reaches it
  ScriptForms forms{inner};
  TestSurroundings around{files, clock, forms, "/tmp/"};
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, around.all, nobodyListens};
};

}  // namespace ostrand::testing
