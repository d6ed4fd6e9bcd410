// The longest names and units are exactly those that fit into the lines of the program.
#include "model/name_limits.h"

#include "generated.h"

namespace ostrand {
namespace {

struct LimitCase {
  std::string_view name;
  std::size_t longest;
  void (*set)(ProjectStore& store, const std::string& text);
  bool (*fits)(const ProjectStore& store, const std::string& text);
};

VoltBlockData& voltBlock(ProjectStore& store, i16 reps) {
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[1].Reps = reps;
  return store.VoltBlock[1];
}

CanItemData& canItem(ProjectStore& store, i16 values) {
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  store.Can.CanCount = 1;
  CanItemData& item = store.Can.Item[1];
  item.Enabled = 1;
  item.Reps = values;
  item.Public = kTrue;  // an item can become public later
  item.Name = "Speed";
  return item;
}

bool itemFits(const ProjectStore& store, const std::string&) {
  return ItemFits(store.Can.Item[1], 1);
}

const LimitCase kLimits[] = {
    {"Alias", 46,
     [](ProjectStore& store, const std::string& text) {
       voltBlock(store, 100).Alias[100].AliasName = text;
     },
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .index = 100}, text, "");
     }},
    {"CalibratedAlias", 45,
     [](ProjectStore& store, const std::string& text) {
       VoltBlockData& block = voltBlock(store, 1);
       block.CalOnSite = kTrue;
       block.Alias[1].AliasName = text;
     },
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .only = true, .mult = "MVBlk1", .offset = "OVBlk1"},
                        text, "");
     }},
    {"AliasWithUnits", 53,
     [](ProjectStore& store, const std::string& text) {
       RepAlias& alias = voltBlock(store, 2).Alias[2];
       alias.AliasName = "Oil";
       alias.AliasUnits = text;
     },
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .index = 2}, "Oil", text);
     }},
    {"UnitsOfAnElement", 48,
     [](ProjectStore& store, const std::string& text) {
       voltBlock(store, 2).Alias[2].AliasUnits = text;
     },
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .index = 2}, "", text);
     }},
    {"UnitsOfTheOnlyOne", 51,
     [](ProjectStore& store, const std::string& text) {
       voltBlock(store, 1).Alias[1].AliasUnits = text;
     },
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .only = true}, "", text);
     }},
    {"UnitsOfABlock", 51,
     [](ProjectStore& store, const std::string& text) { voltBlock(store, 2).Units = text; },
     [](const ProjectStore&, const std::string& text) { return UnitsFit("VBlk1", text); }},
    {"ItemName", 24,
     [](ProjectStore& store, const std::string& text) { canItem(store, 64).Name = text; },
     itemFits},
    {"ItemNameWithUnits", 21,
     [](ProjectStore& store, const std::string& text) {
       CanItemData& item = canItem(store, 1);
       item.Name = text;
       item.Units = "B1234567890123456789012345678901234";
     },
     itemFits},
    {"ItemNameWithValues", 11,
     [](ProjectStore& store, const std::string& text) {
       CanItemData& item = canItem(store, 2);
       item.Name = text;
       item.Alias[2].AliasName = "B12345678901234567890123456789012345678901";
     },
     itemFits},
    {"ItemNameWithLevels", 23,
     [](ProjectStore& store, const std::string& text) {
       CanItemData& item = canItem(store, 1);
       item.Name = text;
       item.Output.OutputSelect[1][kLevelCrossing] = 1;
       item.Output.Histo[1].LevNumLevels = 40;
       item.Output.Histo[1].NumDims = 1;
       item.Output.Histo[1].LevNumTests = 2;
       item.Output.Histo[1].LevelMeasName = "Speed";
     },
     itemFits},
    {"FieldName", 58,
     [](ProjectStore& store, const std::string& text) {
       store.CalcFields.CalcFieldCount = 1;
       store.CalcFields.Field[1].Public = kTrue;
       store.CalcFields.Field[1].CalcField[1] = text;
       store.CalcFields.Field[1].CalcField[2] = "1";
     },
     [](const ProjectStore&, const std::string& text) { return CalcFieldFits(text, ""); }},
};

class NameLimit : public ::testing::TestWithParam<LimitCase> {};

TEST_P(NameLimit, FitsTheLinesOfTheProgram) {
  const LimitCase& row = GetParam();
  for (std::size_t length = 1; length <= 64; ++length) {
    testing::ProgramMaker maker;
    maker.forms.CollectBoxes();
    const std::string text(length, 'A');
    row.set(maker.store, text);
    maker.generator.ProgramText();
    const bool fits = length <= row.longest;
    EXPECT_EQ(maker.forms.shown.empty(), fits) << length;
    EXPECT_EQ(row.fits(maker.store, text), fits) << length;
  }
}

INSTANTIATE_TEST_SUITE_P(All, NameLimit, ::testing::ValuesIn(kLimits),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace ostrand
