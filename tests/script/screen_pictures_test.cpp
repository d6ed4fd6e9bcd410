// Every screen as its controls describe it: captions, headings, and the drawing of a host.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/numeric_field.h"
#include "script/screen_catalog.h"
#include "support/script_session.h"
#include "support/temp_folder.h"
#include "support/text_host.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

const std::string kGolden = OSTRAND_SOURCE_DIR "/tests/golden/screens/";

// Compares the text with the golden file, or writes it with OSTRAND_RENEW_GOLDEN.
void expectGolden(const std::string& name, const std::string& text) {
  if (std::getenv("OSTRAND_RENEW_GOLDEN") != nullptr) {
    std::ofstream(kGolden + name, std::ios::binary) << text;
  }
  EXPECT_EQ(text, testing::ReadDisk(kGolden + name)) << name;
}

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

void expectExplained(const Screen& screen) {
  EXPECT_NE(screen.Caption, "") << screen.Name();
  for (const Control* control : screen.Controls()) {
    const std::string name = screen.Name() + "." + control->Name();
    EXPECT_NE(control->Group, "") << name;
    EXPECT_TRUE(control->Enabled || !control->Visible || !control->WhyDisabled.empty()) << name;
    // An empty label needs no caption.
    const bool blank = control->Kind() == ControlKind::kLabel && control->Text().empty();
    EXPECT_TRUE(blank || !control->Caption.empty()) << name;
    // The system's own captions.
    const std::set<std::string> given = {"Each:", "Block:", "MeasPerEx"};
    if (given.contains(control->Caption)) continue;
    EXPECT_FALSE(isKey(control->Caption)) << name << ": " << control->Caption;
    EXPECT_FALSE(control->Caption.ends_with(":")) << name << ": " << control->Caption;
  }
}

std::string listingOf(const Control& control) {
  std::string line = control.Name() + " | " + control.Group + " | " + control.Caption;
  if (control.Row > 0) line += " | row " + NumberText(control.Row);
  if (const auto* number = dynamic_cast<const NumericField*>(&control)) {
    line += " | " + NumberText(number->Min()) + " to " + NumberText(number->Max());
  }
  if (const auto* list = dynamic_cast<const ListField*>(&control)) {
    line += " |" + ItemsText(list->Items.All());
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

TEST(Screens, MatchTheirListingAndDrawings) {
  testing::ScriptSession session;
  MakeCatalogProject(*session.store);
  std::set<std::string> seen;
  std::string listing;
  VisitScreens(session.control, [&](const Screen& screen) {
    expectExplained(screen);
    if (!seen.insert(screen.Name()).second) return;
    expectGolden(screen.Name() + ".txt", testing::DrawScreen(screen));
    listing += "== " + screen.Name() + " " + screen.Caption + "\n";
    // The rows of a table are alike.
    for (const Control* control : screen.Controls()) {
      if (control->Row <= 3) listing += listingOf(*control);
    }
  });
  EXPECT_EQ(seen.size(), 41U);
  expectGolden("listing.txt", Utf8FromWindows1252(listing));
}

}  // namespace
}  // namespace ostrand
