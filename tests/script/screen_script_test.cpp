// Scripts on the screens: the ones in tests/scripts, and the player's reports.
#include "script/screen_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "projectfile/genfile.h"
#include "support/cli_run.h"
#include "support/kept_scripts.h"
#include "support/saved_keys.h"
#include "support/script_session.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::ScriptSession;

// ---- The scripts of tests/scripts ---------------------------------------------------------------

TEST(Script, EachKeptOneGoesThrough) {
  for (const std::string& name : testing::KeptScripts()) {
    EXPECT_EQ(ScriptSession().Play(testing::KeptScript(name)), "") << name;
  }
}

// The example of the document, unchanged.
TEST(Script, ExampleOfTheDocumentBuildsItsProject) {
  const std::string document = testing::ReadDisk(OSTRAND_SOURCE_DIR "/docs/screens.md");
  constexpr std::string_view kFence = "```script\n";
  const std::size_t begin = document.find(kFence);
  ASSERT_NE(begin, std::string::npos);
  const std::size_t end = document.find("```", begin + kFence.size());
  ASSERT_NE(end, std::string::npos);
  ScriptSession session;
  ASSERT_EQ(session.Play(document.substr(begin + kFence.size(), end - begin - kFence.size())), "");
  const ProjectStore& project = *session.store;
  EXPECT_EQ(project.Tables[1].TableName, "Minutes");
  EXPECT_EQ(project.TempBlock[1].Alias[2].AliasName, "FreeEnd");
  EXPECT_EQ(project.VoltBlock[1].DefaultMult, 0.0032F);
  EXPECT_EQ(project.PulseBlock[0][1].DefaultMult, 0.003125F);
}

// Builds an example project from nothing, byte for byte. The main screen's two text boxes are not
// on the setup screens, so their texts come with the new file. Differences from the example are
// listed: no screen offers thermocouples the range of 20 mV; and the screens of configuration and
// scan store the choices that they show, where the example has the values of a new project.
TEST(Script, BuildsAnExampleFromAnEmptyProject) {
  const testing::TempFolder folder;
  const testing::Setting setting{.epoch = "1047305100"};  // 2003-03-10 14:05:00 UTC
  const std::string path = folder / "building-climate.VKG";
  ASSERT_EQ(testing::RunOstrand({"new", path}, setting).code, 0);
  const auto replace = [](std::string& bytes, std::string_view from, std::string_view to) {
    const std::size_t at = bytes.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    bytes.replace(at, from.size(), to);
  };
  std::string bytes = testing::ReadDisk(path);
  replace(bytes, "\r\nOperator=Name\r\nIDNumber=Number\r\n",
          "\r\nOperator=H. Quist\r\nIDNumber=House 12\r\n");
  testing::WriteDisk(path, bytes);
  const auto played = testing::RunOstrand(
      {"screen", path, OSTRAND_SOURCE_DIR "/tests/scripts/building_climate.txt"}, setting);
  ASSERT_EQ(played.code, 0) << played.err;
  std::string example = testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/building-climate.VKG");
  replace(example, "\r\nRange(1)=20 mV\r\nRangeNo(1)= 40\r\n",
          "\r\nRange(1)=50 mV\r\nRangeNo(1)= 30\r\n");
  replace(example, "\r\nPowerOffMins=-1\r\nPowerOnMins= 0\r\n",
          "\r\nPowerOffMins= 0\r\nPowerOnMins= 1\r\n");
  replace(example, "\r\nScanBuffer=\r\n", "\r\nScanBuffer=0\r\n");
  EXPECT_EQ(testing::ReadDisk(path), example);
}

// ---- Reports of the player ----------------------------------------------------------------------

struct Stop {
  std::string_view script;
  std::string_view error;
};

// The third line has the setup screen of a voltage block open.
constexpr std::string_view kSetup = "open frmVoltBlock\nspin BlockCount up\nopen frmVoltSetup 1\n";

constexpr Stop kStops[] = {
    {"# a comment\n\njump Reps\n", "line 3: there is no action jump"},
    {"open\n", "line 1: open takes more words: open SCREEN [WHICH]"},
    {"choose a b\n", "line 1: choose takes fewer words: choose PATH"},
    {"open \"frmVoltBlock\n", "line 1: a quote is not closed"},
    {"type Reps 4\n", "line 1: no screen is open; the main screen has txtOper and txtIDNum"},
    {"open frmVoltSetup\n", "line 1: no main button opens frmVoltSetup"},
    {"open frmTK40MBlock\n",
     "line 1: the main button of frmTK40MBlock is disabled: The logger has no multiplexer "
     "(TK40MQty "
     "of frmConfig)."},
    {"opne frmVoltBlock\n", "line 1: there is no action opne; did you mean open?"},
    {std::string_view("open frmVoltBlock\ndo\0ne\n", 24),
     "line 2: character 0 is not text; a script is in UTF-8"},
    {"type txtOper \"a\x1B[2J\"\n", "line 1: character 27 is a control character"},
    {"# \u6E2C\ntype txtOper \u6E2C\n",
     "line 2: a project can't hold \"\u6E2C\", which is not in Windows-1252"},
    {"open frmVoltBlock\nopen frmBrdgSetup 1\n",
     "line 2: frmVoltBlock does not open frmBrdgSetup; did you mean frmVoltSetup?"},
    {"open frmVoltBlock\nopen frmVoltSetup 1\n",
     "line 2: frmVoltSetup can't be opened now: There is no block 1."},
    {"open frmVoltBlock\nspin Count up\n",
     "line 2: frmVoltBlock has no control Count; did you mean BlockCount?"},
    {"open frmVoltBlock\npress Reps1\n", "line 2: Reps1 is hidden"},
    {"open frmConfig\ncheck EnablePowerOff on\n",
     "line 2: EnablePowerOff is hidden: Shown with MonitorPower2."},
    {"open frmVoltBlock\n", "line 1: frmVoltBlock is still open at the end of the script"},
    {"open frmVoltBlock\nescape\n", "line 2: no field has the focus"},
    {"open frmVoltBlock\n  expect BlockCount 1\ndone\n", "line 2: BlockCount shows \"0\""},
    {"open frmVoltBlock\n  expect BlockCount disabled\ndone\n", "line 2: BlockCount is enabled"},
    {"open frmVoltBlock\nspin BlockCount down\nexpect beep\nspin BlockCount up\nexpect beep\n",
     "line 5: no beep came"},
    {"open frmVoltBlock\nspin BlockCount left\n", "line 2: spin takes up or down"},
    {"answer \"BLOCKS\" maybe\n", "line 1: an answer is yes, no, cancel or ok"},
    {"answer \"BLOCKS\" yes\n", "line 1: no box \"BLOCKS\" came"},
};

// After kSetup.
constexpr Stop kSetupStops[] = {
    {"type StartVoltChan 2\n",
     "line 4: StartVoltChan is disabled: Channels are selected automatically (Configuration)."},
    {"pick ZeroFlag 9\n", "line 4: ZeroFlag has no \"9\" to pick, but \"None\" \"1\" to \"8\""},
    {"expect ZeroFlag item 2 tip Two\n", "line 4: \"2\" of ZeroFlag's tool tip shows \"\""},
    {"pick Reps 4\n", "line 4: Reps is not a list"},
    {"check Reps on\n", "line 4: Reps is not a check box"},
    {"check Public yes\n", "line 4: check takes on or off"},
    {"press Public\n", "line 4: Public is not a button"},
    {"spin Public up\n", "line 4: Public has no spin buttons"},
    {"type Range Auto\n", "line 4: Range cannot be typed into"},
    // A refused way out is reported at its line when the next line fails for it.
    {"type DefaultMult -\ndone\n",
     "line 5: frmVoltSetup stays open: DefaultMult (Multiplier) keeps the focus, since it can't "
     "take \"-\""},
    {"type Reps 1\nopen frmFldName\ntype AliasMult1 1e\ndone\nexpect Reps 1\n",
     "line 7: frmFldName stays open: AliasMult1 (MULT) keeps the focus, since it can't take "
     "\"1e\""},
    {"type DefaultMult -\ndone\nexpect beep\ntype DefaultMult 2\ndone\nexpect BlockCount 2\n",
     "line 9: BlockCount shows \"1\""},
    {"expect Solve caption Solve\n", "line 4: Solve's caption shows \"Sol&ve\""},
    // An unanswered question stops the script at the line that asked it.
    {"type Reps 1\ndone\nspin BlockCount down\nexpect BlockCount 0\n",
     "line 6: frmVoltBlock: no answer to the box \"CONFIRM BLOCK DELETION\": Measurements for this "
     "block will be Deleted, Continue?\r\nTo answer it, write before this line: answer \"CONFIRM "
     "BLOCK DELETION\" "
     "yes|no"},
    {"type Reps 1\ndone\nanswer \"CONFIRM BLOCK DELETION\" no\nspin BlockCount down\n"
     "expect box \"CONFIRM BLOCK DELETION\" \"Sure?\"\n",
     "line 8: the box says \"Measurements for this block will be Deleted, Continue?\""},
};

TEST(Script, NamesTheLineThatStopsIt) {
  for (const Stop& row : kStops) EXPECT_EQ(ScriptSession().Play(row.script), row.error);
  for (const Stop& row : kSetupStops) {
    EXPECT_EQ(ScriptSession().Play(std::string(kSetup).append(row.script)), row.error);
  }
}

// ---- What a screen does instead -----------------------------------------------------------------

struct Instead {
  std::string_view lines;
  std::string_view expected;  // the line that accepts it
  std::string_view error;
};

constexpr Instead kInstead[] = {
    {"type Units m/s", "expect beep",
     "line 4: Units does not accept \"/\": it takes letters, digits and \"_@#$\", a letter first"},
    {"type Units \"m s\"", "expect Units ms", "line 4: Units: \"m s\" became \"ms\""},
    {"type SettleTime 1e9\nleave", "expect SettleTime 50000",
     "line 4: SettleTime: 1e9 became 50000"},
    {"type Reps 99\ntype Units mV", "expect Reps 20",
     "line 4: Reps: 99 became 20: only 20 differential channels are free"},
    {"type DefaultMult 1.23456789\nenter", "expect DefaultMult 1.234568",
     "line 4: DefaultMult: 1.23456789 became 1.234568: it keeps 7 digits"},
    {"type SettleTime 3000.7\nleave", "expect SettleTime 3000",
     "line 4: SettleTime: 3000.7 became 3000: it takes whole numbers"},
    {"spin Reps up 50", "expect beep",
     "line 4: Reps: spin up changes nothing after 20 of 50: only 20 differential channels are "
     "free"},
    {"type DefaultMult -\nleave", "expect beep",
     "line 5: DefaultMult (Multiplier) keeps the focus, since it can't take \"-\""},
    {"type DefaultMult -\ndone", "expect beep",
     "line 5: frmVoltSetup stays open: DefaultMult (Multiplier) keeps the focus, since it can't "
     "take \"-\""},
};

TEST(Script, EndsWithWhatAScreenDoesInsteadUnlessItExpectsJustThat) {
  for (const Instead& row : kInstead) {
    const std::string begin = std::string(kSetup).append(row.lines).append("\n");
    const std::string end = "cancel\nanswer \"MEASUREMENT BLOCKS\" no\ncancel\n";
    EXPECT_EQ(ScriptSession().Play(begin + end), row.error);
    EXPECT_EQ(ScriptSession().Play(begin + "expect Public off\n" + end), row.error);
    EXPECT_EQ(ScriptSession().Play(begin + std::string(row.expected) + "\n" + end), "");
    ScriptSession lenient;
    lenient.lenient = true;
    EXPECT_EQ(lenient.Play(begin + end), "");
  }
}

// The screen sets the sensors to 1 for each click on a kind of bridge.
TEST(Script, PickOfThePickedKindIsSkippedUnlessLenient) {
  for (const bool lenient : {false, true}) {
    ScriptSession session;
    session.lenient = lenient;
    EXPECT_EQ(session.Play("open frmBrdgBlock\nspin BlockCount up\nopen frmBrdgSetup 1\n"
                           "pick Style \"6 Wire Full Bridge (Vx)\"\ntype Reps 3\n"
                           "pick Style \"6 Wire Full Bridge (Vx)\"\ndone\ndone\n"),
              "");
    EXPECT_EQ(session.store->BridgeBlock[1].Reps, lenient ? 1 : 3);
  }
}

TEST(Script, ShowsControlsAndScreens) {
  ScriptSession session;
  EXPECT_EQ(session.Play("show\nshow txtOper\n" + std::string(kSetup) +
                         "show Units\nshow StartVoltChan\nshow\ndone\ndone\n"),
            "");
  for (const std::string_view line :
       {"  open frmTK40MBlock  disabled: The logger has no multiplexer (TK40MQty of frmConfig).",
        "txtOper: \"Name\"", "Units: \"mVolts\"  (Units)",
        "StartVoltChan: \"1\"  (Start channel)  disabled: Channels are selected automatically "
        "(Configuration).",
        "frmVoltSetup  (1 BLOCK  VOLTAGES)", "  Solve             Solve"}) {
    EXPECT_TRUE(Holds("\r\n" + session.shows, "\r\n" + std::string(line) + "\r\n")) << line;
  }
}

TEST(Script, InformingBoxIsReportedAtItsLine) {
  constexpr std::string_view kWarned =
      "open frmTempBlock\nspin BlockCount up\nopen frmTempSetup 1\npick MeasType SE\n";
  EXPECT_EQ(ScriptSession().Play(std::string(kWarned) + "done\ndone\n"),
            "line 4: frmTempSetup: unexpected box \"Measurement Type Not Recommended\": "
            "Single-ended Thermocouple "
            "Measurements are not recommended.\r\nTo answer it, write before this line: answer "
            "\"Measurement Type Not Recommended\" ok");
  ScriptSession session;
  EXPECT_EQ(session.Play(std::string(kWarned) +
                         "expect box \"measurement type not recommended\" \"Single-ended...\"\n"
                         "done\ndone\n"),
            "");
  EXPECT_EQ(session.store->TempBlock[1].MeasType, "SE");
}

TEST(Script, ReadsQuotedWordsAndFindsNamesInAnyCase) {
  ScriptSession session;
  EXPECT_EQ(session.Play("OPEN FRMPULSEBLOCK\r\n\tspin blockcount UP\r\n"
                         "  open \"frmPulseSetup\" \"1\"\r\n"
                         "    expect Opt tip \"Enter \"\"1\"\" for no averaging...\"\r\n"
                         "    type Units \"\"\r\n    expect Units \"\"\r\n    type Units rpm\r\n"
                         "  Done\r\n# \"\r\ndone"),
            "");
  EXPECT_EQ(session.store->PulseBlock[0][1].Units, "rpm");
}

// One screen that another screen opens for two purposes.
TEST(Script, WordAfterScreenSelectsOpener) {
  ScriptSession session;
  EXPECT_EQ(session.Play("open frmConfig\ncheck MonitorPower1 on\ndone\n"
                         "check MonitorPower4 on\ndone\n"
                         "open frmPortTables paneloutput\ncheck Public on\ndone\ndone\n"),
            "");
  EXPECT_EQ(session.store->TcRef.Public, kTrue);
  EXPECT_EQ(session.store->PowerOut.Public, kFalse);
}

// After any failure, the project in the session is the one before the open screens.
TEST(Script, StoppedScriptLeavesNoScreenOpen) {
  for (const std::string kind : {"Volt", "Temp", "Brdg", "Pulse"}) {
    ScriptSession session;
    const auto text = [&] { return ORVUS_GENFILE::ProjectFileText(*session.store, {}); };
    const std::string list = "open frm" + kind + "Block\n";
    ASSERT_EQ(session.Play(list + "spin BlockCount up\ndone\n"), "");
    const std::string before = text();
    EXPECT_NE(session.Play(list + "open frm" + kind + "Setup 1\ntype Reps 2\nleave\nfly\n"), "");
    EXPECT_NE(session.Play(list + "spin BlockCount up\nfly\n"), "");
    EXPECT_EQ(text(), before) << kind;
    EXPECT_EQ(session.Play(list + "expect BlockCount 1\ndone\n"), "");
  }
}

// Editors put a mark before UTF-8 text, and file names may be in any language.
TEST(Script, IsInUtf8) {
  ScriptSession session;
  EXPECT_EQ(session.Play("\xEF\xBB\xBF"
                         "choose \"/tmp/\u6E2C\u5B9A.29LST\"\n"),
            "");
  EXPECT_EQ(session.forms.AskOpen({}), "/tmp/\u6E2C\u5B9A.29LST");
}

// ---- The commands -------------------------------------------------------------------------------

TEST(ScreenCommand, WritesTheProjectUnlessTheScriptStops) {
  const testing::TempFolder folder;
  ASSERT_EQ(testing::RunOstrand({"new", folder / "pump"}).code, 0);
  const std::string before = testing::ReadDisk(folder / "pump.VKG");
  testing::WriteDisk(folder / "setup.txt",
                     "open frmVoltBlock\nspin BlockCount up\nopen frmVoltSetup 1\ntype Reps 4\n"
                     "pick Range \"200 mV\"\ndone\ndone\n");
  std::filesystem::create_directory(folder / "out");
  const auto aside = testing::RunOstrand(
      {"screen", folder / "pump.VKG", folder / "setup.txt", "-o", folder / "out"});
  EXPECT_EQ(aside.code, 0) << aside.err;
  EXPECT_EQ(aside.out, "wrote " + (folder / "out/pump.VKG") + "\n");
  EXPECT_EQ(testing::ReadDisk(folder / "pump.VKG"), before);
  const auto inPlace = testing::RunOstrand({"screen", folder / "pump.VKG", folder / "setup.txt"});
  EXPECT_EQ(inPlace.code, 0) << inPlace.err;
  const std::string after = testing::ReadDisk(folder / "pump.VKG");
  EXPECT_EQ(after, testing::ReadDisk(folder / "out/pump.VKG"));
  EXPECT_TRUE(Holds(after, "\r\nReps(1)= 4\r\nMeasType(1)=Diff\r\n"));
  EXPECT_TRUE(Holds(after, "\r\nRange(1)=200 mV\r\nRangeNo(1)= 20\r\n"));

  const std::string script = folder / "setup.txt";
  testing::WriteDisk(script, "open frmVoltBlock\nspin BlockCount up\nexpect BlockCount 3\n");
  const auto stopped = testing::RunOstrand({"screen", folder / "pump.VKG", script});
  EXPECT_EQ(stopped.code, 1);
  EXPECT_EQ(stopped.out, "");
  EXPECT_EQ(stopped.err, "ostrand: " + script + ": line 3: BlockCount shows \"2\"\n");
  EXPECT_EQ(testing::ReadDisk(folder / "pump.VKG"), after);

  const auto noScript = testing::RunOstrand({"screen", folder / "pump.VKG", folder / "none.txt"});
  EXPECT_EQ(noScript.code, 1);
  EXPECT_TRUE(Holds(noScript.err, "none.txt")) << noScript.err;
  const auto noProject = testing::RunOstrand({"screen", folder / "none.VKG", script});
  EXPECT_EQ(noProject.code, 1);
  EXPECT_TRUE(Holds(noProject.err, "none.VKG")) << noProject.err;
  EXPECT_EQ(testing::RunOstrand({"screen", folder / "pump.VKG"}).code, 2);
  EXPECT_EQ(testing::ReadDisk(folder / "pump.VKG"), after);
}

TEST(ScreenCommand, DryRunShowsChangesAndWritesNothing) {
  const testing::TempFolder folder;
  ASSERT_EQ(testing::RunOstrand({"new", folder / "pump"}).code, 0);
  const std::string before = testing::ReadDisk(folder / "pump.VKG");
  const std::string script = folder / "setup.txt";
  testing::WriteDisk(script,
                     "open frmOptOrvus\ntype DefaultScanInterval 77\ndone\n"
                     "open frmExecute\ntype ExecutionTime 20\nshow ExecutionTime\ndone\n");
  const auto tried = testing::RunOstrand({"screen", "--dry-run", folder / "pump.VKG", script},
                                         {.folder = folder.Path()});
  EXPECT_EQ(tried.code, 0) << tried.err;
  EXPECT_TRUE(tried.out.starts_with(
      "ExecutionTime: \"20\"  (Scan interval)\n--- a/pump.VKG\n+++ b/pump.VKG\n@@ -"))
      << tried.out;
  EXPECT_TRUE(Holds(tried.out, "\n-ExecutionTime= 10\n+ExecutionTime= 20\n")) << tried.out;
  EXPECT_EQ(testing::ReadDisk(folder / "pump.VKG"), before);
  const auto setting =
      testing::RunOstrand({"settings", "get", "DefaultScanInterval"}, {.folder = folder.Path()});
  EXPECT_EQ(setting.out, "10\n");
}

TEST(ScriptCommand, WritesWhatMakesTheProject) {
  const testing::TempFolder folder;
  const testing::Setting setting{.epoch = "1047305100", .folder = folder.Path()};
  const std::string example = OSTRAND_SOURCE_DIR "/examples/vehicle-test.VKG";
  const auto written = testing::RunOstrand({"script", example}, setting);
  ASSERT_EQ(written.code, 0) << written.err;
  testing::WriteDisk(folder / "vehicle.txt", written.out);
  ASSERT_EQ(testing::RunOstrand({"new", folder / "vehicle-test"}, setting).code, 0);
  const std::string path = folder / "vehicle-test.VKG";
  const auto played = testing::RunOstrand({"screen", path, folder / "vehicle.txt"}, setting);
  EXPECT_EQ(played.code, 0) << played.err;
  // The keys that differ are the ones that the script lists.
  int differ = 0;
  for (const auto& change : testing::ChangedKeys(testing::KeysOf(testing::ReadDisk(example)),
                                                 testing::KeysOf(testing::ReadDisk(path)))) {
    EXPECT_TRUE(Holds(written.out, "#   " + change.key + ": ")) << change.key;
    ++differ;
  }
  EXPECT_LE(differ, 5);
  EXPECT_EQ(testing::RunOstrand({"script", folder / "none.VKG"}, setting).code, 1);
}

TEST(GetCommand, ShowsKeys) {
  const std::string example = OSTRAND_SOURCE_DIR "/examples/vehicle-test.VKG";
  const auto get = [&](std::vector<std::string> words) {
    words.insert(words.begin(), {"get", example});
    return testing::RunOstrand(words);
  };
  EXPECT_EQ(get({"scan setup", "ExecutionTime"}).out, "100\n");
  EXPECT_EQ(get({"[TABLE SETUP]", "tableon(1)", "--format", "json"}).out,
            "{\n  \"TABLE SETUP\": {\n    \"TableOn(1)\": \"-1\"\n  }\n}\n");
  EXPECT_TRUE(Holds(get({"TABLE SETUP", "TableOn"}).out, "TableOn(1)=-1\nTableOn(2)="));
  EXPECT_TRUE(get({}).out.starts_with("[GEN VERSION]\nVersion="));
  const auto section = get({"TABEL SETUP"});
  EXPECT_EQ(section.code, 1);
  EXPECT_EQ(section.err, "ostrand: no section TABEL SETUP; did you mean TABLE SETUP?\n");
  EXPECT_EQ(get({"SCAN SETUP", "ExecutonTime"}).err,
            "ostrand: [SCAN SETUP] has no key ExecutonTime; did you mean ExecutionTime?\n");
}

TEST(ScreensCommand, ListsScreensWithTheirControls) {
  const auto one = testing::RunOstrand({"screens", "FRMEXECUTE"});
  EXPECT_TRUE(one.out.starts_with("frmExecute  (SCAN INTERVAL), by its main button\n")) << one.out;
  EXPECT_FALSE(Holds(one.out, "frmConfig"));
  EXPECT_EQ(testing::RunOstrand({"screens", "frmExcute"}).err,
            "ostrand: no screen frmExcute; did you mean frmExecute or frmExcite?\n");
  const auto json = testing::RunOstrand({"screens", "frmVoltSetup", "--format", "json"});
  EXPECT_TRUE(Holds(json.out,
                    "{\"name\": \"Reps\", \"kind\": \"number\", \"caption\": \"Sensors\", "
                    "\"action\": \"type\", \"spin\": true, \"min\": 0, \"max\": 100},\n"))
      << json.out;
  const auto list = testing::RunOstrand({"screens"});
  int screens = list.out.starts_with("frm") ? 1 : 0;
  for (std::size_t at = 0; (at = list.out.find("\nfrm", at)) != std::string::npos; ++at) ++screens;
  EXPECT_EQ(screens, 41);
  for (const std::string_view line :
       {"frmVoltBlock  (VOLTAGE BLOCK), by its main button",
        "  Reps                          number   type from 0 to 100, spin  (Sensors)",
        "  Integration                   number   type, spin  (Integration time (\u00B5s))",
        "  Reps1 to Reps7                figure  (Sensors)",
        "  AliasName1 to AliasName2      text     type  (ALIAS)",
        "  IntegrationRange              options  pick \"50 Hz\" \"60 Hz\" \"uSecs\"  "
        "(Integration)",
        "  ZeroFlag                      choice   pick \"None\" \"1\" to \"8\"  (Zero flag)",
        "  Range                         options  pick \"> 2250\u00B0F\" \"< 2250\u00B0F\"  "
        "(Temperature range)",
        "  Solve                         button   press  (Sol&ve)", "  open frmVoltSetup BLOCK"}) {
    EXPECT_TRUE(Holds(list.out, "\n" + std::string(line) + "\n")) << line;
  }
}

}  // namespace
}  // namespace ostrand
