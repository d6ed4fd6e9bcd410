#include "generator/families.h"

#include <algorithm>
#include <array>

#include "model/alias_except.h"
#include "model/names.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::array<FamilyTexts, kFamilyCount> kFamilies = {{
    {Family::kTemp, ORVUS_DOBJ_BLK_TEMP, " THERMOCOUPLE CONSTANTS ", " Temp Block ",
     " Temp Blocks "},
    {Family::kVolt, ORVUS_DOBJ_BLK_VOLT, " VOLTAGE CONSTANTS ", " Volt Block ", " Volt Blocks "},
    {Family::kBridge, ORVUS_DOBJ_BLK_BRIDGE, " BRIDGE CONSTANTS ", " Bridge Block ",
     " Bridge Blocks "},
    {Family::kPulse, ORVUS_DOBJ_BLK_PULSE, " PULSE CONSTANTS", " Pulse/Freq Block ",
     " Pulse/Freq Blocks"},
    {Family::kTK40M, ORVUS_DOBJ_BLK_TK40M, " TK40M CONSTANTS ", " TK40M Block ", " TK40M Blocks "},
    {Family::kCan, ORVUS_DOBJ_BLK_QBCAN, " CANBUS DECLARATIONS ", " Can Item ", " Canbus Items "},
}};

BlockNames namesOf(OrvusDataObjTypes kind, int n) {
  return {SourceName(kind, n),           MultName(kind, n),
          OffsetName(kind, n),           ConstantName(kind, "REP", n),
          ConstantName(kind, "MULT", n), ConstantName(kind, "OSET", n)};
}

BlockNames namesOfItem(const std::string& name, int n) {
  return {name,
          MultName(ORVUS_DOBJ_BLK_QBCAN, n),
          OffsetName(ORVUS_DOBJ_BLK_QBCAN, n),
          name + "NumVals",
          name + "Mult",
          name + "OSet"};
}

template <class Block, class Flags>
BlockView viewOf(const FamilyTexts& texts, int n, Block& block, Flags& except) {
  BlockView view;
  view.texts = &texts;
  view.n = n;
  view.data = &block;
  view.aliases = block.Alias.Leading(block.Reps);
  view.except = &except;
  return view;
}

template <class Group, class Flags>
void addGroup(std::vector<BlockView>& views, const FamilyTexts& texts, Group& group, Flags& flags) {
  for (int b = 1; b <= group.BlockCount; ++b) {
    views.push_back(viewOf(texts, b, group[b], flags[b]));
    views.back().names = namesOf(texts.kind, b);
  }
}

}  // namespace

const FamilyTexts& TextsOf(Family family) { return kFamilies[static_cast<std::size_t>(family)]; }

const RepAlias& BlockView::Alias(int r) const {
  if (r < 1 || r > static_cast<int>(aliases.size())) throw SubscriptOutOfRange();
  return aliases[static_cast<std::size_t>(r - 1)];
}

std::vector<BlockView> BlocksOf(ProjectStore& store, AllExceptFlags& flags, Family family) {
  const FamilyTexts& texts = TextsOf(family);
  std::vector<BlockView> views;
  switch (family) {
    case Family::kTemp:
      addGroup(views, texts, store.TempBlock, flags.Temp);
      break;
    case Family::kVolt:
      addGroup(views, texts, store.VoltBlock, flags.Volt);
      break;
    case Family::kBridge:
      addGroup(views, texts, store.BridgeBlock, flags.Bridge);
      break;
    case Family::kPulse:
      for (int slot = 0; slot <= 1; ++slot) {
        addGroup(views, texts, store.PulseBlock[slot], flags.Pulse[slot]);
      }
      break;
    case Family::kTK40M:
      addGroup(views, texts, store.TK40MBlock, flags.TK40M);
      break;
    case Family::kCan:
      for (int i = 1; i <= store.Can.CanCount; ++i) {
        views.push_back(viewOf(texts, i, store.Can.Item[i], flags.Can[i]));
        views.back().names = namesOfItem(store.Can.Item[i].Name, i);
      }
      break;
  }
  return views;
}

bool AnyReps(const std::vector<BlockView>& views) {
  return std::any_of(views.begin(), views.end(), HasReps);
}

void CollectExceptFlags(const std::vector<BlockView>& views) {
  for (const BlockView& view : views) {
    for (int r = 1; r <= view.data->Reps; ++r) {
      const int byHand = ExceptionsOf(view.Alias(r));
      if ((byHand & kMultByHand) != 0) view.except->ExceptMult = true;
      if ((byHand & kOffsetByHand) != 0) view.except->ExceptOffset = true;
    }
  }
}

}  // namespace ostrand
