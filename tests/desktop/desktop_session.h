// A session with a new project for the windows.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "qt_forms.h"
#include "screen_window.h"
#include "script/screen_catalog.h"
#include "script/screen_script.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
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
  // Opens a copy of an example.
  void OpenExample(const std::string& name) {
    files.files["/cell.VKG"] = ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + name + ".VKG");
    bool cancelled = true;
    control.OpenFile("/cell.VKG", cancelled);
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

// Opens the window of each screen.
class WindowsTest : public ::testing::Test {
 protected:
  // Once for each screen that the project has, or for the one of that name; returns how many.
  std::size_t visitAll(const std::function<void(desktop::ScreenWindow&)>& look,
                       const std::string& only = {}) {
    std::set<std::string> seen;
    VisitScreens(session_.control, [&](Screen& screen) {
      if (!only.empty() && screen.Name() != only) return;
      if (!seen.insert(screen.Name()).second) return;
      desktop::ScreenWindow window(screen, session_.windows, nullptr);
      window.show();
      ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
      ASSERT_TRUE(QTest::qWaitFor([&] { return window.IsComplete(); }));
      // One layout asks for the next.
      for (int pass = 0; pass < 3; ++pass) QApplication::processEvents();
      SCOPED_TRACE(screen.Name());
      look(window);
    });
    return seen.size();
  }

  DesktopSession session_;
};

}  // namespace ostrand::testing
