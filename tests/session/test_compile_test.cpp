// The test compile against a stand-in compiler, started as a real process.
#include "session/test_compile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/posix_work_folders.h"
#include "platform/surroundings.h"
#include "session/ostrand.h"
#include "session/settings.h"
#include "support/memory_settings.h"
#include "support/scripted_forms.h"
#include "support/stand_ins.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;
using testing::WriteDisk;

// The program for the logger.
class Sendings : public OstrandEvents {
 public:
  void DownloadRequest(const std::string& name, bool) override { sent.push_back(name); }
  std::vector<std::string> sent;
};

// Pauses only for this many rounds after each start, so that the timeout of a hanging compiler
// comes soon.
class HastyProcesses : public platform::PosixProcesses {
 public:
  Result<std::unique_ptr<platform::Process>> Start(const platform::ProgramCall& call) override {
    rounds_ = 0;
    return PosixProcesses::Start(call);
  }
  void Rest() override {
    ++rests;
    if (rounds_++ < restingRounds) PosixProcesses::Rest();
  }
  int rests = 0;
  int restingRounds = kMaxCompileRounds;

 private:
  int rounds_ = 0;
};

// The button that saves and sends, with a misbehaving compiler.
class IllCompilers : public ::testing::Test {
 protected:
  IllCompilers() {
    settings.sections["QUILLON\\QUILLON"] = {{"WarningMessageMask", "4095"}};
    ORVUS_COMMON::SetAllDefaults(*store);
    store->TempBlock.BlockCount = 3;
    for (const int block : {1, 3}) store->TempBlock[block].Reps = 2;
    bool cancelled = false;
    session.NameProject(project);
    EXPECT_TRUE(session.WriteProjectFile(folder / "pump"));
    session.isHarrierRunning(true);
    session.OpenFile(project, cancelled);
    EXPECT_FALSE(cancelled);
  }

  // The user's view of a compile: the box of its result, and what was skipped.
  std::string saveAndSend(const std::string& compiler, const char* behaviour) {
    ::setenv("STAND_IN", behaviour, 1);
    session.UserSettings().CompilerPath(compiler);
    host.sent.clear();
    forms.shown.clear();
    forms.CollectBoxes();
    forms.ExpectSave(project);
    std::filesystem::remove(folder / "pump.VKP");
    session.Click(kSaveAndSendButton);
    EXPECT_TRUE(session.Saved());
    EXPECT_TRUE(std::filesystem::exists(folder / "pump.VKP"));
    EXPECT_EQ(testing::StandInsAlive(), 0);
    std::string read = session.CompileSkipped();
    for (const platform::MessageBox& box : forms.shown) read += box.title + "\n" + box.text;
    return read;
  }

  testing::TempFolder folder;
  testing::TempFolder work;
  const std::string project = folder / "pump.VKG";
  platform::PosixFileSystem files{platform::Syncing::kOff};
  platform::PosixClock clock{1'000'000'000};
  platform::PosixWorkFolders workFolders{files};
  testing::ScriptedForms forms;
  HastyProcesses hasty;
  testing::MemorySettingsStore settings;
  testing::MemoryRegistry registry;
  Sendings host;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand session{*store,
                  {files, clock, forms, hasty, settings, registry, work.Path(), "", &workFolders},
                  host};
};

TEST_F(IllCompilers, LeaveNothingAndSendNoWrongProgram) {
  const std::string aFolder = folder / "folder";
  const std::string notExecutable = folder / "data";
  const std::string script = folder / "script";
  std::filesystem::create_directory(aFolder);
  WriteDisk(notExecutable, "#!/bin/sh\n");
  WriteDisk(script, "#!/no/such/interpreter\n");
  WriteDisk(folder / "garbage",
            "\x7F"
            "ELF and no more");
  for (const std::string& program : {script, folder / "garbage"}) {
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  }
  const std::string standIn = OSTRAND_STAND_IN;
  const std::string version = "Skipped version. ";
  const std::string compile = "Skipped pre-compile. ";
  const std::string missing = "MISSING FILE\nPre-Compiler was not found.";
  const std::string result = "COMPILE RESULT\nPre-Compiler: " + work.Path() + "ostrand-";
  const std::string newHead = "/TEMP$$$$.VKP\r\nVersion No: 6.3   Date Code: 051508\r\n\r\n";
  const std::string oldHead = "/TEMP$$$$.VKP\r\nVersion No: 4.2   Date Code: 051507\r\n\r\n";
  // The user's view; nothing for a good program, which is sent.
  const std::tuple<std::string, const char*, std::string> cases[] = {
      {folder / "none", "", missing},
      {aFolder, "", missing},
      {notExecutable, "", version + notExecutable + ": Permission denied"},
      {script, "", version + script + ": No such file or directory"},
      {folder / "garbage", "", version + (folder / "garbage") + ": Exec format error"},
      {standIn, "versionnone", version + standIn + " ended without a report"},
      {standIn, "versionempty", version + standIn + " ended without a report"},
      {standIn, "versioncode", version + standIn + " exited with code 3 without a report"},
      {standIn, "versioncrash", version + standIn + " was ended by signal 6 (Aborted) without"},
      {standIn, "versionhang", version + standIn + " did not end in time"},
      {standIn, "versionfolder", version + standIn + " wrote a report that is not a regular file"},
      {standIn, "versionfifo", version + standIn + " wrote a report that is not a regular file"},
      {standIn, "versionlarge", "VERCOMP.TXT: the report is larger than 4 MB"},
      {standIn, "versionendless", "VERCOMP.TXT: the report is larger than 4 MB"},
      {standIn, "versionbinary", compile + standIn + " exited with code 3 without a report"},
      {standIn, "none", compile + standIn + " ended without a report"},
      {standIn, "empty", compile + standIn + " ended without a report"},
      {standIn, "code", compile + standIn + " exited with code 3 without a report"},
      {standIn, "crash", compile + standIn + " was ended by signal 6 (Aborted) without a report"},
      {standIn, "hang", compile + standIn + " did not end in time"},
      {standIn, "cuthang", compile + standIn + " did not end in time"},
      {standIn, "stop", compile + standIn + " did not end in time"},
      {standIn, "folder", compile + standIn + " wrote a report that is not a regular file"},
      {standIn, "fifo", compile + standIn + " wrote a report that is not a regular file"},
      {standIn, "dangling", compile + standIn + " wrote a report that is not a regular file"},
      {standIn, "large", "PRECOMP.TXT: the report is larger than 4 MB"},
      {standIn, "endless", "PRECOMP.TXT: the report is larger than 4 MB"},
      {standIn, "wipe", compile + standIn + " ended without a report"},
      {standIn, "bad", newHead + "Line 1: Scan: (Subroutine)\r\n"},
      {standIn, "oldbad", oldHead + "[Compile Results]\r\nLine 7: Undeclared variable\r\nEnd\r\n"},
      {standIn, "binary", result},
      {standIn, "longline", "bytes not shown)"},
      {standIn, "manylines", "error\r\nlast line\r\n"},
      {standIn, "cut", "The compiler was ended by signal 6 (Aborted).\r\n\r\nLine 1: Scan:"},
      {standIn, "aftercrash", "The compiler was ended by signal 6 (Aborted).\r\n\r\nLine 1: Scan:"},
      {standIn, "afterkill", "The compiler was ended by signal 9 (Killed).\r\n\r\nLine 1: Scan:"},
      {standIn, "aftercode", "The compiler exited with code 3.\r\n\r\nLine 1: Scan:"},
      {standIn, "oldcode", "The compiler exited with code 3.\r\n\r\nOld compiler"},
      {standIn, "leavecrash", "The compiler was ended by signal 6 (Aborted)."},
      {standIn, "good", ""},
      {standIn, "old", ""},
      {standIn, "exact", ""},
      {standIn, "lf", ""},
      {standIn, "cr", ""},
      {standIn, "slow", ""},
      {standIn, "flood", ""},
      {standIn, "extra", ""},
      {standIn, "child", ""},
      {standIn, "leave", ""},
  };
  int rounds = 0;
  forms.meanwhile = [&] { ++rounds; };
  for (const auto& [compiler, behaviour, expected] : cases) {
    SCOPED_TRACE(compiler + " " + behaviour);
    hasty.restingRounds = expected.ends_with("did not end in time") ? 1000 : kMaxCompileRounds;
    store->TempBlock[1].BlockTime = store->TempBlock[3].BlockTime = 0;
    const std::string read = saveAndSend(compiler, behaviour);
    EXPECT_TRUE(Holds(read, expected)) << read.substr(0, 1000);
    EXPECT_EQ(read.empty(), expected.empty()) << read.substr(0, 1000);
    EXPECT_LT(read.size(), 70'000U);
    EXPECT_EQ(host.sent.size(), expected.empty() ? 1U : 0U);
    EXPECT_EQ(forms.helpLines.back(), session.CompileSkipped());
    // Also a bad program has times, here one more for the next line.
    if (expected.empty() || behaviour == std::string_view("oldbad")) {
      EXPECT_GT(store->TempBlock[1].BlockTime, 1000);
      EXPECT_EQ(store->TempBlock[3].BlockTime, store->TempBlock[1].BlockTime + 1);
    }
    EXPECT_TRUE(std::filesystem::is_empty(work.Path()));
  }
  EXPECT_EQ(hasty.rests, rounds) << "even with a host that runs events";
}

// In a folder that others can write, files planted under the names of the compile are never read
// and never written through; in a private one they are not in the way.
TEST_F(IllCompilers, IgnoreOlderFiles) {
  const std::string outside = folder / "outside";
  Ostrand plain{*store, {files, clock, forms, hasty, settings, registry, work.Path()}, host};
  for (const std::string name : {"TEMP$$$$.VKP", "VERCOMP.TXT", "PRECOMP.TXT"}) {
    for (const bool isLink : {true, false}) {
      SCOPED_TRACE(name + (isLink ? " link" : " folder"));
      WriteDisk(outside, "[Version] VERSION: 6 DATE: 051508\r\nCompiled OK\r\n");
      const std::string planted = work / name;
      if (isLink) std::filesystem::create_symlink(outside, planted);
      if (!isLink) std::filesystem::create_directories(planted + "/inner");
      EXPECT_EQ(saveAndSend(OSTRAND_STAND_IN, "good"), "");
      EXPECT_TRUE(std::filesystem::exists(planted));
      plain.UserSettings().CompilerPath(OSTRAND_STAND_IN);
      plain.RunPreCompile();
      EXPECT_EQ(plain.CompileFailed(), !isLink);
      const std::string report =
          plain.CompileSkipped() + (forms.shown.empty() ? "" : forms.shown.back().text);
      EXPECT_EQ(Holds(report, planted + ": Is a directory"), !isLink) << report;
      EXPECT_EQ(ReadDisk(outside), "[Version] VERSION: 6 DATE: 051508\r\nCompiled OK\r\n");
      std::filesystem::remove_all(planted);
      EXPECT_TRUE(std::filesystem::is_empty(work.Path()));
    }
  }
}

TEST_F(IllCompilers, UseTheCurrentFolderOfTheMachine) {
  registry.values["HKLM\\SOFTWARE\\Fernhollow Instruments\\ProgGen\\WorkDir"] = {folder / "none",
                                                                                 {}};
  EXPECT_TRUE(Holds(saveAndSend(OSTRAND_STAND_IN, "good"),
                    (folder / "none") + ": No such file or directory"));
  EXPECT_TRUE(host.sent.empty());
}

TEST(CompileReports, ShowFirstAndLastLines) {
  std::string text;
  for (int line = 0; line < 40'000; ++line) text += "x\r\n";
  const std::string shown = ShownInBox(text);
  EXPECT_EQ(shown.size(), text.size() - 54'468 + 42);
  EXPECT_TRUE(Holds(shown, "x\r\n\r\n(18156 lines, 54468 bytes not shown)\r\n\r\nx\r\n"));
  EXPECT_EQ(ShownInBox(text.substr(0, 65'536)), text.substr(0, 65'536));
}

TEST(CompileReports, TimesBelongToTheirBlocks) {
  const auto store = NewStore();
  store->VoltBlock.BlockCount = 3;
  store->VoltBlock[2].Reps = 4;
  store->BridgeBlock.BlockCount = 1;
  store->PulseBlock[0].BlockCount = 2;
  PulseBlockData& pulses = store->PulseBlock[0][2];
  pulses.Meas = "HiLev";
  store->PulseBlock[0][1].Meas = "Volts";  // not a kind with a statement
  store->VoltBlock[3].Reps = store->BridgeBlock[1].Reps = pulses.Reps = 1;
  store->PulseBlock[0][1].Reps = 1;
  store->TK40MBlock.BlockCount = 2;
  store->TK40MBlock[1].Reps = store->TK40MBlock[2].Reps = 30;
  MuxLines lines;
  lines[1] = "30 31 ";
  lines[2] = "32 33 ";
  StoreMeasuredTimes(
      *store,
      "Line 5: VOLTSE = 1\r\nScan: (Subroutine)\r\nLine 6: VOLTSE = 1\r\n"
      "Scan:\r\nLine 10: Battery = 10.5\r\nLine 10: Battery = 1\r\n"
      "Line 11: PanelTemp=11\r\nLine 12: VoltSE = 12 uSec\r\nLine 12: VoltSE = 1\r\n"
      "Line 13:VOLTDIFF=13\r\nLine 14: VOLTSE = 14\r\nLine 15: BrHalf3W = 15\r\n"
      "Line 16: StrainCalc = 16\r\nLine 17: BrFull = 17\r\n"
      "Line 18: PulseCount = 2147483648\r\nLine 18: PulseCount = 18\r\nLine 19: Delay = 9\r\n"
      "PulseCount = 3\r\nLine 20: PulseCount 3\r\n"
      "Line 30: TK40M = 30\r\nLine 31: TK40M = 31\r\nLine 32: TK40M = 32\r\n"
      "Scan: slow\r\nLine 33: TK40M = 33\r\n",
      lines);
  EXPECT_EQ(store->Config.BatteryTime, 11) << "rounded half to even, then added";
  EXPECT_EQ(store->Config.PanelTime, 11);
  const auto times = [](const auto& group) {
    std::vector<i32> found;
    for (int b = 1; b <= group.BlockCount; ++b) found.push_back(group[b].BlockTime);
    return found;
  };
  EXPECT_EQ(times(store->VoltBlock), (std::vector<i32>{0, 13, 13}));
  EXPECT_EQ(times(store->BridgeBlock), (std::vector<i32>{15}));
  EXPECT_EQ(times(store->PulseBlock[0]), (std::vector<i32>{0, 18}))
      << "the first is too large for the store";
  EXPECT_EQ(times(store->TK40MBlock), (std::vector<i32>{61, 32}));
}

}  // namespace
}  // namespace ostrand
