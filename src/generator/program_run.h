// What the sections of a generator run share.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "generator/families.h"
#include "generator/program_lines.h"
#include "generator/zero_lines.h"
#include "model/statement_channels.h"
#include "model/store.h"

namespace ostrand {

// What a section found and a later one depends on.
struct Needs {
  bool NeedLoopIndex = false;
  bool NeedCount = false;
  bool ZeroFlagUsed = false;  // ScanFlg1x is declared
  bool AnySiteCal = false;
  bool AnyZeroCal = false;
  int StrainCalMask = 0;  // 4 quarter, 2 half, 1 full bridge strain
  AllExceptFlags Except;
};

// The project, the lines of its program and what sections pass on. A line that cannot be stored
// raises a Fault (see ProgramLines).
class ProgramRun {
 public:
  explicit ProgramRun(ProjectStore& project) : store(project) {}

  // Begins a run: drops the lines of the last one and what its sections passed on.
  void Start();

  // Appends one line, with or without a comment.
  void Put(Pieces line) { lines.Add(line); }
  void Put(Pieces statement, Pieces comment, Pad pad = Pad::kStrict) {
    lines.Add(statement, comment, pad);
  }
  void PutEmpty() { lines.Add({}); }

  // Appends a title in the middle of a line of 65 characters; `indent` precedes the apostrophe.
  // Section titles have bars of slashes; `less` shortens the bars by so many characters in all.
  void PutSectionTitle(std::string_view title, std::string_view indent = "");
  void PutTitle(std::string_view indent, std::string_view title, char fill = '_', int less = 0);
  // The same with bars of a given length.
  void PutBarTitle(Piece indent, int bar, std::string_view title) {
    Put({indent, "'", Fill{'_', bar}, title, Fill{'_', bar}});
  }
  // The title of a family's statements in the scan, if any of its blocks has repetitions.
  void PutBodyTitle(Family family);

  // The blocks of a family, in the order of the store, until the next run.
  [[nodiscard]] const std::vector<BlockView>& Blocks(Family family);
  [[nodiscard]] bool HostIsHarrier() const;
  // Whether field calibration is part of the program.
  [[nodiscard]] bool NeedsFieldCal() const;

  ProjectStore& store;
  std::string HostApp;  // the host's name
  ProgramLines lines;
  Needs needs;
  ZeroLines zero;

  // Channel cursors of the measurement sections.
  StatementChannels channels;
  int BlockChan = 1;   // channel of the block being written
  int ChanCursor = 0;  // single-ended terminals used so far

  // What outlives a run.
  std::string PrevMeasType;  // MeasType of the last block written
  Row<std::string, 1, kBlocks> TK40MLines;

 private:
  std::array<std::optional<std::vector<BlockView>>, kFamilyCount> blocks_;  // made at first use
};

}  // namespace ostrand
