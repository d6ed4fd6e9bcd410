// The measurement families of the program, their naming stems and their blocks in one view.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/enums.h"
#include "model/record_layout.h"
#include "model/store.h"

namespace ostrand {

enum class Family { kTemp, kVolt, kBridge, kPulse, kTK40M, kCan };
inline constexpr std::size_t kFamilyCount = 6;

// What sets a family apart in the program's texts.
struct FamilyTexts {
  Family family;
  OrvusDataObjTypes kind;           // gives the naming stem
  std::string_view constantsTitle;  // section of its constants
  std::string_view blockTitle;      // head of a block's constants, before the block number
  std::string_view bodyTitle;       // head of its statements in the scan
};

const FamilyTexts& TextsOf(Family family);

// Whether any repetition of a block has its own multiplier or offset.
struct ExceptFlags {
  bool ExceptMult = false;
  bool ExceptOffset = false;
  [[nodiscard]] bool Any() const { return ExceptMult || ExceptOffset; }
};

// Exception flags of every block of every family.
struct AllExceptFlags {
  Row<ExceptFlags, 1, kBlocks> Temp, Volt, Bridge, TK40M;
  Row<Row<ExceptFlags, 1, kPulseBlocks>, 0, 1> Pulse;
  Row<ExceptFlags, 1, kCanItems> Can;
};

// The program's names for one block.
struct BlockNames {
  std::string source;       // TBlk1, or the CAN item's name
  std::string mult;         // MTBlk1, array of multipliers
  std::string offset;       // OTBlk1, array of offsets
  std::string reps;         // TREP1, or {Name}NumVals
  std::string multConst;    // TMULT1, or {Name}Mult
  std::string offsetConst;  // TOSET1, or {Name}OSet
};

// One block of any family.
struct BlockView {
  const FamilyTexts* texts = nullptr;
  int n = 0;  // number in the program, from 1
  MeasBlock* data = nullptr;
  std::span<const RepAlias> aliases;  // of the repetitions
  ExceptFlags* except = nullptr;
  BlockNames names;

  [[nodiscard]] Family Kind() const { return texts->family; }
  // Repetition `r` from 1; Fault 9 past the rows that the block has.
  [[nodiscard]] const RepAlias& Alias(int r) const;
};

inline bool HasReps(const BlockView& view) { return view.data->Reps > 0; }
// Whether any of the blocks has repetitions.
bool AnyReps(const std::vector<BlockView>& views);
// Sets the exception flags of the blocks from their repetitions.
void CollectExceptFlags(const std::vector<BlockView>& views);

// The blocks of a family in the order of the store, 1 to the family's count; pulse blocks of slot
// 0, then of slot 1, both numbered from 1; CAN items 1 to CanCount.
std::vector<BlockView> BlocksOf(ProjectStore& store, AllExceptFlags& flags, Family family);

}  // namespace ostrand
