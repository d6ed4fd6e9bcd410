// What the user does on the main screen, from the Save button to the logger, with a compiler that
// is a real process.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "model/defaults.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "session/ostrand.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using platform::Answer;
using testing::ReadDisk;
using testing::WriteDisk;

// A user who does something while the compiler runs.
class BusyForms : public testing::ScriptedForms {
 public:
  std::function<void()> meanwhile = [] {};
  void DoEvents() override {
    meanwhile();
    ScriptedForms::DoEvents();
  }
};

class Host : public OstrandEvents {
 public:
  void DownloadRequest(const std::string& name, bool inside) override {
    told.push_back("download " + name + (inside ? " inside" : ""));
  }
  void NewFile(const std::string&) override { told.emplace_back("file"); }
  void PopupOptionsMenu() override { told.emplace_back("menu"); }
  void SessionComplete() override {
    told.emplace_back("complete");
    onComplete();
  }
  std::vector<std::string> told;
  std::function<void()> onComplete = [] {};
};
using Told = std::vector<std::string>;

class Server : public SocketObject {
 public:
  Result<> SendData(std::string_view bytes) override {
    got += bytes;
    if (gone) return Error{"bench:1515: the other side has closed the connection"};
    return Done{};
  }
  std::string got;
  bool gone = false;
};

constexpr std::string_view kProject = "[GEN VERSION]\r\nVersion=6.0\r\n";

class MainScreen : public ::testing::Test {
 protected:
  void SetUp() override {
    ::setenv("STAND_IN", "good", 1);
    around.settings.sections["QUILLON\\QUILLON"] = {{"VKCompPath", OSTRAND_STAND_IN},
                                                    {"WarningMessageMask", "4095"}};
    forms.restingRounds = 60000;
    WriteDisk(project, kProject);
    session.isHarrierRunning(true);
    bool cancelled = true;
    session.OpenFile(project, cancelled);
    ASSERT_FALSE(cancelled);
    host.told.clear();
  }

  // An edit through a screen.
  void edit() {
    session.Screens()[kFlagsButton] = [] {};
    WriteDisk(project, kProject);
    bool cancelled = true;
    session.OpenFile(project, cancelled);
    session.Click(kFlagsButton);
    ASSERT_TRUE(session.DirtyFlag());
    host.told.clear();
  }
  void makeBad() { store->Tables[2].TableName = store->Tables[1].TableName; }
  void expectRefusal() { forms.ExpectBoxWith("DUPLICATION FOUND", "is used as"); }
  void makeOld() {
    store->Gen.Version = "5.3.1";
    store->Tables[6].TrigTable = 1;
  }
  bool onDisk(std::string_view name) const { return std::filesystem::exists(folder / name); }

  testing::TempFolder folder;
  testing::TempFolder work;
  const std::string project = folder / "pump.VKG";
  platform::PosixFileSystem files{platform::Syncing::kOff};
  platform::PosixClock clock{1'000'000'000};
  BusyForms forms;
  Host host;
  std::unique_ptr<ProjectStore> store = NewStore();
  testing::TestSurroundings around{files, clock, forms, work.Path()};
  Ostrand session{*store, around.all, host};
};

constexpr std::string_view kUpgradeText =
    "Saving this Generator Project will irreversibly upgrade\r\n"
    "the Trigger and WriteIf conditions so that the project\r\n"
    "can no longer be used in Larkfield 5.3.1 or earlier.\r\n";

// ---- Buttons ------------------------------------------------------------------------------------

TEST(MainButtons, EnablingFollowsHardwareScreensAndHost) {
  ScreenTable screens;
  for (int button = 0; button <= kExciteButton; ++button) screens[button] = [] {};
  screens[kTablesButton] = nullptr;
  struct Case {
    int multiplexers;
    int canModules;
    bool running;
    bool before;  // the button that saves and sends
    bool harrier;
    std::string_view enabled;  // of 0 to 17 and Quit
  };
  constexpr Case cases[] = {
      {0, 0, false, false, false,
       "110110010100111101"
       "1"},
      {1, 0, false, true, false,
       "110110010110111111"
       "1"},
      {0, 1, true, false, true,
       "110110010101111111"
       "0"},
      {4, 1, true, true, false,
       "110110010111111111"
       "1"},
  };
  for (const Case& row : cases) {
    Configuration config;
    config.TK40MQty = static_cast<i16>(row.multiplexers);
    config.CanBusQty = static_cast<i16>(row.canModules);
    MainRow buttons;
    buttons.Enable(kSaveAndSendButton, row.before);
    buttons.EnableForProject(config, screens, row.running, row.harrier);
    std::string enabled;
    for (int button = 0; button <= kLastButton; ++button) {
      enabled += buttons.Enabled(button) ? '1' : '0';
    }
    EXPECT_EQ(enabled + (buttons.QuitEnabled() ? '1' : '0'), row.enabled);
    buttons.DisableAll();
    EXPECT_FALSE(buttons.Enabled(kSaveButton) || buttons.QuitEnabled());
  }
}

TEST_F(MainScreen, NothingCanBePressedBeforeAProjectIsOpen) {
  Ostrand fresh(*store, around.all, host);
  for (int button = 0; button <= kLastButton; ++button) fresh.Click(button);
  fresh.ClickQuit();
  EXPECT_TRUE(host.told.empty());
}

TEST_F(MainScreen, AScreenMarksTheProjectAsEditedAndDrawsTheSummary) {
  bool shown = false;
  session.Screens()[kVoltageButton] = [&] {
    shown = true;
    EXPECT_TRUE(session.Working());
    EXPECT_EQ(Ostrand::Current(), &session);
    EXPECT_EQ(forms.pointer, platform::Pointer::kBusy);
    EXPECT_FALSE(session.MainButtons().Enabled(kSaveButton));
    EXPECT_FALSE(session.MainButtons().QuitEnabled());
    store->EstMeasTime = -1;
  };
  session.Click(kVoltageButton);
  EXPECT_FALSE(shown) << "has no screen before the next opening";
  bool cancelled = true;
  session.OpenFile(project, cancelled);
  session.Click(kVoltageButton);
  EXPECT_TRUE(shown);
  EXPECT_NE(store->EstMeasTime, -1);
  EXPECT_TRUE(session.DirtyFlag());
  EXPECT_FALSE(session.Working());
  EXPECT_EQ(Ostrand::Current(), nullptr);
  EXPECT_EQ(forms.pointer, platform::Pointer::kNormal);
  EXPECT_EQ(session.FocusAt(), Focus::kButton);
  EXPECT_EQ(session.FocusButton(), kVoltageButton);
  EXPECT_TRUE(session.MainButtons().Enabled(kSaveButton));

  session.OpenFile(project, cancelled);
  EXPECT_FALSE(session.DirtyFlag());
  session.Screens()[kVoltageButton] = [] { throw Fault{11, "Division by zero"}; };
  forms.ExpectBoxWith("TROUBLE",
                      "Unexpected error 11, \"Division by zero\" has occurred in "
                      "Ostrand.cmdOption_Click.");
  session.Click(kVoltageButton);
  EXPECT_TRUE(session.DirtyFlag()) << "what the screen edited before is not lost unasked";
  EXPECT_TRUE(session.MainButtons().Enabled(kSaveButton));

  session.RightClick(kVoltageButton);
  EXPECT_EQ(host.told.back(), "menu");
  session.PointAt(kCanButton);
  EXPECT_EQ(forms.helpLines.back(), "Set up Canbus items.");
  session.PointAtQuit();
  EXPECT_EQ(forms.helpLines.back(), "Quit Program Generator.");
}

// ---- Saving -------------------------------------------------------------------------------------

TEST_F(MainScreen, ACleanSaveWarnsCompilesAndSavesTheMeasuredTimes) {
  edit();
  store->TempBlock.BlockCount = 1;
  store->TempBlock[1].Reps = 1;
  store->TempBlock[1].OpenSensDetect = kFalse;
  session.UserSettings().WarningMessageMask(8191);
  forms.ExpectBoxWith("FLOATING GROUND WARNING", "Thermocouple block 1.");
  forms.ExpectBoxWith("COMPILE RESULT", "Test compiled OK.");
  forms.ExpectSave(project);
  session.Click(kSaveButton);
  EXPECT_GT(store->TempBlock[1].BlockTime, 1000);
  EXPECT_TRUE(
      Holds(ReadDisk(project), "\r\nBlockTime(1)=" + NumberText(store->TempBlock[1].BlockTime)));
  for (const auto name : {"pump.VKP", "pump.VKD", "pump.VKW"}) EXPECT_TRUE(onDisk(name)) << name;
  EXPECT_TRUE(std::filesystem::is_empty(work.Path()));
  EXPECT_FALSE(session.DirtyFlag());
  EXPECT_EQ(host.told, Told{"file"});
  EXPECT_EQ(session.FocusButton(), kSaveButton);
}

TEST_F(MainScreen, DecidesWhatToAskByWhatTheChecksFound) {
  const std::string bad =
      "Harrier recommends that the Generator file should NOT be saved\r\n"
      "due to possible issues in the following areas : \r\n\r\nDuplicate Names\r\nBad Timing\r\n"
      "Bad Slow Sequence\r\nInterval Problems\r\nBad Status Flags\r\nZero/Burst Problems\r\n\r\n"
      "Save it anyway?";
  const std::string upgrade(kUpgradeText);
  const std::string badTitle = "Save Generator Project ?";
  const std::string oldTitle = "Upgrade Generator Project Beyond Larkfield 5.3.1 ?";
  const std::string noDownload = "Program will not be downloaded.\r\n";
  const std::string anyway = "Do you want to save the project anyway ?";
  struct Case {
    int button;
    bool bad;
    bool old;
    std::string title;
    std::string text;
  };
  const Case cases[] = {
      {kSaveButton, true, false, badTitle, bad},
      {kSaveButton, true, true, badTitle, upgrade + bad},
      {kSaveAndSendButton, true, false, badTitle, noDownload + bad},
      {kSaveAndSendButton, true, true, badTitle, noDownload + upgrade + bad},
      {kSaveButton, false, true, oldTitle, upgrade + anyway},
      {kSaveAndSendButton, false, true, oldTitle, upgrade + anyway},
  };
  for (const Case& row : cases) {
    for (const Answer answer : {Answer::kNo, Answer::kYes}) {
      SCOPED_TRACE(row.text);
      edit();
      std::filesystem::remove(folder / "pump.VKP");
      if (row.bad) makeBad();
      if (row.old) makeOld();
      if (row.bad) expectRefusal();
      forms.ExpectBox(row.title, row.text, answer);
      if (answer == Answer::kYes) forms.ExpectSave(project);
      session.Click(row.button);  // no test compile: the compiler would have to be there
      const bool yes = answer == Answer::kYes;
      EXPECT_EQ(onDisk("pump.VKP"), yes);
      EXPECT_EQ(session.DirtyFlag(), !yes);
      EXPECT_EQ(store->Gen.Version, yes || !row.old ? "6.0" : "5.3.1");
      EXPECT_EQ(host.told, yes ? Told{"file"} : Told{}) << "and no download";
      EXPECT_FALSE(session.CompileFailed()) << "nothing was compiled";
    }
  }
}

TEST_F(MainScreen, SendsOnlyWhatWasSavedAndCompiled) {
  const std::string program = folder / "pump.VKP";
  forms.ExpectSave(project);
  session.Click(kSaveAndSendButton);
  EXPECT_EQ(host.told, (Told{"file", "download " + program + " inside"}));
  EXPECT_NE(session.FocusAt(), Focus::kButton);

  edit();
  forms.ExpectSave(std::nullopt);
  session.Click(kSaveAndSendButton);
  EXPECT_TRUE(host.told.empty());
  EXPECT_TRUE(session.DirtyFlag()) << "a cancelled save keeps the edits in mind";

  ::setenv("STAND_IN", "bad", 1);
  forms.ExpectBoxWith("COMPILE RESULT", "Undeclared variable");
  forms.ExpectSave(project);
  session.Click(kSaveAndSendButton);
  EXPECT_EQ(host.told, Told{"file"});
  EXPECT_FALSE(session.DirtyFlag());

  ::setenv("STAND_IN", "good", 1);
  edit();
  std::filesystem::remove(program);
  std::filesystem::create_directories(program + "/inner");
  forms.ExpectSave(project);
  forms.ExpectBoxWith("TROUBLE", "SAVEDLD.SaveTheDld");
  session.Click(kSaveAndSendButton);
  EXPECT_EQ(host.told, Told{"file"}) << "half a save is not sent";
  EXPECT_EQ(session.SavedFiles(), std::vector<std::string>{project});
  EXPECT_TRUE(session.DirtyFlag());
}

TEST_F(MainScreen, UnderHarrierTheDownloadGoesThroughItsServer) {
  Server server;
  session.HostApp("HARRIER");
  session.SocketControl(&server);
  session.isSocketConnected(true);
  forms.ExpectSave(folder / "z\xC3\xA9ro.1.VKG");
  session.Click(kSaveAndSendButton);
  const std::string program = folder / "z\xE9ro.1.VKP";
  const auto number = [](std::size_t value) {
    return std::string(3, '\0') + static_cast<char>(value);
  };
  const std::string body = number(101) + std::string("\0\0\x05\xEB", 4) + number(7) + "Harrier" +
                           number(1) + number(1) + number(program.size()) + program;
  EXPECT_EQ(server.got, number(body.size()) + body);
  EXPECT_EQ(host.told, Told{"file"});

  server.gone = true;
  forms.ExpectBoxWith("TROUBLE",
                      "bench:1515: the other side has closed the connection\" has "
                      "occurred in Ostrand.HarrierDownload.");
  session.HarrierDownload("pump.VKP");
  const std::string none =
      "Ostrand is not registered with the Harrier toolbar server-- no connection";
  for (const bool connected : {false, true}) {
    session.SocketControl(connected ? nullptr : &server);
    session.isSocketConnected(connected);
    server.got.clear();
    forms.ExpectBox("", none);
    session.HarrierDownload("pump.VKP");
    EXPECT_EQ(server.got, "");
  }
}

// ---- The test compile ---------------------------------------------------------------------------

TEST_F(MainScreen, AMissingCompilerIsSearchedForIfTheUserLikes) {
  const std::string text = "Pre-Compiler was not found.\r\nWould you like to search for it?";
  for (const std::string& path : {std::string(), folder / "none"}) {
    session.UserSettings().CompilerPath(path);
    forms.ExpectBox("MISSING FILE", text, Answer::kNo);
    session.RunPreCompile();
    EXPECT_TRUE(session.CompileFailed());
    EXPECT_EQ(session.CompileSkipped(), "");
    forms.ExpectBox("MISSING FILE", text, Answer::kYes);
    forms.ExpectOpen(std::nullopt);
    session.RunPreCompile();
    EXPECT_TRUE(session.CompileFailed());
    EXPECT_EQ(session.UserSettings().CompilerPath(), path);
    EXPECT_EQ(forms.pointer, platform::Pointer::kNormal);
    EXPECT_EQ(Ostrand::Current(), nullptr);
  }
  EXPECT_EQ(forms.dialog.title, "FIND VK7300 COMPILER");
  EXPECT_EQ(forms.dialog.filter, "(VKPComp.EXE)|VKPComp.EXE|(All Files)|*.*");
  EXPECT_EQ(forms.dialog.fileName, "VKPComp.EXE");
  EXPECT_EQ(forms.dialog.defaultExtension, "EXE");
  EXPECT_EQ(forms.dialog.helpContext, 1800);

  forms.ExpectBox("MISSING FILE", text, Answer::kYes);
  forms.ExpectOpen(OSTRAND_STAND_IN);
  session.RunPreCompile();
  EXPECT_FALSE(session.CompileFailed());
  EXPECT_TRUE(std::filesystem::is_empty(work.Path()));

  // A save alone tells the path, and goes on without.
  session.UserSettings().CompilerPath("/none");
  forms.ExpectBox("MISSING FILE", "/none was not found.\r\nWould you like to search for it?.",
                  Answer::kYes);
  forms.ExpectOpen(std::nullopt);
  EXPECT_TRUE(session.SavePipeline());
  EXPECT_TRUE(onDisk("pump.VKW"));
}

TEST_F(MainScreen, ACompilerThatGivesNoReportIsToldAndNothingIsLeft) {
  ::setenv("STAND_IN", "crash", 1);
  session.RunPreCompile();
  EXPECT_TRUE(session.CompileFailed());
  EXPECT_EQ(session.CompileSkipped(),
            "Skipped pre-compile. " OSTRAND_STAND_IN " ended without a report");
  EXPECT_EQ(forms.helpLines.back(), "Skipped pre-compile.");
  EXPECT_TRUE(std::filesystem::is_empty(work.Path()));
}

TEST_F(MainScreen, ASecondCompileWhileOneRunsDoesNothing) {
  int meanwhile = 0;
  ::setenv("STAND_IN", "slow", 1);
  forms.meanwhile = [&] {
    if (++meanwhile > 3) return;
    session.RunPreCompile();
    EXPECT_EQ(Ostrand::Current(), &session);
    EXPECT_TRUE(session.CompileFailed()) << "as long as it runs";
  };
  session.RunPreCompile();
  EXPECT_GE(meanwhile, 3);
  EXPECT_FALSE(session.CompileFailed());
}

// ---- Ending -------------------------------------------------------------------------------------

TEST_F(MainScreen, EndingASessionAsksAboutEdits) {
  const std::string question = "Do you want to save changes made to " + project + "?";
  struct Case {
    bool force;
    bool bad;
    Answer answer;
    i16 cancelled;
    bool saved;
  };
  constexpr Case cases[] = {
      {false, false, Answer::kCancel, kTrue, false}, {false, false, Answer::kNo, kFalse, false},
      {false, false, Answer::kYes, kFalse, true},    {false, true, Answer::kYes, kTrue, false},
      {true, false, Answer::kNo, kFalse, false},     {true, false, Answer::kYes, kFalse, true},
      {true, true, Answer::kYes, kFalse, false},
  };
  for (const Case& row : cases) {
    edit();
    std::filesystem::remove(folder / "pump.VKP");
    if (row.bad) makeBad();
    forms.ExpectBox("QUIT GENERATOR", question, row.answer);
    if (row.bad && row.answer == Answer::kYes) expectRefusal();
    i16 cancelled = 5;
    const int writes = around.settings.writes;
    session.CloseSession(row.force, cancelled);
    EXPECT_EQ(cancelled, row.cancelled);
    EXPECT_EQ(host.told, cancelled == kTrue ? Told{} : Told{"complete"});
    EXPECT_EQ(onDisk("pump.VKP"), row.saved);
    EXPECT_EQ(session.DirtyFlag(), !row.saved);
    EXPECT_EQ(around.settings.writes, writes + 1) << "settings are kept either way";
  }
}

TEST_F(MainScreen, AFailedSaveAtTheEndKeepsTheSession) {
  edit();
  std::filesystem::remove(project);
  std::filesystem::create_directories(project + "/inner");
  forms.ExpectBoxWith("QUIT GENERATOR", "save changes", Answer::kYes);
  forms.ExpectBoxWith("TROUBLE", "ORVUS_GENFILE.SaveProjectFile");
  session.KeyDown(Key::kEscape);
  EXPECT_TRUE(host.told.empty());
  EXPECT_TRUE(session.DirtyFlag());
}

TEST_F(MainScreen, ASecondEndWhileOneRunsDoesNothingAndSettingsThatCannotBeKeptAreTold) {
  host.onComplete = [&] {
    i16 cancelled = 5;
    session.CloseSession(true, cancelled);
    EXPECT_EQ(cancelled, 5);
  };
  around.settings.failure = "/home/settings: No space left on device";
  forms.ExpectBoxWith("TROUBLE", "/home/settings: No space left on device");
  session.ClickQuit();
  EXPECT_EQ(host.told, Told{"complete"});
  EXPECT_EQ(forms.helpLines.back(), "");
}

// ---- Keys, text boxes, options ------------------------------------------------------------------

TEST_F(MainScreen, ArrowsGoFromBoxToBoxAndTheirTextsIntoTheProjectOnSaving) {
  session.SetFocus(Focus::kOper);
  EXPECT_EQ(forms.helpLines.back(), "Enter operator's name. Up to 30 characters.");
  session.KeyDown(Key::kUp);
  EXPECT_EQ(session.FocusAt(), Focus::kOper);
  session.KeyDown(Key::kDown);
  EXPECT_EQ(session.FocusAt(), Focus::kIDNum);
  EXPECT_EQ(forms.helpLines.back(), "Enter an appropriate ID number. Up to 30 characters.");
  session.KeyDown(Key::kUp);
  EXPECT_EQ(session.FocusAt(), Focus::kOper);
  session.SetFocus(Focus::kIDNum);
  session.KeyDown(Key::kDown);
  EXPECT_EQ(session.FocusAt(), Focus::kButton);
  EXPECT_EQ(session.FocusButton(), kConfigurationButton);

  session.txtOper("Ada");
  session.txtIDNum("7");
  EXPECT_NE(store->Gen.Operator, "Ada");
  EXPECT_TRUE(session.SavePipeline());
  EXPECT_EQ(store->Gen.Operator, "Ada");
  EXPECT_EQ(store->Gen.IDNumber, "7");
}

TEST_F(MainScreen, PrintingTakesThePlaceOfTheMainRow) {
  session.PrintSelect();
  EXPECT_TRUE(session.PrintPanelShown());
  EXPECT_FALSE(session.MainButtons().Enabled(kSaveButton));
  EXPECT_EQ(session.FocusAt(), Focus::kCancelPrint);
  session.CancelPrint();
  EXPECT_FALSE(session.PrintPanelShown());
  EXPECT_TRUE(session.MainButtons().Enabled(kSaveButton));
}

TEST_F(MainScreen, OptionScreensWorkOnTheTableAndTakeEffect) {
  Settings& settings = session.UserSettings();
  session.SettingsScreen([&] {
    EXPECT_EQ(settings.Rows()[25].Value, "4095");
    settings.Rows()[25].Value = "7";
    settings.Rows()[10].Value = "255";
  });
  int colors = 0;
  session.ColorsScreen([&] { ++colors; });
  session.ShowOptions("settings");  // no such screen
  EXPECT_EQ(settings.WarningMessageMask(), 4095);
  store->EstMeasTime = -1;
  session.ShowOptions("Settings");
  EXPECT_EQ(settings.WarningMessageMask(), 7);
  EXPECT_EQ(session.Colors().FormBack, 255);
  EXPECT_NE(store->EstMeasTime, -1) << "the summary is drawn again";
  session.ShowOptions("Colors");
  session.FormCleanup();
  session.ShowOptions("Colors");
  EXPECT_EQ(colors, 1);
}

}  // namespace
}  // namespace ostrand
