// Where things are in a logger program: its sections, and the lines of each block.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

// A title of the program, a data table, or a subroutine.
struct ProgramSection {
  std::string title;  // "VOLTAGE CONSTANTS", "Volt Block 2", "Table EngFast", "Sub Zero1"
  int line = 0;       // from 1
  int level = 0;      // 0 for a title of the first rank, 1 for what is below it
};

// A block by the letter of its names, T, V, B, P, A or C, or F for a calculated field.
struct ProgramBlock {
  char kind = 0;
  int number = 0;  // from 1

  friend auto operator<=>(const ProgramBlock&, const ProgramBlock&) = default;
};

// An item with names of the user's choice: CAN items and calculated fields.
struct NamedBlock {
  std::string name;
  ProgramBlock block;
};

class ProgramOutline {
 public:
  ProgramOutline(std::string_view program, std::span<const NamedBlock> named);

  [[nodiscard]] const std::vector<ProgramSection>& Sections() const { return sections_; }
  // The first block that the line names, from 1; of kind 0 if it names none. An alias names its
  // block.
  [[nodiscard]] ProgramBlock BlockOfLine(int line) const;
  // All lines that name the block, from 1, rising.
  [[nodiscard]] std::vector<int> LinesOfBlock(ProgramBlock block) const;

 private:
  using Names = std::map<std::string, ProgramBlock, std::less<>>;  // in upper case

  void takeTitle(std::string_view line, int number);
  void takeStatement(std::string_view line, int number, Names& names);

  std::vector<ProgramSection> sections_;
  std::vector<std::vector<ProgramBlock>> blocks_;  // by line
};

// The block that a name of the program belongs to by its form: "MVBlk2", "VRNG2", "LCVBlk2_3_1";
// of kind 0 for any other name. `upper` is in upper case.
ProgramBlock BlockOfName(std::string_view upper);

}  // namespace ostrand
