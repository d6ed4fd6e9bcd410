// Parameters of a level crossing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "model/record_layout.h"
#include "tables/histo_screen.h"

namespace ostrand {

// The name stem of an output's level arrays: "VBlk1", the name of a CAN item, "Calc3".
std::string LevelStem(const OutputSource& source);

// `LevelCode` as the program uses it: the sizes and the arrays that hold the levels of both
// dimensions, "3,2,VBlk11LC1(),VBlk11LC2()". One dimension has a second size of 1.
std::string LevelCodeText(const HistoSet& histo, std::string_view stem, int table);

// Unique values in ascending order, at most kLevels.
class LevelList {
 public:
  // A field for a new value, the button that adds it, the list, and the button that removes the
  // picked value.
  LevelList(Screen& screen, std::string_view name, std::string_view toolTip);

  NumericField Entry;
  Button Add;
  Choice Items;
  Button Remove;
  std::function<void()> OnEdit;

  // The first `count` of the stored values.
  void Load(const Row<float, 0, kLevels - 1>& values, int count);
  void Keep(Row<float, 0, kLevels - 1>& values, i16& count) const;
  [[nodiscard]] int Count() const { return static_cast<int>(values_.size()); }
  void Enable(bool enabled);

 private:
  void add();
  void remove();
  void show();

  Screen& screen_;
  std::vector<float> values_;
};

class frmLevel final : public HistoScreen {
 public:
  frmLevel(const ScreenContext& context, const HistoTarget& target);

  Choice NumDims;    // "One Dimension", "Two Dimensions"
  LevelList Levels;  // "LevelVarOne", with "AddOne", "LevelsOne", "RemoveOne"
  LevelList Tests;   // "LevelVarTwo" and so on
  Choice LevelMeas;  // measurement of the second dimension
  Label Code;

 protected:
  bool onDone() override;

 private:
  void load();
  void fillMeasurements();
  void pickMeasurement();
  void edit();
  [[nodiscard]] bool isTwo() const { return NumDims.Index() == 1; }
  // The text that Done stores.
  [[nodiscard]] HistoSet edited() const;

  std::string stem_;
  std::vector<std::string> measurements_;  // names of the entries of LevelMeas
  bool touched_ = false;
};

}  // namespace ostrand
