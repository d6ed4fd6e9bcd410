#include "generator/zero_lines.h"

#include <algorithm>

#include "generator/bridge_style.h"

namespace ostrand {
namespace {

// Inserts `suffix` after the block digit that follows `target`.
void renameTarget(std::string& line, std::string_view target, std::string_view suffix) {
  const std::size_t at = line.find(target);
  if (at != std::string::npos) line.insert(at + target.size() + 1, suffix);
}

// Replaces the offset argument and everything after it by 0.
void dropOffset(std::string& line, std::string_view offset) {
  const std::size_t at = line.find(offset);
  if (at != std::string::npos) line.replace(at, std::string::npos, "0)");
}

// A measurement statement as the zero subroutine repeats it: raw, into a separate array.
std::string zeroStatement(std::string line, char letter, std::string_view suffix) {
  renameTarget(line, Joined({'(', letter, "Blk"}), suffix);
  dropOffset(line, Joined({'O', letter, "Blk"}));
  return line;
}

void writeLine(std::string& file, std::string_view line) {
  file.append(line);
  file.append("\r\n");
}

// Writes what a kind of block puts in the place of the line at `i`; each block with a statement
// moves `i` to the next line.
void voltageLines(std::string& file, int& i, const ZeroLines& zero) {
  for (int b = 1; b <= kBlocks; ++b) {
    if (zero.VZeroLine[b] != i || zero.VZeroText[b].empty()) continue;
    writeLine(file, zeroStatement(zero.VZeroText[b], 'V', "Zero"));
    ++i;
  }
}

void bridgeLines(std::string& file, int& i, const ZeroLines& zero, const ProjectStore& store) {
  for (int b = 1; b <= kBlocks; ++b) {
    if (zero.BZeroLine[b] != i || zero.BZeroText[b].empty()) continue;
    if (!IsStrain(store.BridgeBlock[b])) {
      writeLine(file, zeroStatement(zero.BZeroText[b], 'B', "ZeroMv"));
    } else {
      std::string line = zero.BZeroText[b];
      renameTarget(line, "(BBlk", "ZeroMv");
      writeLine(file, line);
      writeLine(file, Joined({"      StrainCalc(BBlk", b, "ZeroUs(),BREP", b, ",BBlk", b,
                              "ZeroMv(),0,BCODE", b, ",GBBlk", b, "(),0)"}));
    }
    ++i;
  }
}

void multiplexerLines(std::string& file, int& i, const ZeroLines& zero, const ProjectStore& store) {
  if (store.Config.TK40MQty <= 0) return;
  for (int b = 1; b <= kBlocks; ++b) {
    if (store.TK40MBlock[b].TK40Volts != 1 || zero.AZeroLine[b] != i) continue;
    bool filled = false;
    for (const std::string& statement : zero.AZeroText[b]) {
      if (statement.empty()) continue;
      writeLine(file, zeroStatement(statement, 'A', "Zero"));
      filled = true;
    }
    if (filled) ++i;
  }
}

// The first reserved line from `i` on; `end` if there is none.
int nextZeroLine(const ZeroLines& zero, int i, int end) {
  int next = end;
  for (const auto* positions : {&zero.VZeroLine, &zero.BZeroLine, &zero.AZeroLine}) {
    for (const int position : *positions) {
      if (position >= i) next = std::min(next, position);
    }
  }
  return next;
}

}  // namespace

std::string ProgramBytes(const ProgramLines& lines, const ZeroLines& zero,
                         const ProjectStore& store) {
  const int count = lines.LineCount();
  std::string file;
  file.reserve(lines.Between(1, count + 1).size());
  int i = 1;
  while (i <= count) {
    const int reserved = nextZeroLine(zero, i, count + 1);
    file.append(lines.Between(i, reserved));
    i = reserved;
    voltageLines(file, i, zero);
    bridgeLines(file, i, zero, store);
    multiplexerLines(file, i, zero, store);
    if (i <= count) writeLine(file, lines[i]);
    ++i;
  }
  return file;
}

}  // namespace ostrand
