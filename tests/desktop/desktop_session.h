// A session with a new project for the windows.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <functional>
#include <set>
#include <string>

#include "places/key_places.h"
#include "qt_forms.h"
#include "screen_window.h"
#include "script/screen_catalog.h"
#include "support/script_session.h"
#include "support/temp_folder.h"

namespace ostrand::testing {

struct DesktopSession : InnerForms, UserSession<ScriptForms> {
  DesktopSession() : UserSession(inner) {}
  void OpenNew() { Open(kNewProject); }
  // Opens a copy of an example.
  void OpenExample(const std::string& name) {
    Open(ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + name + ".VKG"));
  }

  desktop::QtForms windows;
};

// Pages over a project, and the places that they would open.
class PageTest : public ::testing::Test {
 protected:
  ProjectStore& store() { return *session_.store; }
  void open(const std::string& example) { session_.OpenExample(example); }
  static void show(QWidget& page) {
    page.resize(900, 600);
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
  }

  DesktopSession session_;
  std::vector<ScreenPlace> opened_;
  std::function<void(const ScreenPlace&)> open_ = [this](const ScreenPlace& place) {
    opened_.push_back(place);
  };
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
