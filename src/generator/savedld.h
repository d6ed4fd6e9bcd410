// The generator of the logger's program (module SAVEDLD).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generator/families.h"
#include "generator/program_lines.h"
#include "model/record_layout.h"
#include "model/statement_channels.h"
#include "model/store.h"
#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// Turns a project into the text of its program. One object serves a session: the type of the last
// measured block and the statement positions of multiplexer blocks outlive a run.
//
// The sections take no arguments. They read the store (and repair the few values that are theirs
// to repair) and append lines; each is guarded, so that a failure ends only the section that it
// happens in and the file keeps every line stored before.
class SAVEDLD {
 public:
  SAVEDLD(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
          platform::Forms& forms);

  // The host's name; "Harrier", in any case, switches some lines.
  void HostApp(std::string name) { hostApp_ = std::move(name); }
  // The project's name in the head of the program.
  void BaseName(std::string name) { baseName_ = std::move(name); }

  // Generates the program and writes it to `base` + ".VKP"; the caller syncs the folder. False when
  // the file could not be written, which has been reported then.
  bool SaveTheDld(std::string_view base);

  // The same run without a file: the bytes of the program.
  std::string ProgramText();

  // Lines of the last run, for what reads the program afterwards.
  [[nodiscard]] const ProgramLines& Lines() const { return lines_; }
  // The sections of the last run that failed, each with its block or item and the line: "SAVEDLD.
  // PubVars failed in Volt Block 2, at: Alias ...". Empty for a complete program.
  [[nodiscard]] const std::vector<std::string>& Faults() const { return faults_; }
  // Where the statements of the last run measure.
  [[nodiscard]] const StatementChannels& Channels() const { return channels_; }
  // Line positions of the statements of a multiplexer block, each with a blank behind it.
  [[nodiscard]] const Row<std::string, 1, kBlocks>& TK40MLines() const { return TK40MLines_; }
  void ClearTK40MLines() { TK40MLines_.Fill(""); }

 private:
  // Runs a section; a failure in it is reported under `routine` and noted, and the run goes on.
  void section(std::string_view routine, void (SAVEDLD::*body)());
  // Sections, one source each.
  void Header();
  void Constants();
  void PubVars();
  void OutputTables();
  void Subroutines();
  void MainProgram();
  void MainProgram2();
  void Temperature();
  void Voltage();
  void Bridges();
  void Pulses();
  void TK40Ms();
  void CanBus();
  void CanDeclarations();
  void CalcVarConstants();
  void Exceptions();
  void ExciteControl();
  void ZeroFlagLogic();
  void FieldCalCalls();
  void LowPriority();
  void TriggerCallSub(int t);
  void TableCallLines(int t);
  [[nodiscard]] std::string ExpandTriggerGroup(int s, int t) const;
  [[nodiscard]] std::string ExpandWriteIfGroup(int t) const;

  // One line, with or without a comment.
  void Put(Pieces line) { lines_.Add(line); }
  void Put(Pieces statement, Pieces comment) { lines_.Add(statement, comment, Pad::kStrict); }
  void Put(Pieces statement, Pieces comment, Pad pad) { lines_.Add(statement, comment, pad); }
  void PutEmpty() { lines_.Add({}); }

  // Titles. `indent` stands before the apostrophe.
  void PutSectionTitle(std::string_view title, std::string_view indent = "");
  // `less` narrows the bars, where a title stands further in.
  void PutTitle(std::string_view indent, std::string_view title, char fill = '_', int less = 0);
  // An indented block title of a measurement family, if any of its blocks has repetitions.
  void PutBodyTitle(Family family);

  // Parts of the sections that families share.
  void collectExceptFlags(Family family);
  // Level crossing arrays of one output and table: `array` is the stem of their names, `label` the
  // head of the comments; `secondDataComment` stands behind a second data line that is too long.
  void putLevelArrays(const OutputSet& output, int t, std::string_view array,
                      std::string_view label, std::string_view secondDataComment);

  [[nodiscard]] std::vector<BlockView> blocksOf(Family family);
  [[nodiscard]] bool hostIsHarrier() const;
  [[nodiscard]] bool canInUse() const;       // a CAN module is there and enabled
  [[nodiscard]] bool needsFieldCal() const;  // field calibration is part of the program
  // Blocks with repetitions whose ZeroFlag is `group`: voltage, bridge, multiplexer, in this order.
  [[nodiscard]] std::vector<BlockView> flaggedBlocks(int group);
  // Of these, the blocks that have a zero subroutine: multiplexer blocks must measure voltage on a
  // multiplexer that is there.
  [[nodiscard]] std::vector<BlockView> zeroedBlocks(int group);
  [[nodiscard]] bool zeroGroupUsed(int group) { return !flaggedBlocks(group).empty(); }
  [[nodiscard]] int zeroScans() const;          // scans of a zeroing burst, 2 to 100
  [[nodiscard]] std::string fileBytes() const;  // the buffer as a file, zero lines filled in

  // What Constants is made of.
  void timingConstants();
  void blockConstants(const BlockView& view);
  void tempConstants(const BlockView& view, const TempBlockData& block);
  void voltConstants(const BlockView& view, const VoltBlockData& block);
  void bridgeConstants(const BlockView& view, const BridgeBlockData& block);
  void bridgeArrays(const BlockView& view, const BridgeBlockData& block);
  void pulseConstants(const BlockView& view, const PulseBlockData& block);
  void tk40mConstants(const BlockView& view, const TK40MBlockData& block);
  void putConstant(const BlockView& view, std::string_view name, Piece value,
                   std::string_view comment);
  void putRange(const BlockView& view, const AnalogBlock& block);
  void putTypeNo(const BlockView& view, int typeNo);
  void putTimes(const BlockView& view, const AnalogBlock& block);
  void putScaling(const BlockView& view);
  void putArray(const BlockView& view, std::string_view keyword, std::string_view name,
                std::string_view what);
  void putSource(const BlockView& view);
  void putPublicScaling(const BlockView& view);
  void putUnits(const BlockView& view);
  void putTwoPointVariables(const BlockView& view);
  void putLevelLines(const BlockView& view);

  // What PubVars is made of.
  void aliasLines(Family family);
  void generalVariables();
  void portVariables();
  void exciteVariables();
  void fieldCalVariables();

  // What MainProgram is made of.
  void startUpAssignments(Family family);
  void scalingLoop(const BlockView& view);
  void levelReads(const OutputSet& output, int t, std::string_view array);
  void calcFieldLevelReads();
  void flaggedScanHead();
  void canPreliminaryScans();
  void zeroFlagStart();
  void fieldCalStart();
  void scanLine();
  void flagControl();
  void portControl();
  void portSet();
  void putSeparator();  // closes a flag or port group
  void measurements();
  void calculatedFields();
  void levelSources();
  void levelSource(const HistoSet& level, std::string_view name, std::string_view source);

  // What OutputTables is made of.
  struct SizeTime;
  void canCheckTable();
  void tableHead(int t, SizeTime& size);
  void tableBody(int t);
  void tableEnd(int t);
  void putOutput(const OutputSource& source, int t, int code);
  void zeroTable(int group);

  // A title line whose bars have a length of their own.
  void putBarTitle(Piece indent, int bar, std::string_view title) {
    Put({indent, "'", Fill{'_', bar}, title, Fill{'_', bar}});
  }

  // What CanDeclarations, CanBus and the CAN loops are made of.
  void canModuleConstants();
  void canItemConstants(const BlockView& view, const CanItemData& item);
  void canLevelLines(const BlockView& view);
  // Arguments of a Canbus statement: array, interface and identifier with its sign; where the
  // value stands in the frame.
  [[nodiscard]] std::string canArguments(std::string_view array, std::string_view id) const;
  [[nodiscard]] static std::string canPlace(std::string_view name);

  // What Exceptions and ExciteControl are made of.
  void blockExceptions(const BlockView& view);
  void exciteOutput(const ExciteChannel& channel, int k);

  // What FieldCalCalls is made of.
  void twoPointCall(const BlockView& view);
  void zeroingCall(const BlockView& view);
  void strainZeroingCalls(const BlockView& view, int style);

  // What Subroutines is made of.
  [[nodiscard]] std::vector<BlockView> zeroCandidates();  // whatever their ZeroFlag and Reps
  void zeroSubroutine(int n);
  void reserveZeroLine(const BlockView& view);
  void takeZero(const BlockView& view, int n);

  // What MainProgram2 is made of.
  void fileMarks();
  void tablesFull();
  void tableCalls();

  // What LowPriority is made of.
  struct SlowSequence;
  using CanGroups = Row<int, 1, kCanItems>;  // the item whose loop decodes an item
  void putHyphens(const SlowSequence& slow);
  void slowDeclarations(const SlowSequence& slow);
  void slowScanLine(const SlowSequence& slow);
  void conditionalPowerOff(const SlowSequence& slow);
  void timedPowerOff(const SlowSequence& slow);
  void minuteJobs(const SlowSequence& slow);
  void batterySaver(const SlowSequence& slow);
  void statusMonitor(const SlowSequence& slow);
  void canLoopHead(const SlowSequence& slow, CanGroups& firstItem);
  CanGroups groupCanItems();
  void canLoops(const SlowSequence& slow, const CanGroups& firstItem);
  void canRequest(const SlowSequence& slow, int i, const CanItemData& item);
  void canDecoding(const SlowSequence& slow, const BlockView& view);

  ProjectStore& store_;
  platform::FileSystem& files_;
  platform::Clock& clock_;
  platform::Forms& forms_;
  std::string hostApp_;
  std::string baseName_;

  ProgramLines lines_;
  std::vector<std::string> faults_;

  // Needs and marks that sections pass on; all cleared at the start of a run.
  struct Needs {
    bool NeedLoopIndex = false;
    bool NeedCount = false;
    bool ZeroFlagUsed = false;  // ScanFlg1x is declared
    bool AnySiteCal = false;
    bool AnyZeroCal = false;
    int StrainCalMask = 0;  // 4 quarter, 2 half, 1 full bridge strain
    AllExceptFlags Except;
  } needs_;

  // Statements kept for the zero subroutines, and the positions reserved for them (0 for none).
  static constexpr int kMuxStatements = 14;
  Row<std::string, 1, kBlocks> VZeroText_, BZeroText_;
  Row<Row<std::string, 1, kMuxStatements>, 1, kBlocks> AZeroText_;
  Row<int, 1, kBlocks> VZeroLine_, BZeroLine_, AZeroLine_;

  // Channel cursors of the measurement sections.
  StatementChannels channels_;
  int BlockChan_ = 1;   // channel of the block being written
  int ChanCursor_ = 0;  // single-ended terminals used so far

  // What outlives a run.
  std::string PrevMeasType_;  // MeasType of the last block written
  Row<std::string, 1, kBlocks> TK40MLines_;
};

}  // namespace ostrand
