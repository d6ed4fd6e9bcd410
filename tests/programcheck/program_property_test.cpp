// The programs of random projects are sound, but for what the rules of the program themselves
// leave behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "generator/savedld.h"
#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "programcheck/program_check.h"
#include "programcheck/program_project.h"
#include "projectfile/genfile.h"
#include "support/fixed_clock.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// A project and what decides about its exceptions.
struct Project {
  ProjectStore& store;
  bool harrier;

  [[nodiscard]] bool MuxThere() const { return store.Config.TK40MQty > 0; }
  // The block of a letter, V, B, P or A; nothing beyond the blocks in use.
  [[nodiscard]] std::vector<const MeasBlock*> Blocks(char letter) const {
    std::vector<const MeasBlock*> found;
    const auto add = [&](const auto& group) {
      for (int b = 1; b <= group.BlockCount; ++b) found.push_back(&group[b]);
    };
    if (letter == 'V') add(store.VoltBlock);
    if (letter == 'B') add(store.BridgeBlock);
    if (letter == 'A') add(store.TK40MBlock);
    if (letter == 'P') add(store.PulseBlock[0]), add(store.PulseBlock[1]);
    return found;
  }
  [[nodiscard]] bool Strain(int b) const { return store.BridgeBlock[b].Style > 4; }
  [[nodiscard]] bool Calibrated(const MeasBlock& block) const {
    return block.ZeroFlag != 0 || (harrier && block.CalOnSite != 0);
  }
  // Whether a block is calibrated in the scan though it has no declarations.
  [[nodiscard]] bool Phantom(char letter, const MeasBlock& block) const {
    return Calibrated(block) && (block.Reps < 1 || (letter == 'A' && !MuxThere()));
  }
  [[nodiscard]] bool AnyPhantom(const std::function<bool(const MeasBlock&)>& test) const {
    for (const char letter : {'V', 'B', 'A', 'P'}) {
      for (const MeasBlock* block : Blocks(letter)) {
        if (Phantom(letter, *block) && test(*block)) return true;
      }
    }
    return false;
  }
  [[nodiscard]] bool AnyTable(const std::function<bool(const OutputTable&)>& test) const {
    return std::any_of(store.Tables.Table.begin(), store.Tables.Table.end(), test);
  }
};

// A name against a pattern in which # stands for one digit or several; their numbers come out.
bool fits(std::string_view name, std::string_view pattern, std::vector<int>& numbers) {
  numbers.clear();
  for (const char c : pattern) {
    if (c != '#') {
      if (name.empty() || name[0] != c) return false;
      name.remove_prefix(1);
      continue;
    }
    std::size_t digits = 0;
    int number = 0;
    while (digits < name.size() && name[digits] >= '0' && name[digits] <= '9') {
      number = number * 10 + (name[digits++] - '0');
    }
    if (digits == 0) return false;
    numbers.push_back(number);
    name.remove_prefix(digits);
  }
  return name.empty();
}

struct Match {
  const Project& project;
  std::string_view name;
  std::vector<int> numbers;

  // The block of the first number.
  [[nodiscard]] bool ZeroedStrain() const {
    const int b = numbers[0];
    const BridgeBlockData& block = project.store.BridgeBlock[b];
    return project.Strain(b) && block.ZeroFlag > 0 && block.Reps > 0;
  }
};

struct Exception {
  const char* reason;
  ProgramFault fault;
  std::vector<const char*> patterns;  // of the name; none stands for all
  bool (*holds)(const Match& match);
};

bool phantomNamed(const Match& match) {
  const std::size_t stem = match.name.find_first_of("VBAP");
  const char letter = match.name.find("PBlk") != std::string_view::npos ? 'P' : match.name[stem];
  const auto blocks = match.project.Blocks(letter);
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const int inGroup =
        letter == 'P' && static_cast<int>(i) >= match.project.store.PulseBlock[0].BlockCount
            ? static_cast<int>(i) + 1 - match.project.store.PulseBlock[0].BlockCount
            : static_cast<int>(i) + 1;
    if (inGroup == match.numbers[0] && match.project.Phantom(letter, *blocks[i])) return true;
  }
  return false;
}

// Whether an item is decoded in the loop of another one, which asks for the same reply.
bool decodedWithAnother(const CanBus& can, const CanItemData& item) {
  return std::any_of(can.Item.begin(), can.Item.begin() + can.CanCount, [&](const auto& leader) {
    return &leader != &item && leader.ItemMessageType == 1 && leader.Enabled != 0 &&
           leader.Reps > 0 && leader.DataId == item.DataId &&
           leader.RxDataMatch == item.RxDataMatch;
  });
}

// The name of a CAN item that has no declarations, or of one of its constants.
bool undeclaredItem(const Match& match) {
  const auto& can = match.project.store.Can;
  for (int i = 1; i <= can.CanCount; ++i) {
    const CanItemData& item = can.Item[i];
    const bool measured = item.Enabled != 0 && item.Enabled != 1;
    if ((item.Enabled == 1 && item.Reps > 0) || !match.name.starts_with(item.Name)) continue;
    if (!measured && !decodedWithAnother(can, item)) continue;
    const std::string_view rest = match.name.substr(item.Name.size());
    for (const std::string_view part :
         {"", "DataType", "StartBit", "NumBits", "NumVals", "Mult", "OSet"}) {
      if (rest == part) return true;
    }
    if (measured && rest.size() == 4 && rest[0] >= '1' && rest[0] <= '6' &&
        (rest.substr(1) == "LC1" || rest.substr(1) == "LC2")) {
      return true;
    }
  }
  return false;
}

const Exception kExceptions[] = {
    {"the zero subroutine measures into an array that no line declares",
     ProgramFault::kUndeclared,
     {"VBlk#Zero"},
     [](const Match& m) {
       const auto& block = m.project.store.VoltBlock[m.numbers[0]];
       return block.ZeroFlag > 0 && block.Reps > 0;
     }},
    {"the same of a multiplexer block",
     ProgramFault::kUndeclared,
     {"ABlk#Zero"},
     [](const Match& m) {
       const auto& block = m.project.store.TK40MBlock[m.numbers[0]];
       return m.project.MuxThere() && block.ZeroFlag > 0 && block.Reps > 0 && block.TK40Volts == 1;
     }},
    {"the same of strain, measured in mV per V and in microstrain",
     ProgramFault::kUndeclared,
     {"BBlk#ZeroMvmV_V", "BBlk#ZeroUs"},
     [](const Match& m) { return m.ZeroedStrain(); }},
    {"strain with a calibration on site has no arrays for its zeroing",
     ProgramFault::kUndeclared,
     {"BBlk#mV_V", "GBBlk#Raw"},
     [](const Match& m) {
       return m.ZeroedStrain() && m.project.store.BridgeBlock[m.numbers[0]].CalOnSite != 0;
     }},
    {"the two-point calibration of strain names an offset and, unless it is zeroed, a mode that "
     "strain does not have",
     ProgramFault::kUndeclared,
     {"OBBlk#", "BCalMode#", "BKnownVar#"},
     [](const Match& m) {
       const auto& block = m.project.store.BridgeBlock[m.numbers[0]];
       return m.project.harrier && m.project.Strain(m.numbers[0]) && block.CalOnSite != 0;
     }},
    {"a multiplexer block of thermocouples with a zero flag is calibrated but not zeroed",
     ProgramFault::kUndeclared,
     {"OABlk#", "ACalReps#"},
     [](const Match& m) {
       const auto& block = m.project.store.TK40MBlock[m.numbers[0]];
       return m.project.MuxThere() && block.ZeroFlag > 0 && block.TK40Volts != 1;
     }},
    {"the calibration in the scan asks neither for repetitions nor for the multiplexer",
     ProgramFault::kUndeclared,
     {"VBlk#",      "MVBlk#",     "OVBlk#", "VCalReps#", "VCalMode#", "VKnownVar#",  "BBlk#",
      "MBBlk#",     "OBBlk#",     "GBBlk#", "GBBlk#Raw", "BBlk#mV_V", "BBlk#ZeroMv", "BCalReps#",
      "BCalMode#",  "BKnownVar#", "ABlk#",  "MABlk#",    "OABlk#",    "ACalReps#",   "ACalMode#",
      "AKnownVar#", "AREP#",      "PBlk#",  "MPBlk#",    "OPBlk#",    "PCalMode#",   "PKnownVar#"},
     phantomNamed},
    {"the same, of what all calibrations share",
     ProgramFault::kUndeclared,
     {"CalStartIdx", "FieldCalAvgs", "ZeroingCalib", "TwoPointMultOffs", "CalStrainZero",
      "Strain#_#Shunt", "StrainFullShunt"},
     [](const Match& m) { return m.project.AnyPhantom([](const MeasBlock&) { return true; }); }},
    {"the same, of the state of the flag",
     ProgramFault::kUndeclared,
     {"FlagMode#"},
     [](const Match& m) {
       return m.project.AnyPhantom(
           [&](const MeasBlock& block) { return block.ZeroFlag == m.numbers[0]; });
     }},
    {"a zero flag of a multiplexer that is not there starts its loop all the same",
     ProgramFault::kUndeclared,
     {"I"},
     [](const Match& m) {
       return !m.project.MuxThere() &&
              m.project.AnyPhantom([](const MeasBlock& block) { return block.ZeroFlag != 0; });
     }},
    {"level values are read for all positions of calculated fields, also beyond their count",
     ProgramFault::kUndeclared,
     {"Calc#LC1", "Calc#LC2", "I"},
     [](const Match& m) {
       for (int f = m.project.store.CalcFields.CalcFieldCount + 1; f <= kCalcFields; ++f) {
         const auto& codes = m.project.store.CalcFields.Field[f].Output.OutputSelect;
         for (int t = 1; t <= kTables; ++t) {
           const bool asked = m.numbers.empty() || m.numbers[0] == 10 * f + t;
           if (asked && codes[t][kLevelCrossing] != 0) return true;
         }
       }
       return false;
     }},
    {"level crossing sources are set without a multiplexer too",
     ProgramFault::kUndeclared,
     {"LCABlk#_#_#", "ABlk#"},
     [](const Match& m) {
       const auto& output = m.project.store.TK40MBlock[m.numbers[0]].Output;
       return !m.project.MuxThere() &&
              std::any_of(output.OutputSelect.begin(), output.OutputSelect.end(),
                          [](const auto& codes) { return codes[kLevelCrossing] != 0; });
     }},
    {"under the host Harrier, Count is not declared",
     ProgramFault::kUndeclared,
     {"Count"},
     [](const Match& m) { return m.project.harrier; }},
    {"the reference of the multiplexers is declared for blocks with repetitions only",
     ProgramFault::kUndeclared,
     {"TK40Ref"},
     [](const Match& m) {
       const auto blocks = m.project.Blocks('A');
       return std::none_of(blocks.begin(), blocks.end(),
                           [](const MeasBlock* block) { return block->Reps > 0; });
     }},
    {"the level crossing of the reference takes its source from block 1",
     ProgramFault::kUndeclared,
     {"LCABlk1_#_#"},
     [](const Match& m) {
       const int t = m.numbers[0];
       return m.project.store.TK40MRef.Output.OutputSelect[t][kLevelCrossing] != 0 &&
              m.project.store.TK40MBlock[1].Output.OutputSelect[t][kLevelCrossing] == 0;
     }},
    {"nothing declares a level crossing source of the battery",
     ProgramFault::kUndeclared,
     {"LCBattVolt_#_1"},
     [](const Match& m) {
       return m.project.store.PowerOut.Output.OutputSelect[m.numbers[0]][kLevelCrossing] != 0;
     }},
    {"the subroutine of a table that is off stays, its variables do not",
     ProgramFault::kUndeclared,
     {"bStartTrigger", "bStopTrigger", "bWriteIfCall"},
     [](const Match& m) {
       return m.project.AnyTable([&](const OutputTable& table) {
         if (table.TableOn != 0) return false;
         if (m.name == "bStopTrigger") return table.TrigTabStop != 0;
         return m.name == "bStartTrigger" ? table.TrigTable != 0 : table.WriteIf != 0;
       });
     }},
    {"DataEvent names a stop that the trigger does not have",
     ProgramFault::kUndeclared,
     {"bStopTrigger"},
     [](const Match& m) {
       return m.project.AnyTable([](const OutputTable& table) {
         return table.TableOn != 0 && table.TrigTable != 0 && table.DisableTrigger == 0 &&
                (table.TrigTabStop == 0 || table.SingleTrigger != 0);
       });
     }},
    {"a CAN item that is not enabled by the number 1 or has no values has no declarations, but it "
     "is measured or decoded beside its like",
     ProgramFault::kUndeclared,
     {},
     undeclaredItem},
    {"the same, of its multipliers, offsets and level crossing source",
     ProgramFault::kUndeclared,
     {"MCBlk#", "OCBlk#", "LCCan#", "LCCan#_x#"},
     [](const Match& m) {
       const auto& can = m.project.store.Can;
       if (m.name[0] != 'L') return can.Item[m.numbers[0]].Enabled != 1;
       for (int i = 1; i <= can.CanCount; ++i) {
         const auto& item = can.Item[i];
         if (item.Enabled != 1 && m.name.substr(2, m.name.size() - 3) == item.Name) return true;
       }
       return false;
     }},
    {"two groups of ports declare the same variables",
     ProgramFault::kDeclaredTwice,
     {"ReadPort", "WritPort", "Port"},
     [](const Match& m) {
       const auto& slots = m.project.store.Ports.Slot;
       return std::all_of(slots.begin(), slots.end(), [&](const PortSlot& slot) {
         if (m.name == "Port") return slot.ByteMode == 0;
         return (m.name == "ReadPort") == (slot.ReadMode != 0);
       });
     }},
    {"two entries of one analog output declare the same variable",
     ProgramFault::kDeclaredTwice,
     {"Excite#"},
     [](const Match& m) {
       const auto& slots = m.project.store.ExciteOut.Slot;
       return slots[0][m.numbers[0]].Include != 0 && slots[1][m.numbers[0]].Include != 0;
     }},
    {"the blocks of both pulse groups count from 1",
     ProgramFault::kDeclaredTwice,
     {"PCONF#", "POPT#", "PREP#", "PMULT#", "POSET#", "PBlk#", "MPBlk#", "OPBlk#", "PCalMode#",
      "PKnownVar#", "PBlk#LC1", "PBlk#LC2", "LCPBlk#_#_#", "M$PBlk#", "O$PBlk#"},
     [](const Match& m) {
       const auto& slots = m.project.store.PulseBlock;
       const int b = m.numbers[0] > 9 ? m.numbers[0] / 10 : m.numbers[0];  // PBlk, block, table
       return b <= slots[0].BlockCount && b <= slots[1].BlockCount;
     }},
    {"the scaling of a repetition without an alias is named after its place in the array",
     ProgramFault::kLine,
     {"M$VBlk#", "O$VBlk#", "M$BBlk#", "O$BBlk#", "M$PBlk#", "O$PBlk#", "M$ABlk#", "O$ABlk#"},
     [](const Match& m) {
       const auto blocks = m.project.Blocks(m.name[2]);
       return std::any_of(blocks.begin(), blocks.end(), [](const MeasBlock* block) {
         return block->CalOnSite != 0 && block->Reps > 1;
       });
     }},
};
constexpr std::size_t kNone = std::size(kExceptions);

// The exception that a finding falls under, or kNone.
std::size_t exceptionOf(const Project& project, const ProgramFinding& finding) {
  Match match{project, finding.name, {}};
  for (std::size_t i = 0; i < std::size(kExceptions); ++i) {
    const Exception& exception = kExceptions[i];
    if (exception.fault != finding.fault) continue;
    if (exception.patterns.empty() && exception.holds(match)) return i;
    for (const std::string_view pattern : exception.patterns) {
      if (fits(finding.name, pattern, match.numbers) && exception.holds(match)) return i;
    }
  }
  return kNone;
}

// Keeps the boxes of a run.
class BoxKeeper : public platform::Forms {
 public:
  platform::Answer ShowBox(const platform::MessageBox& box) override {
    boxes.push_back(box);
    return platform::Answer::kOk;
  }
  std::optional<std::string> AskOpen(const platform::FileDialog&) override { return {}; }
  std::optional<std::string> AskSave(const platform::FileDialog&) override { return {}; }
  void SetHelpLine(const std::string&) override {}
  void SetPointer(platform::Pointer) override {}
  void Beep() override {}
  void DoEvents() override {}

  std::vector<platform::MessageBox> boxes;
};

std::string lineOf(std::string_view program, int line) {
  for (; line > 1; --line) program = After(program, "\n");
  return std::string(Before(program, "\r\n"));
}

// What the programs of all projects together must hold, or the property says too little.
constexpr std::string_view kStatements[] = {
    "TCSE(",           "TCDiff(",     "VoltSE(",     "VoltDiff(",       "BrHalf(",
    "BrFull6W(",       "StrainCalc(", "PulseCount(", "TK40M(",          "Canbus(",
    "'TxRx CANBUS",    "ExitFor",     "ExciteCAO(",  "WriteIO(",        "ReadIO(",
    "PortSet(",        "FieldCal(",   "Do Until",    "FieldCalStrain(", "CallTable ZERO_",
    "FileMark(",       "PowerOff(",   "RealTime(",   "AvgRun(",         "DataEvent (",
    "CardOut(",        "Histogram(",  "RainFlow(",   "LevelCrossing(",  ".TableSize(",
    "Sub TriggerCall", "Alias MBBlk", "Alias OPBlk", "HDU7(Flag",       "IIF(",
    "NumRxReads("};

class ProgramProperty : public ::testing::Test {
 protected:
  std::string generate(bool harrier) {
    SAVEDLD generator(*store, files, clock, forms);
    if (harrier) generator.HostApp("Harrier");
    return generator.ProgramText();
  }

  // Every finding in the program falls under an exception; these are counted.
  void expectSound(const std::string& program, bool harrier) {
    const Project project{*store, harrier};
    for (const ProgramFinding& finding : CheckProgram(program)) {
      const std::size_t exception = exceptionOf(project, finding);
      if (exception != kNone) {
        ++met[exception];
        continue;
      }
      ADD_FAILURE() << "line " << finding.line << ": " << finding.text << "\n"
                    << lineOf(program, finding.line);
    }
  }

  std::unique_ptr<ProjectStore> store = NewStore();
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  BoxKeeper forms;
  std::array<int, kNone> met{};
  std::array<bool, std::size(kStatements)> seen{};
};

TEST_F(ProgramProperty, RandomProjectsGiveSoundPrograms) {
  constexpr std::uint32_t kProjects = 2400;
  std::uint32_t whole = 0;
  for (std::uint32_t seed = 1; seed <= kProjects && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const bool harrier = seed % 3 == 0;
    testing::MakeProgramProject(*store, seed);
    forms.boxes.clear();
    const std::string program = generate(harrier);
    for (std::size_t i = 0; i < seen.size(); ++i) {
      seen[i] = seen[i] || Holds(program, kStatements[i]);
    }
    if (forms.boxes.empty()) {
      ++whole;
      expectSound(program, harrier);
    }
    // A section that fails leaves its program cut short: the user is told, and the check sees it.
    EXPECT_TRUE(forms.boxes.empty() || !CheckProgram(program).empty());
    for (const platform::MessageBox& box : forms.boxes) {
      EXPECT_EQ(box.title, "TROUBLE");
      EXPECT_TRUE(Holds(box.text, "has occurred in SAVEDLD.")) << box.text;
    }
  }
  EXPECT_GT(whole, kProjects * 9 / 10);
  EXPECT_LT(whole, kProjects);
  for (std::size_t i = 0; i < met.size(); ++i) {
    EXPECT_GT(met[i], 0) << "never met: " << kExceptions[i].reason;
  }
  for (std::size_t i = 0; i < seen.size(); ++i) {
    EXPECT_TRUE(seen[i]) << "never written: " << kStatements[i];
  }
}

class GoldenProgram : public ProgramProperty, public ::testing::WithParamInterface<const char*> {};

TEST_P(GoldenProgram, IsSound) {
  const std::string source = OSTRAND_SOURCE_DIR;
  ORVUS_COMMON::ClearStore(*store);
  ORVUS_COMMON::SetAllDefaults(*store);
  ORVUS_GENFILE::ReadProjectText(*store,
                                 testing::ReadDisk(source + "/examples/" + GetParam() + ".VKG"));
  expectSound(testing::ReadDisk(source + "/tests/golden/" + GetParam() + ".VKP"), false);
}

// Whether a line opens or closes a block.
bool isBlockLine(std::string_view line) {
  line = Trim(Before(line, "'"));
  if (line.starts_with("If ")) return line.ends_with(" Then");
  constexpr std::string_view kHeads[] = {"BeginProg",  "EndProg",  "Sub ",   "End Sub",
                                         "DataTable(", "EndTable", "Scan(",  "Next",
                                         "For ",       "EndIf",    "End If", "Loop"};
  return line == "Do" || std::any_of(std::begin(kHeads), std::end(kHeads),
                                     [&](auto head) { return line.starts_with(head); });
}

// Without any one of the lines that make its blocks, the program is not sound.
TEST_P(GoldenProgram, NeedsEveryLineOfItsBlocks) {
  const std::string program =
      testing::ReadDisk(std::string(OSTRAND_SOURCE_DIR "/tests/golden/") + GetParam() + ".VKP");
  int dropped = 0;
  for (std::size_t start = 0, end = 0; start < program.size(); start = end) {
    end = program.find('\n', start) + 1;
    if (!isBlockLine(std::string_view(program).substr(start, end - start))) continue;
    ++dropped;
    const auto findings = CheckProgram(program.substr(0, start) + program.substr(end));
    EXPECT_TRUE(std::any_of(findings.begin(), findings.end(), [](const ProgramFinding& finding) {
      return finding.fault == ProgramFault::kBlock;
    })) << program.substr(start, end - start);
  }
  EXPECT_GE(dropped, 8);  // a table or two, the scan, the program
}

INSTANTIATE_TEST_SUITE_P(Examples, GoldenProgram,
                         ::testing::Values("engine-test-cell", "building-climate",
                                           "bridge-monitoring", "weather-mast", "vehicle-test",
                                           "thermal-survey"),
                         [](const auto& example) {
                           std::string name = example.param;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace ostrand
