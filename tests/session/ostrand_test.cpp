// The session with one project: opening, naming, saving, and what the user does on the main screen,
// from the Save button to the logger.
#include "session/ostrand.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "model/defaults.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "support/memory_filesystem.h"
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
using Told = std::vector<std::string>;

class KeepingHost : public OstrandEvents {
 public:
  void DownloadRequest(const std::string& name, bool inside) override {
    told.push_back("download " + name + (inside ? " inside" : ""));
  }
  void NewFile(const std::string& name) override {
    told.push_back("file " + name);
    control = Ostrand::Current();
  }
  void PopupOptionsMenu() override { told.emplace_back("menu"); }
  void SessionComplete() override {
    told.emplace_back("complete");
    onComplete();
  }
  Told told;
  std::function<void()> onComplete = [] {};
  Ostrand* control = nullptr;  // that held the process-wide reference at the last NewFile
};

class Session : public ::testing::Test {
 protected:
  Session() {
    ::setenv("STAND_IN", "good", 1);
    around.settings.sections["QUILLON\\QUILLON"] = {{"VKCompPath", OSTRAND_STAND_IN},
                                                    {"WarningMessageMask", "4095"}};
    session.RegistryApp("");
  }

  bool openCancelled(std::string_view name) {
    bool cancelled = false;
    session.OpenFile(name, cancelled);
    EXPECT_EQ(forms.pointer, platform::Pointer::kNormal);
    EXPECT_EQ(Ostrand::Current(), nullptr);
    return cancelled;
  }
  bool onDisk(std::string_view name) const { return std::filesystem::exists(folder / name); }
  // The last dialog: title, filter, file name, extension, folder and help context.
  std::string dialog() const {
    const platform::FileDialog& d = forms.dialog;
    return d.title + "; " + d.filter + "; " + d.fileName + "; " + d.defaultExtension + "; " +
           d.initialFolder + "; " + std::to_string(d.helpContext);
  }

  testing::TempFolder folder;
  testing::TempFolder work;
  const std::string project = folder / "pump.VKG";
  const std::string program = folder / "pump.VKP";
  platform::PosixFileSystem files{platform::Syncing::kOff};
  platform::PosixClock clock{1'000'000'000};  // 2001-09-09 01:46:40
  testing::ScriptedForms forms;
  KeepingHost host;
  std::unique_ptr<ProjectStore> store = NewStore();
  testing::TestSurroundings around{files, clock, forms, work.Path()};
  Ostrand session{*store, around.all, host};
};

constexpr std::string_view kPump =
    "[GEN VERSION]\r\nVersion=6.0\r\n\r\n[CONFIGURATION]\r\nOperator=Marge\r\nIDNumber=Pump 42\r\n";

TEST_F(Session, NamesProjectsByTheRules) {
  const std::string here = files.WorkingFolder();
  const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
      {"C:\\Data\\pump.VKG", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.vkg", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.1.txt", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.1.VKG", "C:\\Data\\pump.1.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.VKG.bak", "C:\\Data\\pump.VKG.bak", "pump", "C:\\Data\\"},
      {"C:\\Data.VKG\\pump", "C:\\Data.VKG\\pump.VKG", "pump", "C:\\Data.VKG\\"},
      {"/data/v1.2\\pump", "/data/v1.2\\pump.VKG", "pump", "/data/v1.2\\"},
      {"/data/.VKG", "/data/.VKG", "", "/data/"},
      {"pump", "pump.VKG", "pump", here},
      {"pump.dld", here + "pump.VKG", "pump", here},
  };
  for (const auto& [path, file, base, inFolder] : cases) {
    session.NameProject(path);
    EXPECT_EQ(session.CurrentFileName(), file) << path;
    EXPECT_EQ(session.BaseName(), base) << path;
    EXPECT_EQ(session.GenFilePath(), inFolder) << path;
  }
  session.AppPath("C:\\Harrier");
  EXPECT_EQ(session.AppPath(), "C:\\Harrier\\");
  EXPECT_EQ(Ostrand::WithoutExtension("pump.1.VKG.VKG"), "pump.1");
  EXPECT_EQ(Ostrand::WithoutExtension("pump.VKP.VKG"), "pump.VKP");
  EXPECT_EQ(Ostrand::WithoutExtension("pump.VKP.old"), "pump");
}

TEST_F(Session, OpensAFileIntoAFreshStore) {
  WriteDisk(folder / "pump.vkg", kPump);
  store->VoltBlock.BlockCount = 3;  // of the project before
  forms.ExpectBoxWith("FILE NOT FOUND", Upper(folder / "none.VKG"));
  EXPECT_TRUE(openCancelled(folder / "none.1"));
  EXPECT_EQ(store->VoltBlock.BlockCount, 3);
  EXPECT_EQ(host.told, Told{});

  EXPECT_FALSE(openCancelled(folder / "pump"));
  EXPECT_EQ(store->VoltBlock.BlockCount, 0);
  EXPECT_EQ(store->Logger.PulseChanTotal, 2);
  EXPECT_EQ(session.txtOper() + session.txtIDNum(), "MargePump 42");
  EXPECT_EQ(host.told, Told{"file " + project});
  EXPECT_EQ(host.control, &session);
}

TEST_F(Session, AnEmptyNameAsksTheUser) {
  WriteDisk(project, kPump);
  around.settings.sections["QUILLON\\QUILLON"]["GenPath"] = "C:\\Larkfield";
  session.NameProject("/data/before");
  store->Gen.Operator = "Kept";

  forms.ExpectOpen(std::nullopt);
  EXPECT_TRUE(openCancelled("  "));
  EXPECT_EQ(dialog(),
            "OPEN GENERATOR FILE; (*.VKG)|*.VKG|(All Files)|*.*; ; .VKG; C:\\Larkfield\\; 1800");
  EXPECT_EQ(session.CurrentFileName(), "/data/before.VKG");
  EXPECT_EQ(session.GenFilePath() + session.BaseName(), "/data/before");

  // A new name starts a project from the store as it is, without NewFile.
  forms.ExpectOpen(folder / "new");
  EXPECT_FALSE(openCancelled(""));
  EXPECT_EQ(session.CurrentFileName(), folder / "new.VKG");
  EXPECT_EQ(session.txtOper(), "Kept");
  EXPECT_EQ(host.told, Told{});

  forms.ExpectOpen(project);
  EXPECT_FALSE(openCancelled(""));
  EXPECT_EQ(session.txtOper(), "Marge");
  EXPECT_EQ(host.told, Told{"file " + project});
}

TEST_F(Session, SaveDldFileWritesAllFilesUnderTheNameChosen) {
  session.txtOper("Ada");
  session.txtIDNum("7");
  forms.ExpectSave(folder / "pump.1");
  session.SaveDldFile();
  EXPECT_EQ(dialog(),
            "SAVE .VKG .VKP .VKW .VKD; (*.VKG)|*.VKG|(All Files)|*.*; EditTemp; .VKG; "
            "C:\\Larkfield\\DLDFILES\\; 4400");
  EXPECT_EQ(host.told, Told{"file " + project});
  const std::string saving = "Saving " + Upper(folder / "pump");
  EXPECT_EQ(forms.helpLines,
            (Told{saving + ".VKG.", saving + ".VKP.", saving + ".VKD.", saving + ".VKW.", ""}));
  const std::string bytes = ReadDisk(project);
  EXPECT_TRUE(Holds(bytes,
                    "\r\nPCTime=9/9/2001 1:46:40 AM\r\n\r\n[CONFIGURATION]\r\n"
                    "Operator=Ada\r\nIDNumber=7\r\n"));
  EXPECT_TRUE(Holds(ReadDisk(program), "Program name: PUMP.VKP\r\n"));

  forms.ExpectSave(std::nullopt);
  session.SaveDldFile();
  EXPECT_EQ(forms.dialog.fileName, "pump");
  EXPECT_TRUE(session.SaveCancelled());
  EXPECT_EQ(host.told.size(), 1U);
  EXPECT_EQ(ReadDisk(project), bytes);

  session.NameProject("NONAME");
  EXPECT_EQ(session.CurBasicFileName(), work / "EditTemp.VKP");
  EXPECT_TRUE(std::filesystem::exists(work / "EditTemp.VKG"));
}

// What another program did to the project since the session knew it, and whether a save asks.
TEST_F(Session, ASaveAsksBeforeItOverwritesWhatAnotherProgramWrote) {
  const std::string other = std::string(kPump) + "Remote=1\r\n";
  const std::function<void()> touch = [&] {
    std::filesystem::last_write_time(
        project, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  };
  const std::tuple<std::string, std::function<void()>, bool> cases[] = {
      {"nothing", [] {}, false},
      {"touched", touch, false},
      {"deleted", [&] { std::filesystem::remove(project); }, false},
      {"same bytes again", [&] { WriteDisk(project, kPump); }, false},
      {"changed", [&] { WriteDisk(project, other); }, true},
      {"replaced",
       [&] {
         WriteDisk(folder / "new", other);
         std::filesystem::rename(folder / "new", project);
       },
       true},
      {"respelled",
       [&] {
         std::filesystem::remove(project);
         WriteDisk(folder / "PUMP.vkg", other);
       },
       true},
  };
  for (const auto& [what, change, asks] : cases) {
    SCOPED_TRACE(what);
    std::filesystem::remove(folder / "PUMP.vkg");
    WriteDisk(project, kPump);
    ASSERT_FALSE(openCancelled(project));
    change();
    if (asks) {
      forms.ExpectBoxWith("PROJECT CHANGED", "was changed by another program", Answer::kCancel);
      EXPECT_FALSE(session.SavePipeline());
      EXPECT_TRUE(session.ChangedOutside());
      EXPECT_FALSE(onDisk("pump.VKP"));
      forms.ExpectBoxWith("PROJECT CHANGED", folder.Path(), Answer::kOverwrite);
    }
    EXPECT_TRUE(session.SavePipeline());
    EXPECT_FALSE(session.ChangedOutside());
    EXPECT_TRUE(Holds(ReadDisk(project), "Operator=Marge"));
    // The session knows what it wrote itself.
    EXPECT_TRUE(session.SavePipeline());
    WriteDisk(project, other);
    session.OverwriteChanged(true);
    EXPECT_TRUE(session.SavePipeline());
    session.OverwriteChanged(false);
    std::filesystem::remove(folder / "pump.VKP");
  }
  // A new project whose name was free when it was chosen.
  forms.ExpectOpen(folder / "fresh");
  ASSERT_FALSE(openCancelled(""));
  WriteDisk(folder / "fresh.VKG", "");
  forms.ExpectBoxWith("PROJECT CHANGED", "fresh.VKG", Answer::kCancel);
  EXPECT_FALSE(session.SavePipeline());
  EXPECT_EQ(ReadDisk(folder / "fresh.VKG"), "");
}

TEST_F(Session, ASaveWaitsForAnotherOneWithAllItsFiles) {
  session.NameProject(project);
  auto other = files.LockProject(project, {});
  ASSERT_TRUE(other && other.Value() != nullptr);
  forms.meanwhile = [&] {
    EXPECT_TRUE(forms.helpLines.back().starts_with("Waiting for ")) << forms.helpLines.back();
    EXPECT_FALSE(onDisk("pump.VKG"));
    other.Value().reset();
  };
  EXPECT_TRUE(session.SavePipeline());
  EXPECT_EQ(other.Value(), nullptr) << "nobody waited";
  EXPECT_TRUE(onDisk("pump.VKW"));
}

// Whatever call fails, alone or with all behind it, each file of the project is whole, new or as it
// was; the project itself as the remainder of a dead save only where it was one before.
TEST_F(Session, NoFailingCallOfTheDiskLosesAFileOfTheProject) {
  testing::MemoryFileSystem disk;
  disk.files["/data/VKPComp.EXE"] = "a compiler";
  const auto save = [&](platform::FileSystem& target, const std::string& oper) {
    testing::ScriptedForms user;
    user.CollectBoxes();
    testing::TestSurroundings machine(target, clock, user, "/tmp");
    Ostrand control(*store, machine.all, host);
    control.UserSettings().CompilerPath("/data/VKPComp.EXE");
    control.txtOper(oper);
    control.NameProject("/data/pump");
    const bool saved = control.SavePipeline();
    const auto kept = [](const platform::MessageBox& box) {
      return box.title == "EARLIER SAVE KEPT";
    };
    std::erase_if(user.shown, kept);
    EXPECT_EQ(user.shown.size(), saved ? 0U : 1U);
    for (const platform::MessageBox& box : user.shown) {
      EXPECT_TRUE(box.title == "TROUBLE" || box.title == "FILE PROBLEM") << box.title;
      EXPECT_TRUE(Holds(box.text, "/data/")) << box.text;
    }
    return saved;
  };
  ASSERT_TRUE(save(disk, "Before"));
  const auto before = disk.files;
  ASSERT_TRUE(save(disk, "After"));
  const auto after = disk.files;
  EXPECT_EQ(after.size(), before.size());
  const std::string aside = "/data/pump._KG";
  auto dead = before;
  dead[aside] = dead.extract("/data/pump.VKG").mapped();

  for (const auto& start : {before, dead}) {
    for (const bool staysBroken : {false, true}) {
      bool untouched = false;  // by any failure
      for (int failAt = 1; !untouched; ++failAt) {
        ASSERT_LT(failAt, 100);
        disk.files = start;
        testing::FaultyFileSystem faulty(disk, failAt, staysBroken);
        const bool saved = save(faulty, "After");
        untouched = faulty.Calls() < failAt;
        EXPECT_TRUE(saved || !untouched);
        for (const auto& [name, bytes] : after) {
          const bool there = disk.files.contains(name);
          const std::string& left = disk.files.contains(aside) ? aside : aside + ".1";
          const bool isAside = start.contains(aside) && disk.files.contains(left);
          ASSERT_TRUE(there || isAside) << failAt << name;
          const std::string& now = disk.files.at(there ? name : left);
          EXPECT_TRUE(now == bytes || (!saved && now == before.at(name))) << failAt << name;
        }
      }
    }
  }
}

// ---- The main screen

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

class MainScreen : public Session {
 protected:
  void SetUp() override {
    session.isHarrierRunning(true);
    reopen();
  }
  void reopen() {
    WriteDisk(project, "[GEN VERSION]\r\nVersion=6.0\r\n");
    ASSERT_FALSE(openCancelled(project));
    host.told.clear();
  }
  // An edit through a screen.
  void edit() {
    session.Screens()[kFlagsButton] = [] {};
    reopen();
    session.Click(kFlagsButton);
    ASSERT_TRUE(session.DirtyFlag());
  }
  // Presses a button that saves; the dialog is answered so.
  void save(int button, std::optional<std::string> as) {
    forms.ExpectSave(std::move(as));
    session.Click(button);
  }
  void makeBad() { store->Tables[2].TableName = store->Tables[1].TableName; }
  void expectRefusal() { forms.ExpectBoxWith("DUPLICATION FOUND", "is used as"); }

  const Told newFile = {"file " + project};
};

// ---- Buttons ------------------------------------------------------------------------------------

TEST(MainButtons, EnablingFollowsHardwareScreensAndHost) {
  ScreenTable screens;
  for (int button = 0; button <= kExciteButton; ++button) screens[button] = [] {};
  screens[kTablesButton] = nullptr;
  // Of 0 to 17 and Quit; `before` is the button that saves and sends.
  const auto enabled = [&](i16 multiplexers, i16 canModules, bool running, bool before,
                           bool harrier) {
    Configuration config;
    config.TK40MQty = multiplexers;
    config.CanBusQty = canModules;
    MainRow buttons;
    buttons.Enable(kSaveAndSendButton, before);
    buttons.EnableForProject(config, screens, running, harrier);
    std::string all;
    for (int button = 0; button <= kLastButton; ++button)
      all += buttons.Enabled(button) ? '1' : '0';
    return all + (buttons.QuitEnabled() ? '1' : '0');
  };
  EXPECT_EQ(enabled(0, 0, false, false, false), "1101100101001111011");
  EXPECT_EQ(enabled(1, 0, false, true, false), "1101100101101111111");
  EXPECT_EQ(enabled(0, 1, true, false, true), "1101100101011111110");
}

TEST_F(MainScreen, AScreenMarksTheProjectAsEditedAndDrawsTheSummary) {
  bool shown = false;
  session.Screens()[kVoltageButton] = [&] {
    shown = true;
    EXPECT_TRUE(session.Working());
    EXPECT_EQ(Ostrand::Current(), &session);
    EXPECT_EQ(forms.pointer, platform::Pointer::kBusy);
    EXPECT_FALSE(session.MainButtons().Enabled(kSaveButton) || session.MainButtons().QuitEnabled());
    store->EstMeasTime = -1;
  };
  session.Click(kVoltageButton);
  EXPECT_FALSE(shown) << "cannot be pressed before the next opening";
  reopen();
  session.Click(kVoltageButton);
  EXPECT_TRUE(shown && session.DirtyFlag());
  EXPECT_NE(store->EstMeasTime, -1);
  EXPECT_FALSE(session.Working() || Ostrand::Current() != nullptr);
  EXPECT_EQ(forms.pointer, platform::Pointer::kNormal);
  EXPECT_EQ(session.FocusButton(), kVoltageButton);

  reopen();
  session.Screens()[kVoltageButton] = [] { throw Fault{11, "Division by zero"}; };
  forms.ExpectBoxWith("TROUBLE",
                      "Unexpected error 11, \"Division by zero\" has occurred in "
                      "Ostrand.cmdOption_Click.");
  session.Click(kVoltageButton);
  EXPECT_TRUE(session.DirtyFlag()) << "what the screen edited before is not lost unasked";
  EXPECT_TRUE(session.MainButtons().Enabled(kSaveButton));

  session.RightClick(kVoltageButton);
  EXPECT_EQ(host.told, Told{"menu"});
  session.PointAt(kCanButton);
  EXPECT_EQ(forms.helpLines.back(), "Set up Canbus items.");
}

// ---- Saving -------------------------------------------------------------------------------------

TEST_F(MainScreen, ACleanSaveWarnsCompilesAndSavesTheMeasuredTimes) {
  edit();
  store->TempBlock.BlockCount = store->TempBlock[1].Reps = 1;
  store->TempBlock[1].OpenSensDetect = kFalse;
  session.UserSettings().WarningMessageMask(8191);
  forms.ExpectBoxWith("FLOATING GROUND WARNING", "Thermocouple block 1.");
  forms.ExpectBoxWith("COMPILE RESULT", "Test compiled OK.");
  save(kSaveButton, project);
  EXPECT_GT(store->TempBlock[1].BlockTime, 1000);
  EXPECT_TRUE(
      Holds(ReadDisk(project), "\r\nBlockTime(1)=" + NumberText(store->TempBlock[1].BlockTime)));
  for (const auto name : {"pump.VKP", "pump.VKD", "pump.VKW"}) EXPECT_TRUE(onDisk(name)) << name;
  EXPECT_TRUE(std::filesystem::is_empty(work.Path()));
  EXPECT_FALSE(session.DirtyFlag());
  EXPECT_EQ(host.told, newFile);
  EXPECT_EQ(session.FocusButton(), kSaveButton);
}

TEST_F(MainScreen, DecidesWhatToAskByWhatTheChecksFound) {
  const std::string bad =
      "Harrier recommends that the Generator file should NOT be saved\r\n"
      "due to possible issues in the following areas : \r\n\r\nDuplicate Names\r\nBad Timing\r\n"
      "Bad Slow Sequence\r\nInterval Problems\r\nBad Status Flags\r\nZero/Burst Problems\r\n\r\n"
      "Save it anyway?";
  const std::string upgrade =
      "Saving this Generator Project will irreversibly upgrade\r\n"
      "the Trigger and WriteIf conditions so that the project\r\n"
      "can no longer be used in Larkfield 5.3.1 or earlier.\r\n";
  const std::string noDownload = "Program will not be downloaded.\r\n";
  const std::string anyway = "Do you want to save the project anyway ?";
  const std::tuple<int, bool, bool, std::string> cases[] = {
      {kSaveButton, true, false, bad},
      {kSaveAndSendButton, true, true, noDownload + upgrade + bad},
      {kSaveButton, false, true, upgrade + anyway},
      {kSaveAndSendButton, false, true, upgrade + anyway},
  };
  for (const auto& [button, isBad, isOld, text] : cases) {
    for (const bool yes : {false, true}) {
      SCOPED_TRACE(text);
      edit();
      std::filesystem::remove(program);
      if (isBad) makeBad();
      if (isOld) store->Gen.Version = "5.3.1", store->Tables[6].TrigTable = 1;
      if (isBad) expectRefusal();
      forms.ExpectBox(
          isBad ? "Save Generator Project ?" : "Upgrade Generator Project Beyond Larkfield 5.3.1 ?",
          text, yes ? Answer::kYes : Answer::kNo);
      if (yes) forms.ExpectSave(project);
      session.Click(button);
      EXPECT_EQ(onDisk("pump.VKP"), yes);
      EXPECT_EQ(session.DirtyFlag(), !yes);
      EXPECT_EQ(store->Gen.Version, yes || !isOld ? "6.0" : "5.3.1");
      EXPECT_EQ(host.told, yes ? newFile : Told{}) << "and no download";
    }
  }
}

TEST_F(MainScreen, SendsOnlyWhatWasSavedAndCompiled) {
  save(kSaveAndSendButton, project);
  EXPECT_EQ(host.told, (Told{newFile[0], "download " + program + " inside"}));
  EXPECT_NE(session.FocusAt(), Focus::kButton);

  edit();
  save(kSaveAndSendButton, std::nullopt);
  EXPECT_EQ(host.told, Told{});
  EXPECT_TRUE(session.DirtyFlag()) << "a cancelled save keeps the edits in mind";

  ::setenv("STAND_IN", "bad", 1);
  forms.ExpectBoxWith("COMPILE RESULT", "Undeclared variable");
  save(kSaveAndSendButton, project);
  EXPECT_EQ(host.told, newFile);
  EXPECT_FALSE(session.DirtyFlag());

  ::setenv("STAND_IN", "good", 1);
  edit();
  std::filesystem::remove(program);
  std::filesystem::create_directories(program + "/inner");
  forms.ExpectBox("TROUBLE", "Unexpected error 75, \"" + program +
                                 ": Is a directory\" has occurred in SAVEDLD.SaveTheDld.\r\n "
                                 "Press \"OK\" and the program will continue.");
  save(kSaveAndSendButton, project);
  EXPECT_EQ(forms.beeps, 1);
  EXPECT_EQ(session.SavedFiles(), Told{project});
  EXPECT_EQ(host.told, newFile) << "half a save is not sent";
  EXPECT_TRUE(session.DirtyFlag());
}

TEST_F(MainScreen, UnderHarrierTheDownloadGoesThroughItsServer) {
  Server server;
  session.HostApp("HARRIER");
  session.SocketControl(&server);
  session.isSocketConnected(true);
  save(kSaveAndSendButton, folder / "z\xC3\xA9ro.1.VKG");
  const std::string sent = folder / "z\xE9ro.1.VKP";
  const auto number = [](std::size_t value) {
    return std::string(3, '\0') + static_cast<char>(value);
  };
  const std::string body = number(101) + std::string("\0\0\x05\xEB", 4) + number(7) + "Harrier" +
                           number(1) + number(1) + number(sent.size()) + sent;
  EXPECT_EQ(server.got, number(body.size()) + body);
  EXPECT_EQ(host.told.size(), 1U);

  server.gone = true;
  forms.ExpectBoxWith("TROUBLE",
                      "bench:1515: the other side has closed the connection\" has "
                      "occurred in Ostrand.HarrierDownload.");
  session.HarrierDownload("pump.VKP");
  session.SocketControl(nullptr);
  forms.ExpectBox("", "Ostrand is not registered with the Harrier toolbar server-- no connection");
  session.HarrierDownload("pump.VKP");
  session.SocketControl(&server);
  session.isSocketConnected(false);
  forms.ExpectBox("", "Ostrand is not registered with the Harrier toolbar server-- no connection");
  session.HarrierDownload("pump.VKP");
}

// ---- The test compile ---------------------------------------------------------------------------

TEST_F(MainScreen, AMissingCompilerIsSearchedForIfTheUserLikes) {
  const auto compile = [&](Answer answer) {
    forms.ExpectBox("MISSING FILE",
                    "Pre-Compiler was not found.\r\nWould you like to search for it?", answer);
    session.RunPreCompile();
    EXPECT_EQ(forms.pointer, platform::Pointer::kNormal);
    EXPECT_EQ(Ostrand::Current(), nullptr);
    return !session.CompileFailed();
  };
  for (const std::string& path : {std::string(), folder / "none"}) {
    session.UserSettings().CompilerPath(path);
    EXPECT_FALSE(compile(Answer::kNo));
    forms.ExpectOpen(std::nullopt);
    EXPECT_FALSE(compile(Answer::kYes));
    EXPECT_EQ(session.UserSettings().CompilerPath(), path);
  }
  EXPECT_EQ(dialog(),
            "FIND VK7300 COMPILER; (VKPComp.EXE)|VKPComp.EXE|(All Files)|*.*; VKPComp.EXE; EXE; ; "
            "1800");
  forms.ExpectOpen(OSTRAND_STAND_IN);
  EXPECT_TRUE(compile(Answer::kYes));
  EXPECT_TRUE(std::filesystem::is_empty(work.Path()));

  // A save alone tells the path, and goes on without.
  session.UserSettings().CompilerPath("/none");
  forms.ExpectBox("MISSING FILE", "/none was not found.\r\nWould you like to search for it?.",
                  Answer::kYes);
  forms.ExpectOpen(std::nullopt);
  EXPECT_TRUE(session.SavePipeline());
  EXPECT_TRUE(onDisk("pump.VKW"));
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
  constexpr std::tuple<bool, bool, Answer, i16, bool> cases[] = {
      {false, false, Answer::kCancel, kTrue, false}, {false, false, Answer::kNo, kFalse, false},
      {false, false, Answer::kYes, kFalse, true},    {false, true, Answer::kYes, kTrue, false},
      {true, false, Answer::kNo, kFalse, false},     {true, false, Answer::kYes, kFalse, true},
      {true, true, Answer::kYes, kFalse, false},
  };
  for (const auto& [force, bad, answer, cancels, saved] : cases) {
    edit();
    std::filesystem::remove(program);
    if (bad) makeBad();
    forms.ExpectBox("QUIT GENERATOR", question, answer);
    if (bad) expectRefusal();
    i16 cancelled = 5;
    const int writes = around.settings.writes;
    session.CloseSession(force, cancelled);
    EXPECT_EQ(cancelled, cancels);
    EXPECT_EQ(host.told, cancelled == kTrue ? Told{} : Told{"complete"});
    EXPECT_EQ(onDisk("pump.VKP"), saved);
    EXPECT_EQ(session.DirtyFlag(), !saved);
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
  EXPECT_EQ(host.told, Told{});
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

TEST_F(MainScreen, ArrowsGoFromBoxToBox) {
  session.SetFocus(Focus::kOper);
  EXPECT_EQ(forms.helpLines.back(), "Enter operator's name. Up to 30 characters.");
  for (const auto& [key, focus] : {std::pair{Key::kUp, Focus::kOper},
                                   {Key::kDown, Focus::kIDNum},
                                   {Key::kUp, Focus::kOper},
                                   {Key::kDown, Focus::kIDNum},
                                   {Key::kDown, Focus::kButton}}) {
    session.KeyDown(key);
    EXPECT_EQ(session.FocusAt(), focus);
  }
  EXPECT_EQ(forms.helpLines.back(), "Enter an appropriate ID number. Up to 30 characters.");
  EXPECT_EQ(session.FocusButton(), kConfigurationButton);
}

TEST_F(MainScreen, OptionScreensWorkOnTheTableAndTakeEffect) {
  Settings& settings = session.UserSettings();
  session.SettingsScreen([&] {
    EXPECT_EQ(settings.Rows()[25].Value, "4095");
    settings.Rows()[25].Value = "7";
    settings.Rows()[10].Value = "255";
  });
  store->EstMeasTime = -1;
  session.ShowOptions("settings");  // no such screen
  EXPECT_EQ(settings.WarningMessageMask(), 4095);
  EXPECT_NE(store->EstMeasTime, -1) << "the summary is drawn again";
  session.ShowOptions("Settings");
  EXPECT_EQ(settings.WarningMessageMask(), 7);
  EXPECT_EQ(session.Colors().FormBack, 255);
}

}  // namespace
}  // namespace ostrand
