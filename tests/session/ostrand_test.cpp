#include "session/ostrand.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "model/defaults.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;
using testing::WriteDisk;

constexpr std::string_view kPump =
    "[GEN VERSION]\r\nVersion=6.0\r\n\r\n[CONFIGURATION]\r\nOperator=Marge\r\nIDNumber=Pump 42\r\n";

class Host : public OstrandEvents {
 public:
  void NewFile(const std::string& name) override {
    newFiles.push_back(name);
    control = Ostrand::Current();
  }
  std::vector<std::string> newFiles;
  Ostrand* control = nullptr;  // that held the process-wide reference at the last NewFile
};

class OstrandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    WriteDisk(compiler, "a compiler");
    around.settings.sections["QUILLON\\QUILLON"]["VKCompPath"] = compiler;
    session.RegistryApp("");
  }

  bool openCancelled(std::string_view name) {
    bool cancelled = false;
    session.OpenFile(name, cancelled);
    EXPECT_EQ(forms.pointer, platform::Pointer::kNormal);
    EXPECT_EQ(Ostrand::Current(), nullptr);
    return cancelled;
  }

  testing::TempFolder folder;
  testing::TempFolder tools;
  const std::string compiler = tools / "VKPComp.EXE";
  platform::PosixFileSystem files{platform::Syncing::kOff};
  platform::PosixClock clock{1'000'000'000};  // 2001-09-09 01:46:40
  testing::ScriptedForms forms;
  Host host;
  std::unique_ptr<ProjectStore> store = NewStore();
  testing::TestSurroundings around{files, clock, forms, folder.Path()};
  Ostrand session{*store, around.all, host};
};

TEST_F(OstrandTest, StartsUnnamedWithTheDefaultsOfANewProject) {
  EXPECT_EQ(session.BaseName(), "NoName");
  EXPECT_EQ(session.CurrentFileName(), "");
  EXPECT_EQ(session.RegistryApp(), "QUILLON");
  EXPECT_EQ(session.Version(), "6.1.0.07");
  EXPECT_EQ(store->Gen.VersionLastSaved, "6.1.0.07");
  EXPECT_EQ(store->Gen.Version, "6.0");
  EXPECT_EQ(store->Logger.SEChanTotal, 40);
  EXPECT_EQ(session.txtOper(), "Name");
  EXPECT_FALSE(session.DirtyFlag());
}

TEST_F(OstrandTest, NamesProjectsByTheRules) {
  const std::string here = files.WorkingFolder();
  struct Case {
    std::string path;
    std::string file;
    std::string base;
    std::string folder;
  };
  const Case cases[] = {
      {"C:\\Data\\pump.VKG", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.vkg", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.1.txt", "C:\\Data\\pump.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.1.VKG", "C:\\Data\\pump.1.VKG", "pump", "C:\\Data\\"},
      {"C:\\Data\\pump.VKG.bak", "C:\\Data\\pump.VKG.bak", "pump", "C:\\Data\\"},
      {"C:\\Data.VKG\\pump", "C:\\Data.VKG\\pump.VKG", "pump", "C:\\Data.VKG\\"},
      {"/data/v1.2\\pump", "/data/v1.2\\pump.VKG", "pump", "/data/v1.2\\"},
      {"/data/.VKG", "/data/.VKG", "", "/data/"},
      {"pump", "pump.VKG", "pump", here},
      {"pump.VKG", "pump.VKG", "pump", here},
      {"pump.dld", here + "pump.VKG", "pump", here},
  };
  for (const Case& row : cases) {
    session.NameProject(row.path);
    EXPECT_EQ(session.CurrentFileName(), row.file) << row.path;
    EXPECT_EQ(session.BaseName(), row.base) << row.path;
    EXPECT_EQ(session.GenFilePath(), row.folder) << row.path;
  }
  EXPECT_EQ(Ostrand::WithoutExtension("pump.1.VKG.VKG"), "pump.1");
  EXPECT_EQ(Ostrand::WithoutExtension("pump.VKP.old"), "pump");
  EXPECT_EQ(Ostrand::WithoutExtension("pump.VKP.VKG"), "pump.VKP");
  EXPECT_EQ(Ostrand::WithoutExtension("pump.vkg"), "pump.vkg");
}

TEST_F(OstrandTest, OpensAFileIntoAFreshStore) {
  WriteDisk(folder / "pump.vkg", kPump);
  store->VoltBlock.BlockCount = 3;  // of the project before
  store->Gen.Operator = "Somebody else";
  EXPECT_FALSE(openCancelled(folder / "pump"));
  EXPECT_EQ(store->VoltBlock.BlockCount, 0);
  EXPECT_EQ(store->Logger.PulseChanTotal, 2);
  EXPECT_EQ(session.txtOper(), "Marge");
  EXPECT_EQ(session.txtIDNum(), "Pump 42");
  EXPECT_EQ(host.newFiles, std::vector<std::string>{folder / "pump.VKG"});
  EXPECT_EQ(host.control, &session);
}

TEST_F(OstrandTest, TellsTheHostThatItsFileIsNotThereAndKeepsTheStore) {
  store->Gen.Operator = "Marge";
  forms.ExpectBox("FILE NOT FOUND", "The requested program generator file: \r\n" +
                                        Upper(folder / "pump.VKG") +
                                        "\r\n\r\ncould not be located on this computer.");
  EXPECT_TRUE(openCancelled(folder / "pump.1"));
  EXPECT_EQ(store->Gen.Operator, "Marge");
  EXPECT_TRUE(host.newFiles.empty());
}

TEST_F(OstrandTest, TellsWhyAFileCannotBeRead) {
  std::filesystem::create_directory(folder / "Pump.VKG");
  forms.ExpectBox("FILE CANNOT BE READ",
                  "The requested program generator file could not be read: \r\n" +
                      (folder / "Pump.VKG") + ": Is a directory");
  EXPECT_TRUE(openCancelled(folder / "pump.VKG"));
  EXPECT_TRUE(host.newFiles.empty());
}

TEST_F(OstrandTest, AnEmptyNameAsksTheUser) {
  WriteDisk(folder / "pump.VKG", kPump);
  around.settings.sections["QUILLON\\QUILLON"]["GenPath"] = "C:\\Larkfield";
  session.NameProject("/data/before");
  store->Gen.Operator = "Kept";

  forms.ExpectOpen(std::nullopt);
  EXPECT_TRUE(openCancelled("  "));
  EXPECT_EQ(forms.dialog.title, "OPEN GENERATOR FILE");
  EXPECT_EQ(forms.dialog.filter, "(*.VKG)|*.VKG|(All Files)|*.*");
  EXPECT_EQ(forms.dialog.defaultExtension, ".VKG");
  EXPECT_EQ(forms.dialog.initialFolder, "C:\\Larkfield\\");
  EXPECT_EQ(forms.dialog.helpContext, 1800);
  EXPECT_EQ(session.CurrentFileName(), "/data/before.VKG");
  EXPECT_EQ(session.BaseName(), "before");
  EXPECT_EQ(session.GenFilePath(), "/data/");

  // A new name starts a project from the store as it is, without NewFile.
  forms.ExpectOpen(folder / "new");
  EXPECT_FALSE(openCancelled(""));
  EXPECT_EQ(session.CurrentFileName(), folder / "new.VKG");
  EXPECT_EQ(session.txtOper(), "Kept");
  EXPECT_TRUE(host.newFiles.empty());

  forms.ExpectOpen(folder / "pump.VKG");
  EXPECT_FALSE(openCancelled(""));
  EXPECT_EQ(session.txtOper(), "Marge");
  EXPECT_EQ(host.newFiles.size(), 1U);
}

TEST_F(OstrandTest, SaveDldFileWritesAllFilesUnderTheNameChosen) {
  session.txtOper("Ada");
  session.txtIDNum("7");
  forms.ExpectSave(folder / "pump.1");
  session.SaveDldFile();
  EXPECT_EQ(forms.dialog.title, "SAVE .VKG .VKP .VKW .VKD");
  EXPECT_EQ(forms.dialog.fileName, "EditTemp");
  EXPECT_EQ(forms.dialog.helpContext, 4400);
  EXPECT_FALSE(session.SaveCancelled());
  EXPECT_EQ(host.newFiles, std::vector<std::string>{folder / "pump.VKG"});
  const std::string base = Upper(folder / "pump");
  EXPECT_EQ(forms.helpLines,
            (std::vector<std::string>{"Saving " + base + ".VKG.", "Saving " + base + ".VKP.",
                                      "Saving " + base + ".VKD.", "Saving " + base + ".VKW.", ""}));
  const std::string project = ReadDisk(folder / "pump.VKG");
  EXPECT_TRUE(Holds(project, "\r\nOperator=Ada\r\nIDNumber=7\r\n"));
  EXPECT_TRUE(Holds(project, "\r\nPCTime=9/9/2001 1:46:40 AM\r\n"));
  const std::string program = ReadDisk(folder / "pump.VKP");
  EXPECT_TRUE(Holds(program, "Program name: PUMP.VKP\r\n"));
  EXPECT_TRUE(Holds(program, "I.D. number: 7\r\n"));

  forms.ExpectSave(std::nullopt);
  session.SaveDldFile();
  EXPECT_EQ(forms.dialog.fileName, "pump");
  EXPECT_TRUE(session.SaveCancelled());
  EXPECT_EQ(host.newFiles.size(), 1U);
  EXPECT_EQ(ReadDisk(folder / "pump.VKG"), project);
}

TEST_F(OstrandTest, AFailedStepEndsThePipelineAndKeepsWhatWasWritten) {
  std::filesystem::create_directories(folder / "pump.VKP/inner");
  session.NameProject(folder / "pump");
  forms.ExpectBox("TROUBLE", "Unexpected error 75, \"" + (folder / "pump.VKP") +
                                 ": Is a directory\" has occurred in SAVEDLD.SaveTheDld.\r\n "
                                 "Press \"OK\" and the program will continue.");
  EXPECT_FALSE(session.SavePipeline());
  EXPECT_TRUE(std::filesystem::exists(folder / "pump.VKG"));
  EXPECT_EQ(forms.beeps, 1);

  session.NameProject(folder / "none/pump");
  forms.ExpectBoxWith("TROUBLE", "has occurred in ORVUS_GENFILE.SaveProjectFile.");
  EXPECT_FALSE(session.SavePipeline());
  EXPECT_EQ(forms.helpLines.back(), "Saving " + Upper(folder / "none/pump") + ".VKG.");
}

TEST_F(OstrandTest, NoFailingCallOfTheDiskLosesAFileOfTheProject) {
  testing::MemoryFileSystem disk;
  disk.files["/data/VKPComp.EXE"] = "a compiler";
  store->Gen.Operator = "Marge";
  const auto save = [&](platform::FileSystem& target, const std::string& oper) {
    testing::ScriptedForms user;
    user.CollectBoxes();
    testing::TestSurroundings machine(target, clock, user, "/tmp");
    Ostrand control(*store, machine.all, host);
    control.UserSettings().CompilerPath("/data/VKPComp.EXE");
    control.txtOper(oper);
    control.NameProject("/data/pump");
    const bool saved = control.SavePipeline();
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
  const std::vector<std::string> both = {"/data/pump.VKG", "/data/pump.VKP", "/data/pump.VKD",
                                         "/data/pump.VKW"};
  for (const std::string& name : both) ASSERT_NE(before.at(name), after.at(name));

  for (const bool staysBroken : {false, true}) {
    bool untouched = false;  // by any failure
    for (int failAt = 1; !untouched; ++failAt) {
      ASSERT_LT(failAt, 100);
      disk.files = before;
      testing::FaultyFileSystem faulty(disk, failAt, staysBroken);
      const bool saved = save(faulty, "After");
      untouched = faulty.Calls() < failAt;
      EXPECT_TRUE(saved || !untouched);
      for (const std::string& name : both) {
        const std::string aside = "/data/pump._KG";
        const bool there = disk.files.contains(name);
        EXPECT_TRUE(there || (staysBroken && disk.files.contains(aside))) << failAt << name;
        const std::string& bytes = disk.files.at(there ? name : aside);
        EXPECT_TRUE(bytes == after.at(name) || (!saved && bytes == before.at(name)))
            << failAt << name;
      }
    }
  }
}

TEST_F(OstrandTest, AnUnnamedProjectIsSavedInTheWorkFolder) {
  session.NameProject("NONAME");
  EXPECT_EQ(session.CurBasicFileName(), folder / "EditTemp.VKP");
  EXPECT_TRUE(std::filesystem::exists(folder / "EditTemp.VKG"));
  EXPECT_TRUE(std::filesystem::exists(folder / "EditTemp.VKP"));
}

TEST_F(OstrandTest, FoldersTakeTheirSeparator) {
  session.AppPath("C:\\Harrier");
  session.HelpPath("/usr/share/ostrand");
  EXPECT_EQ(session.AppPath(), "C:\\Harrier\\");
  EXPECT_EQ(session.HelpPath(), "/usr/share/ostrand/");
}

TEST(OstrandMessage, NumbersGoMostSignificantByteFirst) {
  std::array<unsigned char, 8> bytes{};
  unsigned char* at = bytes.data();
  Ostrand::LongToMessage(-2, at);
  Ostrand::LongToMessage(0x01020304, at);
  EXPECT_EQ(at, bytes.data() + 8);
  EXPECT_EQ(bytes, (std::array<unsigned char, 8>{0xFF, 0xFF, 0xFF, 0xFE, 1, 2, 3, 4}));
  at = bytes.data();
  Ostrand::StringToMessage(
      "\xB0"
      "C",
      at);
  EXPECT_EQ(bytes, (std::array<unsigned char, 8>{0, 0, 0, 2, 0xB0, 'C', 3, 4}));
}

}  // namespace
}  // namespace ostrand
