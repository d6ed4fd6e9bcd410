// The way from a key of the project file to the control that sets it.
#include "places/key_places.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "screens/setup_screens.h"
#include "support/script_session.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Goes one way through the screens and leaves them by Cancel.
class Walker : public ScreenHost {
 public:
  explicit Walker(const ScreenPlace& place) : place_(place) {}

  void ShowModal(Screen& screen) override {
    const ScreenStep& step = place_.steps.at(at_++);
    EXPECT_EQ(screen.Name(), step.screen);
    EXPECT_TRUE(TakeStep(screen, step)) << step.screen;
    if (at_ < place_.steps.size()) {
      Opener* opener = OpenerOf(screen, place_.steps[at_]);
      EXPECT_NE(opener, nullptr) << place_.steps[at_].screen << place_.steps[at_].which;
      found = opener != nullptr && !opener->Usable() && !opener->WhyDisabled.empty();
      if (opener != nullptr) opener->Press();
    } else {
      found = UsableControl(screen, place_.control) != nullptr;
    }
    screen.End(ModalResult::kCancel);
  }

  bool found = false;

 private:
  const ScreenPlace& place_;
  std::size_t at_ = 0;
};

// Keys that no screen sets: they are computed, the calculators', or were set with an older version.
const std::set<std::string> kWithoutScreen = {
    "Version",           "VersionLastSaved", "PCTime",          "Operator",
    "IDNumber",          "TcConfigOpts(1)",  "TcConfigOpts(2)", "TimeOffYearShow",
    "TimeOffMonthShow",  "TimeOffDayShow",   "TimeOffHourShow", "TimeOffMinShow",
    "TimeOffSecShow",    "TimeOffWkDayShow", "BatteryTime",     "PanelTime",
    "CanQuanta",         "CanSeg1",          "CanSeg2",         "CanMessageType",
    "CanPickDataFormat", "CanAutoSaveLists"};

TEST(KeyPlaces, LeadToTheControlOfEveryKeyOfEveryExample) {
  for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/examples")) {
    if (entry.path().extension() != ".VKG") continue;
    const std::string text = testing::ReadDisk(entry.path());
    testing::ScriptSession session(text);
    EXPECT_EQ(session.Play(""), "");
    std::string section;
    std::set<std::string> seen;
    for (std::string_view rest = text; !rest.empty();) {
      const std::string_view line = TakeLine(rest);
      if (line.starts_with("[")) section = line;
      const std::string key(line.substr(0, line.find('=')));
      if (line.find('=') == std::string_view::npos) continue;
      SCOPED_TRACE(entry.path().filename().string() + " " + section + " " + key);
      const ScreenPlace place = PlaceOfKey(section, key).screen;
      if (place.steps.empty()) {
        EXPECT_TRUE(kWithoutScreen.contains(key) || section.ends_with("CALCULATOR]"));
        continue;
      }
      // The same way once.
      std::string way = place.control;
      for (const ScreenStep& step : place.steps) {
        way += std::string(step.screen) + step.which + std::to_string(step.item);
      }
      if (!seen.insert(way).second) continue;
      Walker walker(place);
      ConnectSetupScreens(session.control, walker);
      const int button = ButtonOfScreen(place.steps.front().screen);
      ASSERT_GE(button, 0);
      session.control.Screens()[button]();
      EXPECT_TRUE(walker.found);
    }
    EXPECT_GT(seen.size(), 100U);
  }
}

}  // namespace
}  // namespace ostrand
