// The outline of a program. The programs of random projects pass the check, except where settings
// exclude each other.
#include "programcheck/program_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "generator/savedld.h"
#include "model/new_store.h"
#include "platform/posix/posix_filesystem.h"
#include "programcheck/outline.h"
#include "support/fixed_clock.h"
#include "support/project_random.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

std::string findingsIn(std::string_view lines) {
  std::string program;
  for (const char c : lines) program += c == '\n' ? "\r\n" : std::string(1, c);
  std::string text;
  for (const ProgramFinding& finding : CheckProgram(program)) {
    text += std::to_string(finding.line) + ": " + finding.text + "\n";
  }
  return text;
}

TEST(ProgramCheck, ReportsBrokenPrograms) {
  // `lines` is inside BeginProg of line 1 and EndProg.
  constexpr std::tuple<std::string_view, std::string_view> cases[] = {
      {"Dim I\nFor I = 1 To 2\n", "4: EndProg while the For of line 3 is still open\n"},
      {"Dim I\nScan(1,Sec,0,0)\nFor I = 1 To 2\nNext Scan\nNext I\n",
       "5: Next Scan while the For of line 4 is still open\n6: Next without For\n"},
      {"If True Then\nElse\nElseIf True Then\nEndIf\n", "4: ElseIf after Else\n"},
      {"DataTable(T,True,1)\nEndTable\n", "2: DataTable is inside the BeginProg of line 1\n"},
      {"Public A(N)\nA(1) = B + b\nA(1) = Abs(C)\n",
       "2: N is not declared\n3: B is not declared\n4: C is not declared\n"},
      {"CallTable(T)\n", "2: no table is named T\n"},
      {"Call S\n", "2: no Sub is named S\n"},
      {"Dim A\nConst a = 1\nPublic B,A\nDim C(2)\nAlias C(1) = B\n",
       "3: a is declared a second time\n4: A is declared a second time\n"
       "6: B is declared a second time\n"},
      {"FieldNames(\"A\") : FieldNames(\"B)\n",
       "2: a text in double quotes is not closed\n2: the parentheses do not match\n"},
  };
  for (const auto& [lines, findings] : cases) {
    EXPECT_EQ(findingsIn("BeginProg\n" + std::string(lines) + "EndProg\n"), findings);
  }
  EXPECT_EQ(findingsIn(""), "1: there is no BeginProg\n");
  EXPECT_EQ(findingsIn("Sub S\nBeginProg\nEndPro"),
            "1: Sub is never closed with End Sub\n2: BeginProg is inside the Sub of line 1\n"
            "2: BeginProg is never closed with EndProg\n3: the line does not end in CR LF\n"
            "3: EndPro is not declared\n");
}

TEST(ProgramCheck, LeavesOutWhatTheGeneratorWritesUndeclared) {
  constexpr std::string_view kDeclared =
      "Public R,Z(2),MVBlk1(2),OBBlk1(2)\nDataTable(T,True,1)\nEndTable\n";
  // A line of the generator, and lines of users with the same name.
  constexpr std::tuple<std::string_view, std::string_view, std::string_view> cases[] = {
      {"VoltSE(VBlk1Zero(),R,1,1)", "R = VBlk1Zero(1)", "VBlk1Zero is not declared"},
      {"VoltDiff(VBlk7Zero(),R,1,1)", "VoltDiff(VBlk12Zero(),R,1)", "VBlk12Zero is not declared"},
      {"Average(R,VBlk1Zero(),IEEE4,False)", "Sample(R,VBlk1Zero(),IEEE4)",
       "VBlk1Zero is not declared"},
      {"TK40M(ABlk2Zero(1),R,1)", "VoltSE(ABlk2Zero(),R)", "ABlk2Zero is not declared"},
      {"BrFull(BBlk1ZeroMvmV_V(),R,1)", "BrFull(BBlk1Zeros(),R,1)", "BBlk1Zeros is not declared"},
      {"StrainCalc(BBlk1ZeroUs(),R,Z())", "If True Then R = BBlk1ZeroUs(1)",
       "BBlk1ZeroUs is not declared"},
      {"DataEvent(1,True,bStopTrigger,2)", "bStopTrigger = (R > 1)",
       "bStopTrigger is not declared"},
      {"Alias MVBlk1(2) = M$VBlk1(2)", "Alias MVBlk1(2) = M$VBlk1(1)",
       "the alias M$VBlk1 is not a plain name"},
      {"Alias OBBlk1(1) = O$BBlk1(1)", "Alias OBBlk1(1) = M$BBlk1(1)",
       "the alias M$BBlk1 is not a plain name"},
  };
  for (const auto& [systems, users, finding] : cases) {
    const auto program = [&](std::string_view line) {
      return std::string(kDeclared) + "BeginProg\n" + std::string(line) + "\nEndProg\n";
    };
    EXPECT_EQ(findingsIn(program(systems)), "") << systems;
    EXPECT_EQ(findingsIn(program(users)), "5: " + std::string(finding) + "\n");
    // The generator's line does not excuse the user's.
    EXPECT_NE(findingsIn(program(std::string(systems) + "\n" + std::string(users))), "") << users;
  }
}

// ---- The programs of random projects

// A name with # for each of its numbers, which go into `numbers`.
std::string shapeOf(std::string_view name, std::vector<int>& numbers) {
  std::string shape;
  bool inNumber = false;
  for (const char c : name) {
    const bool digit = c >= '0' && c <= '9';
    if (!digit || !inNumber) shape += digit ? '#' : c;
    if (digit && !inNumber) numbers.push_back(0);
    if (digit) numbers.back() = numbers.back() * 10 + (c - '0');
    inNumber = digit;
  }
  return shape;
}

// Matches a finding with an exception: the first number is that of a block or table.
struct Match {
  const ProjectStore& store;
  bool harrier;
  std::vector<int> numbers;

  [[nodiscard]] const TK40MBlockData& Mux() const { return store.TK40MBlock[numbers[0]]; }
  [[nodiscard]] const BridgeBlockData& Bridge() const { return store.BridgeBlock[numbers[0]]; }

  [[nodiscard]] bool ZeroedMuxTemps() const { return Mux().ZeroFlag > 0 && Mux().TK40Volts != 1; }
  [[nodiscard]] bool ZeroedStrain() const { return Bridge().Style > 4 && Bridge().ZeroFlag > 0; }
  [[nodiscard]] bool ZeroedOnSite() const { return ZeroedStrain() && Bridge().CalOnSite != 0; }
  [[nodiscard]] bool StrainOnSite() const {
    return harrier && Bridge().Style > 4 && Bridge().CalOnSite != 0;
  }
  [[nodiscard]] bool DisabledItem() const { return store.Can.Item[numbers[0]].Enabled != 1; }
  [[nodiscard]] bool UnderHarrier() const { return harrier; }
};

struct Exception {
  std::string_view shape;  // of the name
  bool (Match::*holds)() const;
};

// A user can correct these: one of two settings has to go.
constexpr Exception kUndeclared[] = {
    // Strain with a calibration on site has no arrays for its zeroing.
    {"BBlk#mV_V", &Match::ZeroedOnSite},
    {"GBBlk#Raw", &Match::ZeroedOnSite},
    // The two-point calibration of strain names an offset and, unless it is zeroed, a mode that
    // strain does not have.
    {"OBBlk#", &Match::StrainOnSite},
    {"BCalMode#", &Match::StrainOnSite},
    {"BKnownVar#", &Match::StrainOnSite},
    // A multiplexer block of thermocouples with a zero flag is calibrated but not zeroed.
    {"OABlk#", &Match::ZeroedMuxTemps},
    {"ACalReps#", &Match::ZeroedMuxTemps},
    // So are the exceptions of a CAN item that is not enabled.
    {"MCBlk#", &Match::DisabledItem},
    {"OCBlk#", &Match::DisabledItem},
    {"Count", &Match::UnderHarrier},
};
constexpr std::size_t kNone = std::size(kUndeclared);

// The exception of a finding, or kNone.
std::size_t exceptionOf(Match match, const ProgramFinding& finding) {
  const std::string shape = shapeOf(finding.name, match.numbers);
  for (std::size_t i = 0; i < kNone && finding.fault == ProgramFault::kUndeclared; ++i) {
    if (kUndeclared[i].shape == shape && (match.*kUndeclared[i].holds)()) return i;
  }
  return kNone;
}

TEST(ProgramProperty, RandomProjectsGiveSoundPrograms) {
  constexpr std::uint32_t kProjects = 2400;
  const auto store = NewStore();
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  testing::ScriptedForms forms;
  forms.CollectBoxes();
  std::array<int, kNone> met{};
  std::uint32_t whole = 0;
  for (std::uint32_t seed = 1; seed <= kProjects && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    const bool harrier = seed % 3 == 0;
    testing::MakeRandomProject(*store, seed);
    forms.shown.clear();
    SAVEDLD generator(*store, files, clock, forms);
    if (harrier) generator.HostApp("Harrier");
    const std::string program = generator.ProgramText();
    if (forms.shown.empty()) {
      ++whole;
      // Every finding matches an exception.
      for (const ProgramFinding& finding : CheckProgram(program)) {
        const std::size_t exception = exceptionOf({*store, harrier, {}}, finding);
        if (exception != kNone) ++met[exception];
        EXPECT_NE(exception, kNone) << "line " << finding.line << ": " << finding.text;
      }
    }
    // A section that fails leaves an incomplete program: the user gets a box, and the check fails.
    EXPECT_TRUE(forms.shown.empty() || !CheckProgram(program).empty());
    for (const platform::MessageBox& box : forms.shown) {
      EXPECT_EQ(box.title, "TROUBLE");
      EXPECT_TRUE(Holds(box.text, "has occurred in SAVEDLD.")) << box.text;
    }
  }
  EXPECT_GT(whole, kProjects * 9 / 10);
  EXPECT_LT(whole, kProjects);
  for (std::size_t i = 0; i < met.size(); ++i) {
    EXPECT_GT(met[i], 0) << "never met: exception " << i;
  }
}

TEST(Outline, FindsTheBlockOfAName) {
  constexpr std::pair<std::string_view, ProgramBlock> kCases[] = {
      {"TBLK1", {'T', 1}},
      {"MVBLK2", {'V', 2}},
      {"OVBLK7", {'V', 7}},
      {"GBBLK3", {'B', 3}},
      {"VBLK23LC1", {'V', 2}},
      {"LCVBLK2_3_1", {'V', 2}},
      {"ABLK4ZERO", {'A', 4}},
      {"MCBLK128", {'C', 128}},
      {"BEXCIT3", {'B', 3}},
      {"PCONF2", {'P', 2}},
      {"VREP1", {'V', 1}},
      {"TREP", {}},
      {"XVBLK1", {}},
      {"VREPORT1", {}},
      {"BLK1", {}},
      {"INT", {}},
      {"PULSECOUNT", {}},
      {"VBLK", {}},
  };
  for (const auto& [name, block] : kCases) EXPECT_EQ(BlockOfName(name), block) << name;
}

TEST(Outline, ListsSectionsAndLinesOfAnExample) {
  const std::string program =
      testing::ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/engine-test-cell.VKP");
  const ProgramOutline outline(program, {});
  std::string titles;
  for (const ProgramSection& section : outline.Sections()) {
    titles += std::to_string(section.line) + (section.level == 0 ? " " : "   ") + section.title;
  }
  EXPECT_TRUE(titles.starts_with("12 TIMING CONSTANTS23 THERMOCOUPLE CONSTANTS25   Temp Block 1"))
      << titles;
  EXPECT_TRUE(Holds(titles, "130   Table EngFast") && Holds(titles, "183 PROGRAM")) << titles;

  // The constants and the source of a block, its aliases and their units, nothing of other blocks.
  const std::vector<int> lines = outline.LinesOfBlock({'V', 2});
  const std::set<int> all(lines.begin(), lines.end());
  for (int line = 62; line <= 76; ++line) {
    const bool isData = line == 71 || line == 73;  // values without a name
    EXPECT_EQ(all.contains(line), !isData) << line;
  }
  EXPECT_FALSE(all.contains(51));
  EXPECT_EQ(outline.BlockOfLine(98 + 1), (ProgramBlock{'T', 1})) << "Units of an alias";
  for (const int line : lines) EXPECT_NE(outline.BlockOfLine(line).kind, 0);
  EXPECT_EQ(outline.BlockOfLine(1).kind, 0);
  EXPECT_EQ(outline.BlockOfLine(0).kind, 0);
  EXPECT_EQ(outline.BlockOfLine(99999).kind, 0);
}

TEST(Outline, KnowsItemsByTheNamesOfTheUser) {
  const NamedBlock items[] = {{"Speed", {'C', 2}}, {"Power", {'F', 1}}};
  const ProgramOutline outline(
      "Const SpeedStartBit = 3\r\nPublic speed(4)\r\nPower = speed * 2\r\nPowerDataType = 1\r\n",
      items);
  EXPECT_EQ(outline.LinesOfBlock({'C', 2}), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(outline.LinesOfBlock({'F', 1}), (std::vector<int>{3}));
}

}  // namespace
}  // namespace ostrand
