#include "generator/savedld.h"

#include <algorithm>
#include <cmath>

#include "generator/bridge_style.h"
#include "generator/section_faults.h"
#include "model/intervals.h"
#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHarrier = "Harrier";

// Fill characters on each side of a title in a line of 64.
int barWidth(std::string_view title, int less = 0) {
  return static_cast<int>(RoundHalfEven((64 - static_cast<int>(title.size()) - less) / 2.0));
}

// Inserts `suffix` behind the block digit that follows `target`.
void renameTarget(std::string& line, std::string_view target, std::string_view suffix) {
  const std::size_t at = line.find(target);
  if (at != std::string::npos) line.insert(at + target.size() + 1, suffix);
}

// Puts 0 in the place of the offset argument and all behind it.
void dropOffset(std::string& line, std::string_view offset) {
  const std::size_t at = line.find(offset);
  if (at != std::string::npos) line.replace(at, std::string::npos, "0)");
}

// A measurement statement as the zero subroutine repeats it: into an array of its own, raw.
std::string zeroStatement(std::string line, char letter, std::string_view suffix) {
  renameTarget(line, Joined({'(', letter, "Blk"}), suffix);
  dropOffset(line, Joined({'O', letter, "Blk"}));
  return line;
}

void writeLine(std::string& file, std::string_view line) {
  file.append(line);
  file.append("\r\n");
}

}  // namespace

SAVEDLD::SAVEDLD(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
                 platform::Forms& forms)
    : store_(store), files_(files), clock_(clock), forms_(forms) {}

std::string SAVEDLD::ProgramText() {
  lines_.Clear();
  faults_.clear();
  needs_ = {};
  channels_ = {};
  VZeroText_.Fill("");
  BZeroText_.Fill("");
  for (auto& statements : AZeroText_) statements.Fill("");
  Header();
  section("SAVEDLD.Constants", &SAVEDLD::Constants);
  section("SAVEDLD.PubVars", &SAVEDLD::PubVars);
  section("SAVEDLD.OutputTables", &SAVEDLD::OutputTables);
  section("SAVEDLD.Subroutines", &SAVEDLD::Subroutines);
  section("SAVEDLD.MainProgram", &SAVEDLD::MainProgram);
  return fileBytes();
}

void SAVEDLD::section(std::string_view routine, void (SAVEDLD::*body)()) {
  if (Guarded(forms_, routine, [&] { (this->*body)(); })) return;
  faults_.push_back(std::string(routine) + " failed " + PlaceOfFault(store_, lines_));
}

bool SAVEDLD::SaveTheDld(std::string_view base) {
  return Guarded(forms_, "SAVEDLD.SaveTheDld", [&] {
    const std::string text = ProgramText();
    const std::string path = std::string(base) + ".VKP";
    const auto written = platform::WriteWhole(files_, path, text, platform::FolderSync::kLater);
    if (!written) throw FileAccess(written.ErrorText());
  });
}

void SAVEDLD::Header() {
  const platform::Moment now = clock_.Now();
  const Fill margin{' ', 20};
  PutEmpty();
  Put({"'", margin, "   Program name: ", Upper(baseName_), ".VKP"});
  Put({"'", margin, "     Written by: ", store_.Gen.Operator});
  Put({"'", margin, "    I.D. number: ", store_.Gen.IDNumber});
  Put({"'", margin, "   Date written: ", DateText(now)});
  Put({"'", margin, "   Time written: ", TimeText(now)});
  Put({"'", margin, " QUILLON Version: ", store_.Gen.VersionLastSaved});
  PutEmpty();
  Put({"' This program was generated using Fernhollow Instruments's QUILLON"});
  Put({"' Program Generator for the VK7300 Measurement & Control System."});
  PutEmpty();
}

// The zero subroutines repeat measurement statements that the scan makes only later, so their
// lines were left empty and are filled in here.
std::string SAVEDLD::fileBytes() const {
  const int count = lines_.LineCount();
  std::string file;
  file.reserve(lines_.Between(1, count + 1).size());
  int i = 1;
  const auto voltageLines = [&] {
    for (int b = 1; b <= kBlocks; ++b) {
      if (VZeroLine_[b] != i || VZeroText_[b].empty()) continue;
      writeLine(file, zeroStatement(VZeroText_[b], 'V', "Zero"));
      ++i;
    }
  };
  const auto bridgeLines = [&] {
    for (int b = 1; b <= kBlocks; ++b) {
      if (BZeroLine_[b] != i || BZeroText_[b].empty()) continue;
      if (!IsStrain(store_.BridgeBlock[b])) {
        writeLine(file, zeroStatement(BZeroText_[b], 'B', "ZeroMv"));
      } else {
        std::string line = BZeroText_[b];
        renameTarget(line, "(BBlk", "ZeroMv");
        writeLine(file, line);
        writeLine(file, Joined({"      StrainCalc(BBlk", b, "ZeroUs(),BREP", b, ",BBlk", b,
                                "ZeroMv(),0,BCODE", b, ",GBBlk", b, "(),0)"}));
      }
      ++i;
    }
  };
  const auto multiplexerLines = [&] {
    if (store_.Config.TK40MQty <= 0) return;
    for (int b = 1; b <= kBlocks; ++b) {
      if (store_.TK40MBlock[b].TK40Volts != 1 || AZeroLine_[b] != i) continue;
      bool filled = false;
      for (const std::string& statement : AZeroText_[b]) {
        if (statement.empty()) continue;
        writeLine(file, zeroStatement(statement, 'A', "Zero"));
        filled = true;
      }
      if (filled) ++i;
    }
  };
  // The next line that a block may fill in, `i` or one behind it.
  const auto nextZeroLine = [&] {
    int next = count + 1;
    for (const auto* positions : {&VZeroLine_, &BZeroLine_, &AZeroLine_}) {
      for (const int position : *positions) {
        if (position >= i) next = std::min(next, position);
      }
    }
    return next;
  };
  while (i <= count) {
    const int zeroLine = nextZeroLine();
    file.append(lines_.Between(i, zeroLine));
    i = zeroLine;
    voltageLines();
    bridgeLines();
    multiplexerLines();
    if (i <= count) writeLine(file, lines_[i]);
    ++i;
  }
  return file;
}

void SAVEDLD::PutSectionTitle(std::string_view title, std::string_view indent) {
  const int width = barWidth(title);
  Put({indent, "'", Fill{'\\', width}, title, Fill{'/', width}});
}

void SAVEDLD::PutTitle(std::string_view indent, std::string_view title, char fill, int less) {
  const Fill bar{fill, barWidth(title, less)};
  Put({indent, "'", bar, title, bar});
}

void SAVEDLD::PutBodyTitle(Family family) {
  const auto blocks = blocksOf(family);
  if (std::any_of(blocks.begin(), blocks.end(), HasReps)) {
    PutTitle("      ", TextsOf(family).bodyTitle);
  }
}

std::vector<BlockView> SAVEDLD::blocksOf(Family family) {
  return BlocksOf(store_, needs_.Except, family);
}

void SAVEDLD::collectExceptFlags(Family family) {
  for (const BlockView& view : blocksOf(family)) {
    for (int r = 1; r <= view.data->Reps; ++r) {
      const int code = ExceptCode(view.Alias(r));
      if (HasOwnMult(code)) view.except->ExceptMult = true;
      if (HasOwnOffset(code)) view.except->ExceptOffset = true;
    }
  }
}

void SAVEDLD::putLevelArrays(const OutputSet& output, int t, std::string_view array,
                             std::string_view label, std::string_view secondDataComment) {
  const HistoSet& level = output.Histo[t];
  const auto dataLine = [](const auto& values, int count) {
    std::string text = "Data ";
    for (int i = 0; i < count; ++i) {
      if (i > 0) text += ',';
      text += NumberText(values[i]);
    }
    return text;
  };
  needs_.NeedLoopIndex = true;
  const auto putArray = [&](int dimension, int levels) {
    const auto put = [&](const auto&... statement) {
      Put({statement...}, {label, " level crossing array ", dimension});
    };
    LevelArrayStatement(put, array, dimension, levels);
  };
  putArray(1, level.LevNumLevels);
  Put({dataLine(level.LevelVarOne, level.LevNumLevels)}, {label, " data for array 1"},
      Pad::kGuarded);
  const bool second = level.NumDims == 1;
  putArray(2, second ? level.LevNumTests : 1);
  if (!second) return;
  const std::string data = dataLine(level.LevelVarTwo, level.LevNumTests);
  if (static_cast<int>(data.size()) < kCommentColumn) {
    Put({data}, {label, " data for array 2"});
  } else {
    Put({data}, {secondDataComment}, Pad::kGuarded);
  }
}

bool SAVEDLD::hostIsHarrier() const { return SameText(hostApp_, kHarrier); }

bool SAVEDLD::canInUse() const {
  return store_.Config.CanBusQty > 0 && store_.Can.Module[1].CanBusEnabled != 0;
}

bool SAVEDLD::needsFieldCal() const {
  return (hostIsHarrier() && needs_.AnySiteCal) || needs_.AnyZeroCal || needs_.StrainCalMask != 0;
}

std::vector<BlockView> SAVEDLD::flaggedBlocks(int group) {
  std::vector<BlockView> found;
  for (const Family family : {Family::kVolt, Family::kBridge, Family::kTK40M}) {
    for (BlockView& view : blocksOf(family)) {
      if (HasReps(view) && view.data->ZeroFlag == group) found.push_back(std::move(view));
    }
  }
  return found;
}

std::vector<BlockView> SAVEDLD::zeroedBlocks(int group) {
  std::vector<BlockView> found = flaggedBlocks(group);
  std::erase_if(found, [this](const BlockView& view) {
    return view.Kind() == Family::kTK40M &&
           !(store_.Config.TK40MQty > 0 && store_.TK40MBlock[view.n].TK40Volts == 1);
  });
  return found;
}

int SAVEDLD::zeroScans() const {
  const double period = ORVUS_COMMON::ScanIntervalMicros(store_);
  if (period == 0) throw DivisionByZero();
  return static_cast<int>(std::clamp(std::floor(10000000 / period), 2.0, 100.0));
}

}  // namespace ostrand
