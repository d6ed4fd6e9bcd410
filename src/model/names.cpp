#include "model/names.h"

#include <array>

#include "text/number.h"

namespace ostrand {
namespace {

struct Kind {
  OrvusDataObjTypes type;
  char letter;
  std::string_view zeroTail;  // empty if the kind can't be zeroed
};

constexpr std::array<Kind, 6> kKinds = {{
    {ORVUS_DOBJ_BLK_TEMP, 'T', ""},
    {ORVUS_DOBJ_BLK_VOLT, 'V', "Zero"},
    {ORVUS_DOBJ_BLK_BRIDGE, 'B', "ZeroMv"},
    {ORVUS_DOBJ_BLK_PULSE, 'P', ""},
    {ORVUS_DOBJ_BLK_TK40M, 'A', "Zero"},
    {ORVUS_DOBJ_BLK_QBCAN, 'C', ""},
}};

const Kind* find(OrvusDataObjTypes type) {
  for (const Kind& kind : kKinds) {
    if (kind.type == type) return &kind;
  }
  return nullptr;
}

std::string blockName(std::string_view prefix, OrvusDataObjTypes type, int block) {
  const Kind* kind = find(type);
  if (kind == nullptr) return {};
  std::string name(prefix);
  name += kind->letter;
  name += "Blk";
  return name += NumberText(block);
}

}  // namespace

std::string SourceName(OrvusDataObjTypes kind, int block) {
  return kind == ORVUS_DOBJ_BLK_QBCAN ? std::string() : blockName("", kind, block);
}

std::string MultName(OrvusDataObjTypes kind, int block) { return blockName("M", kind, block); }

std::string OffsetName(OrvusDataObjTypes kind, int block) { return blockName("O", kind, block); }

std::string GaugeName(int block) { return blockName("G", ORVUS_DOBJ_BLK_BRIDGE, block); }

std::string ZeroName(OrvusDataObjTypes type, int block) {
  const Kind* kind = find(type);
  if (kind == nullptr || kind->zeroTail.empty()) return {};
  return SourceName(type, block).append(kind->zeroTail);
}

std::string ConstantName(OrvusDataObjTypes type, std::string_view what, int block) {
  const Kind* kind = find(type);
  if (kind == nullptr || type == ORVUS_DOBJ_BLK_QBCAN) return {};
  return (kind->letter + std::string(what)).append(NumberText(block));
}

std::string CalcFieldStem(int field) { return "Calc" + NumberText(field); }

std::string CalcFieldLevelName(int field, int table) {
  return "LC" + CalcFieldStem(field) + "_" + NumberText(table);
}

std::string AutomaticName(OrvusDataObjTypes kind, int block) {
  switch (kind) {
    case ORVUS_DOBJ_SYS_BATT:
      return std::string(kBattVolt);
    case ORVUS_DOBJ_BLK_TK40REF:
      return std::string(kTK40Ref);
    case ORVUS_DOBJ_PORT:
      return std::string(block == 2 ? kReadPort : kWritPort);
    default:
      return SourceName(kind, block);
  }
}

}  // namespace ostrand
