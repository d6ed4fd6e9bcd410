// A session on files in memory with a user of some kind.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "session/ostrand.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/test_surroundings.h"

namespace ostrand::testing {

template <class Forms>
struct UserSession {
  // Of the arguments of the user.
  template <class... Arguments>
  explicit UserSession(Arguments&&... arguments) : forms(std::forward<Arguments>(arguments)...) {}

  // Opens the text of a project file. That enables the buttons of the screens that are connected.
  void Open(std::string project) {
    files.files["/new.VKG"] = std::move(project);
    bool cancelled = true;
    control.OpenFile("/new.VKG", cancelled);
    EXPECT_FALSE(cancelled);
  }
  std::string Text() { return ORVUS_GENFILE::ProjectFileText(*store, clock.Now()); }

  MemoryFileSystem files;
  FixedClock clock;
  Forms forms;
  TestSurroundings around{files, clock, forms, "/tmp/"};
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, around.all, nobodyListens};
};

}  // namespace ostrand::testing
