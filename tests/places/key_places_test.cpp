// The way from a key of the project file to the control that sets it.
#include "places/key_places.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "model/defaults.h"
#include "projectfile/genfile.h"
#include "screens/setup_screens.h"
#include "support/project_cases.h"
#include "support/project_random.h"
#include "support/script_session.h"
#include "support/temp_folder.h"
#include "text/strings.h"
#include "verify/pick_var_checks.h"
#include "verify/verify_before_save.h"

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
      if (opener != nullptr && opener->Usable()) opener->Press();
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

TEST(KeyPlaces, HaveWordsForEveryKeyThatIsWritten) {
  const auto store = NewStore();
  for (std::uint32_t seed = 1; seed <= 30; ++seed) {
    testing::MakeRandomProject(*store, seed);
    const std::string text = ORVUS_GENFILE::ProjectFileText(*store, platform::Moment{});
    std::string section;
    for (std::string_view rest = text; !rest.empty();) {
      const std::string_view line = TakeLine(rest);
      const std::size_t equal = line.find('=');
      if (line.starts_with("[") && equal == std::string_view::npos) section = line;
      if (equal == std::string_view::npos) continue;
      const std::string key(line.substr(0, equal));
      const KeyPlace place = PlaceOfKey(section, key);
      const bool ofSave = key == "PCTime" || key == "VersionLastSaved";
      ASSERT_TRUE(ofSave || (place.words != key && !place.words.empty())) << section << key;
    }
  }
}

// The titles that the sources of the checks have.
std::set<std::string> titlesOfChecks() {
  std::set<std::string> titles;
  for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/src/verify")) {
    const std::string source = testing::ReadDisk(entry.path());
    constexpr std::string_view kMark = "Title = \"";
    for (std::size_t at = source.find(kMark); at != std::string::npos;
         at = source.find(kMark, at)) {
      at += kMark.size();
      titles.insert(source.substr(at, source.find_first_of("\"\\", at) - at));
    }
  }
  return titles;
}

// The findings of a project lead to screens that hold the control; adds their titles.
void followFindings(ProjectStore& project, std::set<std::string>& titles) {
  testing::ScriptedForms forms;
  const CalcVarRefs refs = CollectCalcVarRefs(project);
  Findings findings = CheckAll({project, forms, -1, refs});
  Append(findings, LostFormulaVariables(project, VarPickList(project), {{"Lost"}}));
  testing::ScriptSession session(ORVUS_GENFILE::ProjectFileText(project, platform::Moment{}));
  EXPECT_EQ(session.Play(""), "");
  *session.store = project;
  for (const Finding& finding : findings) {
    SCOPED_TRACE(finding.text + " " + std::string(finding.section) + finding.key);
    const ScreenPlace place = PlaceOfKey(finding.section, finding.key).screen;
    ASSERT_FALSE(place.steps.empty());
    Walker walker(place);
    ConnectSetupScreens(session.control, walker);
    session.control.Screens()[ButtonOfScreen(place.steps.front().screen)]();
    EXPECT_TRUE(walker.found);
    titles.insert(std::string(finding.title.substr(0, finding.title.find('"'))));
  }
}

TEST(KeyPlaces, LeadToTheControlOfEveryFinding) {
  std::set<std::string> titles;
  for (const char* file : {"blocks_and_flags", "names", "variables"}) {
    for (const testing::ProjectCase& made :
         testing::ReadProjectCases(std::string("verify/cases/") + file + ".txt")) {
      SCOPED_TRACE(made.title);
      const auto store = NewStore();
      ORVUS_COMMON::SetAllDefaults(*store);
      ORVUS_COMMON::SetLoggerConstants(*store);
      for (const testing::CaseStep& step : made.steps) {
        if (!step.kind.empty()) continue;
        testing::TakeSettings(*store, step.lines);
        followFindings(*store, titles);
      }
    }
  }
  // Times, and a formula whose variable is gone.
  const auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  ORVUS_COMMON::SetLoggerConstants(*store);
  testing::TakeSettings(
      *store,
      {"[SCAN SETUP] ExecutionTime=40; ExecTimeUnits=2", "[CONFIGURATION] MonitorPower(3)=-1",
       "[TABLE SETUP] TableOn(1)=1; OutInt(1)=7; TableOn(2)=1; SyncTable(2)=1",
       "[VOLTAGE BLOCKS] BlockCount=1; Reps(1)=1; Table(2,1,2)=1",
       "[CALCULATED FIELDS] CalcFieldCount=1; CalcField(1,1)=Sum; CalcField(1,2)=Lost + 1"});
  store->EstMeasTime = 1e9F;
  followFindings(*store, titles);
  EXPECT_EQ(titles, titlesOfChecks());
}

}  // namespace
}  // namespace ostrand
