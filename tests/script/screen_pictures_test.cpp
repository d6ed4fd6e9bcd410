// Every screen as its controls describe it: captions, headings, and the drawing of a host.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <string>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/numeric_field.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "script/screen_catalog.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "support/text_host.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

const std::string kGolden = OSTRAND_SOURCE_DIR "/tests/golden/screens/";

// Visits each screen of the sample project.
class Screens : public ::testing::Test {
 protected:
  void visit(const std::function<void(Screen&)>& look) {
    MakeCatalogProject(control_.Store());
    VisitScreens(control_, look);
  }

  // Each screen on its first visit.
  void visitOnce(const std::function<void(Screen&)>& look) {
    std::set<std::string> seen;
    visit([&](Screen& screen) {
      if (seen.insert(screen.Name()).second) look(screen);
    });
    EXPECT_EQ(seen.size(), 41U);
  }

  // Compares the text with the golden file, or writes it with OSTRAND_RENEW_GOLDEN.
  static void expectGolden(const std::string& name, const std::string& text) {
    if (std::getenv("OSTRAND_RENEW_GOLDEN") != nullptr) {
      std::ofstream(kGolden + name, std::ios::binary) << text;
    }
    EXPECT_EQ(text, testing::ReadDisk(kGolden + name)) << name;
  }

 private:
  testing::MemoryFileSystem disk_;
  testing::FixedClock clock_;
  testing::ScriptedForms forms_;
  OstrandEvents nobodyListens_;
  std::unique_ptr<ProjectStore> store_ = NewStore();
  testing::TestSurroundings machine_{disk_, clock_, forms_, "/tmp"};
  Ostrand control_{*store_, machine_.all, nobodyListens_};
};

// "OutIntUnits", but not "PC Card" or "TK40M".
bool isKey(const std::string& caption) {
  for (std::size_t at = 1; at + 1 < caption.size(); ++at) {
    const auto is = [&](std::size_t place, int (*kind)(int)) {
      return kind(static_cast<unsigned char>(caption[place])) != 0;
    };
    if (is(at - 1, std::islower) && is(at, std::isupper) && is(at + 1, std::islower)) return true;
  }
  return false;
}

TEST_F(Screens, ControlsHaveHeadingAndCaption) {
  visit([](const Screen& screen) {
    EXPECT_NE(screen.Caption, "") << screen.Name();
    for (const Control* control : screen.Controls()) {
      const std::string name = screen.Name() + "." + control->Name();
      EXPECT_NE(control->Group, "") << name;
      // An empty label needs no caption.
      const bool blank = control->Kind() == ControlKind::kLabel && control->Text().empty();
      EXPECT_TRUE(blank || !control->Caption.empty()) << name;
      // The system's own captions.
      const std::set<std::string> given = {"Each:", "Block:", "MeasPerEx"};
      if (given.contains(control->Caption)) continue;
      EXPECT_FALSE(isKey(control->Caption)) << name << ": " << control->Caption;
      EXPECT_FALSE(control->Caption.ends_with(":")) << name << ": " << control->Caption;
    }
  });
}

TEST_F(Screens, DisabledControlsHaveReason) {
  visit([](const Screen& screen) {
    for (const Control* control : screen.Controls()) {
      if (control->Enabled || !control->Visible) continue;
      EXPECT_NE(control->WhyDisabled, "") << screen.Name() << "." << control->Name();
    }
  });
}

TEST_F(Screens, MatchTheirDrawings) {
  visitOnce([](const Screen& screen) {
    expectGolden(screen.Name() + ".txt", testing::DrawScreen(screen));
  });
}

std::string listingOf(const Control& control) {
  std::string line = control.Name() + " | " + control.Group + " | " + control.Caption;
  if (control.Row > 0) line += " | row " + NumberText(control.Row);
  if (const auto* number = dynamic_cast<const NumericField*>(&control)) {
    line += " | " + NumberText(number->Min()) + " to " + NumberText(number->Max());
  }
  if (const auto* list = dynamic_cast<const ListField*>(&control)) {
    line += " |" + ItemsText(list->Items);
  }
  if (const auto* choice = dynamic_cast<const Choice*>(&control)) {
    line += " |";
    for (const Choice::Item& item : choice->Items) {
      line += " " + item.Text + (item.Enabled ? "" : " off") + (item.Visible ? "" : " hidden");
      if (!item.ToolTip.empty()) line += " {" + item.ToolTip + "}";
    }
  }
  if (!control.Visible) line += " | hidden";
  if (!control.Enabled) line += " | disabled: " + control.WhyDisabled;
  if (!control.ToolTip.empty()) line += " | tip: " + control.ToolTip;
  return line + "\n";
}

TEST_F(Screens, AreListedWithCaptionsTipsLimitsAndItems) {
  std::string listing;
  visitOnce([&](const Screen& screen) {
    listing += "== " + screen.Name() + " " + screen.Caption + "\n";
    // The rows of a table are alike.
    for (const Control* control : screen.Controls()) {
      if (control->Row > 3) continue;
      listing += listingOf(*control);
    }
  });
  expectGolden("listing.txt", Utf8FromWindows1252(listing));
}

}  // namespace
}  // namespace ostrand
