// The session with one project: opening, naming, saving, and user actions on the main screen, from
// the Save button to the logger.
#include "session/ostrand.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "controls/numeric_field.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/socket.h"
#include "screens/setup_screens.h"
#include "session/settings.h"
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
using Texts = std::vector<std::string>;

class KeepingHost : public OstrandEvents {
 public:
  void DownloadRequest(const std::string& name, bool inside) override {
    raised.push_back("download " + name + (inside ? " inside" : ""));
    onDownload();
  }
  void NewFile(const std::string& name) override {
    raised.push_back("file " + name);
    control = Ostrand::Current();
    onNewFile();
  }
  void PopupOptionsMenu() override { raised.emplace_back("menu"); }
  void SessionComplete() override {
    raised.emplace_back("complete");
    onComplete();
  }
  Texts raised;
  std::function<void()> onComplete = [] {};
  std::function<void()> onNewFile = [] {};
  std::function<void()> onDownload = [] {};
  Ostrand* control = nullptr;  // holder of the process-wide reference at the last NewFile
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
  testing::TestSurroundings around{files, clock, forms, work.Path(), "/opt/ostrand"};
  Ostrand session{*store, around.all, host};
};

constexpr std::string_view kPump =
    "[GEN VERSION]\r\nVersion=6.0\r\n\r\n[CONFIGURATION]\r\nOperator=Marge\r\nIDNumber=Pump 42\r\n";

// The settings would store the folder, for sessions that run elsewhere.
TEST_F(Session, OpensNothingWhenTheCurrentFolderIsUnknown) {
  class Lost : public platform::PosixFileSystem {
    std::string WorkingFolder() override { return {}; }
  } lost;
  testing::TestSurroundings elsewhere{lost, clock, forms, work.Path(), "/opt/ostrand"};
  Ostrand control{*store, elsewhere.all, host};
  const std::string folderBefore = control.GenFilePath();
  forms.ExpectBoxWith("TROUBLE", "pump.VKG: The current folder cannot be determined");
  bool cancelled = false;
  control.OpenFile("pump.VKG", cancelled);
  EXPECT_TRUE(cancelled);
  EXPECT_EQ(control.GenFilePath(), folderBefore);
}

TEST_F(Session, NamesProjects) {
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
  EXPECT_EQ(session.HelpPath(), "/opt/ostrand/");
  session.HelpPath("C:\\Help");
  EXPECT_EQ(session.HelpPath(), "C:\\Help\\");
}

// Values missing in a file get the system's defaults; only a new project gets the user's values.
TEST_F(Session, NewProjectHasTheUsersIntervalAndTableSizes) {
  const auto values = [&] {
    const OutputTable& last = store->Tables[6];
    return NumberText(store->Scan.ExecutionTime) + " " + NumberText(store->Scan.ExecTimeUnits) +
           " " + NumberText(last.AutoSize) + " " + NumberText(last.Buffer);
  };
  auto& stored = around.settings.sections["QUILLON\\QUILLON"];
  EXPECT_TRUE(session.NewProject(folder / "pump"));
  EXPECT_EQ(values(), "10 1 0 1000");
  stored["DefaultScanInterval"] = "2";
  stored["DefaultScanIntervalUnits"] = "2";
  stored["DefaultTableAutoSize"] = "1";
  stored["DefaultTableNumRecs"] = "250";
  store->VoltBlock.BlockCount = 3;
  EXPECT_TRUE(session.NewProject(folder / "pump"));
  EXPECT_EQ(values(), "2 2 -1 250");
  EXPECT_EQ(store->VoltBlock.BlockCount, 0);
  EXPECT_EQ(session.CurrentFileName(), project);
  EXPECT_EQ(host.raised, Texts{});
  WriteDisk(project, kPump);
  EXPECT_FALSE(openCancelled(project));
  EXPECT_EQ(values(), "10 1 0 1000");
  // An invalid value is replaced by the default; an interval and its units belong together.
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"DefaultScanInterval", "0", "10 1 -1 250"},
      {"DefaultScanIntervalUnits", "4", "10 1 -1 250"},
      {"DefaultScanIntervalUnits", "-1", "10 1 -1 250"},
      {"DefaultTableAutoSize", "2", "2 2 0 250"},
      {"DefaultTableNumRecs", "0", "2 2 -1 1000"},
  };
  for (const auto& [name, value, expected] : cases) {
    const std::string before = std::exchange(stored[name], value);
    EXPECT_TRUE(session.NewProject(folder / "pump"));
    EXPECT_EQ(values(), expected) << name;
    stored[name] = before;
  }
}

TEST_F(Session, EmptyNameAsksTheUser) {
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

  store->VoltBlock.BlockCount = 3;
  forms.ExpectBoxWith("FILE NOT FOUND", Upper(folder / "none.VKG"));
  EXPECT_TRUE(openCancelled(folder / "none.1"));

  // A new name starts a project from the current store, without NewFile.
  forms.ExpectOpen(folder / "new");
  EXPECT_FALSE(openCancelled(""));
  EXPECT_EQ(session.CurrentFileName(), folder / "new.VKG");
  EXPECT_EQ(session.txtOper(), "Kept");
  EXPECT_EQ(store->VoltBlock.BlockCount, 3);
  EXPECT_EQ(host.raised, Texts{});

  forms.ExpectOpen(project);
  EXPECT_FALSE(openCancelled(""));
  EXPECT_EQ(session.txtOper(), "Marge");
  EXPECT_EQ(store->VoltBlock.BlockCount, 0);
  EXPECT_EQ(host.raised, Texts{"file " + project});
  EXPECT_EQ(host.control, &session);
}

TEST_F(Session, SaveDldFileWritesAllFilesUnderTheChosenName) {
  session.txtOper("Ada");
  session.txtIDNum("7");
  forms.ExpectSave(folder / "pump.1");
  session.SaveDldFile();
  EXPECT_EQ(dialog(),
            "SAVE .VKG .VKP .VKW .VKD; (*.VKG)|*.VKG|(All Files)|*.*; EditTemp; .VKG; "
            "C:\\Larkfield\\DLDFILES\\; 4400");
  EXPECT_EQ(host.raised, Texts{"file " + project});
  const std::string saving = "Saving " + Upper(folder / "pump");
  EXPECT_EQ(forms.helpLines,
            (Texts{saving + ".VKG.", saving + ".VKP.", saving + ".VKD.", saving + ".VKW.", ""}));
  const std::string bytes = ReadDisk(project);
  EXPECT_TRUE(Holds(bytes,
                    "\r\nPCTime=9/9/2001 1:46:40 AM\r\n\r\n[CONFIGURATION]\r\n"
                    "Operator=Ada\r\nIDNumber=7\r\n"));
  EXPECT_TRUE(Holds(ReadDisk(program), "Program name: PUMP.VKP\r\n"));

  forms.ExpectSave(std::nullopt);
  session.SaveDldFile();
  EXPECT_EQ(forms.dialog.fileName, "pump");
  EXPECT_TRUE(session.SaveCancelled());
  EXPECT_EQ(host.raised.size(), 1U);
  EXPECT_EQ(ReadDisk(project), bytes);

  session.NameProject("NONAME");
  EXPECT_EQ(session.CurBasicFileName(), work / "EditTemp.VKP");
  EXPECT_TRUE(std::filesystem::exists(work / "EditTemp.VKG"));
}

// A change to the project by another program, and whether a save asks.
TEST_F(Session, SaveAsksBeforeOverwritingAnotherProgramsChanges) {
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
    // The session recognizes its own writes.
    EXPECT_TRUE(session.SavePipeline());
    WriteDisk(project, other);
    session.OverwriteChanged(true);
    EXPECT_TRUE(session.SavePipeline());
    session.OverwriteChanged(false);
    std::filesystem::remove(folder / "pump.VKP");
  }
  // A new project whose name was free when chosen.
  forms.ExpectOpen(folder / "fresh");
  ASSERT_FALSE(openCancelled(""));
  WriteDisk(folder / "fresh.VKG", "");
  forms.ExpectBoxWith("PROJECT CHANGED", "fresh.VKG", Answer::kCancel);
  EXPECT_FALSE(session.SavePipeline());
  EXPECT_EQ(ReadDisk(folder / "fresh.VKG"), "");
}

TEST_F(Session, SaveWaitsForAnotherSave) {
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

// If one call fails, or it and all later ones, each file of the project is whole, new or unchanged;
// the project itself is the remainder of a dead save only if it was before.
TEST_F(Session, FailingDiskLosesNoFile) {
  testing::MemoryFileSystem disk;
  disk.files["/data/VKPComp.EXE"] = "a compiler";
  Texts listed;  // as saved
  const auto save = [&](platform::FileSystem& target, const std::string& oper) {
    testing::ScriptedForms user;
    user.CollectBoxes();
    testing::TestSurroundings machine(target, clock, user, "/tmp");
    Ostrand control(*store, machine.all, host);
    control.UserSettings().CompilerPath("/data/VKPComp.EXE");
    control.txtOper(oper);
    control.NameProject("/data/pump");
    const bool saved = control.SavePipeline();
    listed = control.SavedFiles();
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
  disk.steps.clear();
  ASSERT_TRUE(save(disk, "After"));
  EXPECT_EQ(disk.steps,
            (Texts{"rename to /data/pump.VKG", "sync folder of /data/pump.VKG",
                   "delete /data/pump._KG", "rename to /data/pump.VKP", "rename to /data/pump.VKD",
                   "rename to /data/pump.VKW", "sync folder of /data/pump"}));
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
        for (const std::string& name : listed)
          EXPECT_EQ(disk.files[name], after.at(name)) << failAt;
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

// A disk whose project lock is taken over by another machine after `kept` calls of Keep.
class LosingDisk : public testing::MemoryFileSystem {
 public:
  int kept = 0;

  Result<std::unique_ptr<platform::ProjectLock>> LockProject(std::string_view,
                                                             const platform::Waiting&) override {
    struct Lock : platform::ProjectLock {
      explicit Lock(int& left) : left_(left) {}
      Result<> Keep() override {
        return left_-- > 0 ? Result<>(Done{}) : Result<>(Error{"/data/pump.VKG: taken over"});
      }
      int& left_;
    };
    return std::unique_ptr<platform::ProjectLock>(std::make_unique<Lock>(kept));
  }
};

// The documents come into their places together, after the last look at the lock.
TEST_F(Session, PlacesNoFileAfterTheLossOfItsLock) {
  const Texts all = {"/data/pump.VKG", "/data/pump.VKP", "/data/pump.VKD", "/data/pump.VKW"};
  constexpr std::size_t kPlaced[] = {0, 1, 2, 2, 2, 4};
  for (std::size_t kept = 0; kept < std::size(kPlaced); ++kept) {
    LosingDisk disk;
    disk.files["/data/VKPComp.EXE"] = "a compiler";
    disk.kept = static_cast<int>(kept);
    testing::ScriptedForms user;
    user.CollectBoxes();
    testing::TestSurroundings machine(disk, clock, user, "/tmp");
    Ostrand control(*store, machine.all, host);
    control.UserSettings().CompilerPath("/data/VKPComp.EXE");
    control.NameProject("/data/pump");
    const bool saved = control.SavePipeline();
    EXPECT_EQ(saved, kPlaced[kept] == all.size()) << kept;
    EXPECT_EQ(user.shown.size(), saved ? 0U : 1U) << kept;
    Texts placed;
    for (const std::string& name : all) {
      if (disk.files.contains(name)) placed.push_back(name);
    }
    EXPECT_EQ(placed, Texts(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(kPlaced[kept])));
    EXPECT_EQ(control.SavedFiles(), placed) << kept;
    EXPECT_EQ(disk.files.size(), 1 + placed.size()) << kept;
  }
}

// ---- The main screen

class Server : public SocketObject {
 public:
  Result<> SendData(std::string_view bytes) override {
    got += bytes;
    return Done{};
  }
  std::string got;
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
    host.raised.clear();
  }
  // An edit through a screen.
  void edit() {
    session.Screens()[kFlagsButton] = [] {};
    reopen();
    session.Click(kFlagsButton);
    ASSERT_TRUE(session.DirtyFlag());
  }
  // Presses a button that saves, with this answer to the dialog.
  void save(int button, std::optional<std::string> as) {
    forms.ExpectSave(std::move(as));
    session.Click(button);
  }
  void makeBad() { store->Tables[2].TableName = store->Tables[1].TableName; }
  void expectRefusal() { forms.ExpectBoxWith("DUPLICATION FOUND", "is used as"); }

  // Called from a handler: whether opening another project was refused.
  bool openCancelledInside() {
    WriteDisk(folder / "other.VKG", kPump);
    bool cancelled = false;
    session.OpenFile(folder / "other.VKG", cancelled);
    return cancelled;
  }

  const Texts newFile = {"file " + project};
  i16 ignored = 0;
};

// ---- Buttons ------------------------------------------------------------------------------------

// ---- Saving -------------------------------------------------------------------------------------

TEST_F(MainScreen, ChecksDetermineTheQuestion) {
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
      EXPECT_EQ(host.raised, yes ? newFile : Texts{}) << "and no download";
    }
  }
}

TEST_F(MainScreen, HarrierDownloadsThroughItsServer) {
  Server server;
  session.HostApp("HARRIER");
  session.SocketControl(&server);
  for (const bool connected : {true, false}) {
    session.isSocketConnected(connected);
    if (!connected) {
      forms.ExpectBox("",
                      "Ostrand is not registered with the Harrier toolbar server-- no connection");
    }
    save(kSaveAndSendButton, folder / "z\xC3\xA9ro.1.VKG");
    const std::string sent = folder / "z\xE9ro.1.VKP";
    const auto number = [](std::size_t value) {
      return std::string(3, '\0') + static_cast<char>(value);
    };
    const std::string body = number(101) + std::string("\0\0\x05\xEB", 4) + number(7) + "Harrier" +
                             number(1) + number(1) + number(sent.size()) + sent;
    EXPECT_EQ(server.got, number(body.size()) + body);
    EXPECT_EQ(host.raised.back(), "file " + (folder / "z\xC3\xA9ro.1.VKG")) << "no download";
  }
}

// ---- The test compile ---------------------------------------------------------------------------

// A save or a test compile locks out other changes of the project.
TEST_F(MainScreen, BusyControlRefusesChanges) {
  WriteDisk(folder / "other.VKG", kPump);
  bool shown = false;
  session.Screens()[kFlagsButton] = [&] { shown = true; };
  session.SettingsScreen({[&] { return shown = true; }, {}});
  reopen();
  int calls = 0;
  const auto tryAll = [&] {
    if (++calls > 1) return;
    EXPECT_TRUE(session.Busy());
    bool cancelled = false;
    session.OpenFile(folder / "other.VKG", cancelled);
    EXPECT_TRUE(cancelled);
    i16 stays = kFalse;
    session.CloseSession(true, stays);
    EXPECT_EQ(stays, kTrue);
    cancelled = false;
    session.AskToSaveAll(true, cancelled);
    EXPECT_TRUE(cancelled);
    EXPECT_FALSE(session.NewProject(folder / "other.VKG"));
    EXPECT_FALSE(session.SaveDldFile() || session.SavePipeline());
    EXPECT_FALSE(session.WriteProjectFile(folder / "x") || session.WriteProgram(folder / "x") ||
                 session.WriteTableDescription(folder / "x") ||
                 session.WriteWiringDiagram(folder / "x"));
    EXPECT_EQ(session.WiringText(), "");
    EXPECT_EQ(session.CurBasicFileName(), program);
    session.Click(kFlagsButton);
    session.Click(kSaveButton);
    session.ShowOptions("Settings");
    session.RunPreCompile();
    EXPECT_EQ(Ostrand::Current(), &session);
  };
  ::setenv("STAND_IN", "slow", 1);
  forms.meanwhile = tryAll;
  session.RunPreCompile();
  EXPECT_GE(calls, 1);
  EXPECT_FALSE(session.CompileFailed());

  host.onNewFile = tryAll;
  calls = 0;
  save(kSaveButton, project);
  EXPECT_GE(calls, 1);
  EXPECT_TRUE(session.Saved() && !session.SaveCancelled());
  EXPECT_FALSE(shown || session.Busy());
  EXPECT_EQ(store->Gen.Operator, "Name");
  EXPECT_EQ(host.raised, newFile);
  EXPECT_FALSE(onDisk("x.VKG") || onDisk("x.VKP") || onDisk("x.VKD") || onDisk("x.VKW"));

  // An open screen holds a copy of a part of the project; a download is not part of the save.
  host.onNewFile = [] {};
  session.Screens()[kFlagsButton] = [&] {
    EXPECT_TRUE(openCancelledInside() && !session.NewProject("x"));
  };
  session.Click(kFlagsButton);
  host.onDownload = [&] { EXPECT_FALSE(openCancelledInside()); };
  save(kSaveAndSendButton, project);
  EXPECT_EQ(store->Gen.Operator, "Marge");
}

struct HostFailure {};

// ---- Ending -------------------------------------------------------------------------------------

TEST_F(MainScreen, EndOfSessionAsksAboutEdits) {
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
    EXPECT_EQ(host.raised, cancelled == kTrue ? Texts{} : Texts{"complete"});
    EXPECT_EQ(onDisk("pump.VKP"), saved);
    EXPECT_EQ(session.DirtyFlag(), !saved);
    EXPECT_EQ(around.settings.writes, writes + 1) << "settings are kept either way";
  }
}

TEST_F(MainScreen, ForcedEndAlwaysRaisesSessionComplete) {
  edit();
  makeBad();
  host.onComplete = [&] {
    i16 unchanged = 5;
    session.CloseSession(true, unchanged);
    EXPECT_EQ(unchanged, 5) << "a second end does nothing";
  };
  around.settings.failure = "/home/settings: No space left on device";
  forms.ExpectBoxWith("QUIT GENERATOR", "save changes", Answer::kYes);
  expectRefusal();
  forms.ExpectBoxWith("TROUBLE", "/home/settings: No space left on device");
  session.CloseSession(true, ignored);
  EXPECT_EQ(host.raised, Texts{"complete"});

  around.settings.failure.clear();
  for (const bool force : {true, false}) {
    edit();
    const int writes = around.settings.writes;
    forms.onBox = [] { throw HostFailure(); };
    EXPECT_THROW(session.CloseSession(force, ignored), HostFailure);
    forms.onBox = [] {};
    EXPECT_EQ(host.raised, force ? Texts{"complete"} : Texts{});
    EXPECT_EQ(ignored, force ? kFalse : kTrue);
    EXPECT_EQ(around.settings.writes, writes + 1);
  }
  // Half a save is not sent, and does not end the session.
  edit();
  std::filesystem::create_directories(program + "/inner");
  const int beeps = forms.beeps;
  forms.ExpectBox("TROUBLE", "Unexpected error 75, \"" + program +
                                 ": Is a directory\" has occurred in SAVEDLD.SaveTheDld.\r\n "
                                 "Press \"OK\" and the program will continue.");
  save(kSaveAndSendButton, project);
  EXPECT_EQ(forms.beeps, beeps + 1);
  EXPECT_EQ(session.SavedFiles(), Texts{project});
  EXPECT_EQ(host.raised, newFile);
  forms.ExpectBoxWith("QUIT GENERATOR", "save changes", Answer::kYes);
  forms.ExpectBoxWith("TROUBLE", "SAVEDLD.SaveTheDld");
  session.KeyDown(Key::kEscape);
  EXPECT_EQ(host.raised.back(), newFile[0]);
  EXPECT_TRUE(session.DirtyFlag());
}

TEST_F(MainScreen, PrintPanelRestoresMainRow) {
  session.SetQuitButton(false);
  session.OffSaveDownload();
  for (const bool usable : {false, true}) {
    session.PrintSelect();
    session.PrintSelect();
    EXPECT_FALSE(session.MainButtons().Enabled(kSaveButton));
    session.SetSaveDownload(usable);
    session.CancelPrint();
    EXPECT_FALSE(session.PrintPanelShown() || session.MainButtons().QuitEnabled());
    EXPECT_TRUE(session.MainButtons().Enabled(kSaveButton));
    EXPECT_EQ(session.MainButtons().Enabled(kSaveAndSendButton), usable);
  }
}

// ---- The screens of the setup -------------------------------------------------------------------

// Does one thing on each screen.
class OneAct : public ScreenHost {
 public:
  void ShowModal(Screen& screen) override {
    ++shown;
    act(screen);
  }
  std::function<void(Screen&)> act;
  int shown = 0;
};

TEST_F(MainScreen, VariablesAreCheckedAfterAnEditOfTheBlocks) {
  OneAct user;
  ConnectSetupScreens(session, user);
  reopen();
  const auto remove = [](Screen& screen) {
    dynamic_cast<NumericField&>(*screen.Find("BlockCount")).Spin(false);
  };
  // The mask, whether the last block is removed, whether it ends with Done, whether the user is
  // warned.
  constexpr std::tuple<i32, bool, bool, bool> cases[] = {
      {1, true, true, true},  {3, true, true, true},   {2, true, true, false},
      {0, true, true, false}, {1, false, true, false}, {1, true, false, false},
  };
  constexpr int kScreens[] = {kThermocoupleButton, kVoltageButton, kBridgeButton, kPulseButton,
                              kTK40MButton};
  store->Config.TK40MQty = 1;
  for (const int button : kScreens) {
    for (const auto& [mask, edited, done, warned] : cases) {
      store->TempBlock.BlockCount = store->VoltBlock.BlockCount = store->BridgeBlock.BlockCount =
          store->TK40MBlock.BlockCount = store->PulseBlock[0].BlockCount = 1;
      store->Tables[1].WriteIf = 1;
      store->Tables[1].Write[1].MeasureVar = "Gone";
      session.UserSettings().WarningMessageMask(0);
      user.act = [](Screen& screen) { screen.Done(); };  // calculated values are up to date
      session.Click(button);
      session.UserSettings().WarningMessageMask(mask);
      user.act = [&, edits = edited, ends = done](Screen& screen) {
        if (edits) remove(screen);
        ends ? screen.Done() : screen.End(ModalResult::kCancel);
      };
      if (warned) forms.ExpectBoxWith("INVALID WRITE IF TRIGGER", "Variable Gone");
      session.Click(button);
    }
  }
  EXPECT_EQ(user.shown, 60);

  user.act = [&](Screen& screen) {
    session.FormCleanup();
    EXPECT_EQ(screen.Result(), ModalResult::kCancel);
  };
  for (const std::string_view option : {"Settings", "Colors", "Settings"}) {
    session.ShowOptions(option);
  }
  session.FormCleanup();
  EXPECT_EQ(user.shown, 63);
}

}  // namespace
}  // namespace ostrand
