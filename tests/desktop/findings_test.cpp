// From each finding of the checks to the control that sees to it.
#include <gtest/gtest.h>

#include <set>

#include "model/defaults.h"
#include "pages/checks_page.h"
#include "projectfile/genfile.h"
#include "screen_window.h"
#include "screens/setup_screens.h"
#include "support/project_cases.h"
#include "support/project_random.h"
#include "text/strings.h"
#include "texts.h"
#include "window_session.h"

namespace ostrand {
namespace {

class EachFinding : public testing::WindowTest {
 protected:
  EachFinding() {
    window_.show();
    window_.Pages()->setCurrentIndex(window_.Pages()->count() - 1);  // the checks
  }

  // Opens a file of the project, and double-clicks each finding that is on the page, once for each
  // kind of place.
  void clickAll(ProjectStore& store) {
    files_.files["/rig.VKG"] = ORVUS_GENFILE::ProjectFileText(store, platform::Moment{});
    ASSERT_TRUE(window_.Open("/rig.VKG"));
    const std::vector<desktop::CheckLine> lines = window_.Checks()->Lines();
    for (std::size_t row = 0; row < lines.size(); ++row) {
      const ScreenPlace& place = lines[row].screen;
      if (place.steps.empty()) continue;
      const std::string kind =
          std::string(place.steps.back().screen) + " " + place.control.substr(0, 6);
      if (!seen_.insert(kind + std::to_string(place.steps.size())).second) continue;
      SCOPED_TRACE(lines[row].text.toStdString() + " at " + lines[row].place.toStdString());
      click(static_cast<int>(row), place);
    }
  }

  void click(int row, const ScreenPlace& place) {
    bool came = false;
    const testing::EachTurn looker([&] {
      desktop::ScreenWindow* screen = window_.OpenScreen();
      if (screen == nullptr || window_.IsGuiding()) return;
      if (!came) {
        came = true;
        EXPECT_EQ(screen->Shown().Name(), place.steps.back().screen);
        const Control* focused = screen->Shown().Focused();
        const std::string name = focused == nullptr ? "none" : focused->Name();
        EXPECT_NE(("|" + place.control + "|").find("|" + name + "|"), std::string::npos)
            << name << " for " << place.control;
      }
      screen->reject();
    });
    emit window_.Checks()->itemDoubleClicked(window_.Checks()->topLevelItem(row), 1);
    const int button = ButtonOfScreen(place.steps.front().screen);
    // Otherwise the help line says why not.
    EXPECT_EQ(came, button < 0 || window_.Session().MainButtons().Enabled(button));
  }

  std::unique_ptr<ProjectStore> made_ = NewStore();
  std::set<std::string> seen_;  // kinds of places
};

TEST_F(EachFinding, OpensTheScreenWithItsControl) {
  for (const char* name : {"verify/cases/names.txt", "verify/cases/variables.txt",
                           "verify/cases/blocks_and_flags.txt", "lint/cases/notices.txt"}) {
    for (const auto& made : testing::ReadProjectCases(name)) {
      SCOPED_TRACE(made.title);
      made_ = NewStore();
      ORVUS_COMMON::SetAllDefaults(*made_);
      ORVUS_COMMON::SetLoggerConstants(*made_);
      for (const testing::CaseStep& step : made.steps) {
        if (step.kind.empty()) testing::TakeSettings(*made_, step.lines);
      }
      clickAll(*made_);
    }
  }
  for (std::uint32_t seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(*made_, seed);
    clickAll(*made_);
  }
  EXPECT_GT(seen_.size(), 40U);
}

}  // namespace
}  // namespace ostrand
