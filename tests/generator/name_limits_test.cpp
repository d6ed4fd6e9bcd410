// The longest names and units are exactly those that fit into the lines of the program.
#include "model/name_limits.h"

#include "generated.h"
#include "support/project_cases.h"

namespace ostrand {
namespace {

bool itemFits(const ProjectStore& store, const std::string&) {
  return ItemFits(store.Can.Item[1], 1);
}

// Settings with the sign @ for the text, the length of the longest one, and whether a text fits.
struct LimitCase {
  std::vector<std::string> settings;
  std::size_t longest;
  bool (*fits)(const ProjectStore& store, const std::string& text);
};

const std::string kVolts = "[VOLTAGE BLOCKS] BlockCount=1; ";
const std::string kItem = "[CANBUS ITEMS] CanCount=1; CanBusEnabled=1; Public(1)=-1; ";

const LimitCase kLimits[] = {
    {{kVolts + "Reps(1)=100; AliasName(1,100)=@"},
     46,
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .index = 100}, text, "");
     }},
    {{kVolts + "Reps(1)=1; CalOnSite(1)=-1; AliasName(1,1)=@"},
     45,
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .only = true, .mult = "MVBlk1", .offset = "OVBlk1"},
                        text, "");
     }},
    {{kVolts + "Reps(1)=2; AliasName(1,2)=Oil; AliasUnits(1,2)=@"},
     53,
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .index = 2}, "Oil", text);
     }},
    {{kVolts + "Reps(1)=2; AliasUnits(1,2)=@"},
     48,
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .index = 2}, "", text);
     }},
    {{kVolts + "Reps(1)=1; AliasUnits(1,1)=@"},
     51,
     [](const ProjectStore&, const std::string& text) {
       return ValueFits({.array = "VBlk1", .only = true}, "", text);
     }},
    {{kVolts + "Reps(1)=2; Units(1)=@"},
     51,
     [](const ProjectStore&, const std::string& text) { return UnitsFit("VBlk1", text); }},
    {{kItem + "NumVals(1)=64; Name(1)=@"}, 24, itemFits},
    {{kItem + "Name(1)=@; Units(1)=B1234567890123456789012345678901234"}, 21, itemFits},
    {{kItem + "NumVals(1)=2; Name(1)=@; AliasName(1,2)=B12345678901234567890123456789012345678901"},
     11,
     itemFits},
    {{"[TABLE SETUP] TableOn(1)=-1",
      kItem + "Name(1)=@; Table(1,1,8)=1; CaLevNumLevels(1,1)=40; "
              "CaLevNumTests(1,1)=2; CaLevelMeasName(1,1)=Speed; CaNumDims(1,1)=1"},
     23,
     itemFits},
    {{"[CALCULATED FIELDS] CalcFieldCount=1; Public(1)=-1; CalcField(1,1)=@; CalcField(1,2)=1"},
     58,
     [](const ProjectStore&, const std::string& text) { return CalcFieldFits(text, ""); }},
};

TEST(NameLimits, FitTheLinesOfTheProgram) {
  for (const LimitCase& row : kLimits) {
    for (const std::size_t length : {row.longest, row.longest + 1}) {
      SCOPED_TRACE(row.settings.back() + " " + std::to_string(length));
      const std::string text(length, 'A');
      testing::ProgramMaker maker;
      maker.forms.CollectBoxes();
      maker.store.Config.CanBusQty = 1;
      for (std::string settings : row.settings) {
        const std::size_t at = settings.find('@');
        if (at != std::string::npos) settings.replace(at, 1, text);
        testing::TakeSettings(maker.store, {settings});
      }
      maker.generator.ProgramText();
      const bool fits = length == row.longest;
      EXPECT_EQ(maker.forms.shown.empty(), fits);
      EXPECT_EQ(row.fits(maker.store, text), fits);
    }
  }
}

}  // namespace
}  // namespace ostrand
