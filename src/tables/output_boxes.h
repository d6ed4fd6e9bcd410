// The output selection of an item: table by table, the ways in which it is stored.
#pragma once

#include <array>
#include <functional>
#include <initializer_list>
#include <vector>

#include "controls/choice.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// A tab for each table with a box for each instruction. Works on the output set that the screen
// gives to it, which is the store's own or the screen's copy. Boxes of a table that is off are
// disabled; what they hold stays.
class OutputBoxes {
 public:
  OutputBoxes(Screen& screen, const ProjectStore& store);

  Choice Table;     // "Table 1" to "Table 6"
  Label TableName;  // of the table shown
  // "Smp", "Max", "Min", "Avg", "Std", "Hst", "RFH", "LCr", by their OutputCode.
  std::array<CheckBox, kOutputCodes> Boxes;
  // Show the parameters again: "HstSetup", "RFHSetup", "LCrSetup".
  std::array<Opener, 3> Setups;

  // Asks for them by the screen of their instruction. `resolution` is the choice of the item's data
  // type, `stem` as LevelStem gives it.
  void AskBy(const ScreenContext& context, const Choice& resolution, std::string stem);
  // Asks for the parameters of a histogram, a rainflow or a level crossing in a table, from 1, and
  // changes them; false when the user cancelled. Without it none of the three can be chosen.
  std::function<bool(OutputCode code, int table, HistoSet& histo)> AskParameters;
  // After the user changed the output set.
  std::function<void()> OnChange;

  // Shows this output set, which must stay while the screen is shown, and the first table that
  // stores anything of it.
  void Show(OutputSet& output);
  // Shows again what may be chosen, after the tables changed.
  void Refresh();

  [[nodiscard]] int TableShown() const { return Table.Index() + 1; }

  // Whether the item can be stored by that instruction at all; what is chosen stays.
  void Offer(OutputCode code, bool offered);

  // In all six tables a sample takes the place of these instructions, if any of them is chosen.
  // False when none was.
  bool SampleInstead(std::initializer_list<OutputCode> codes);

 private:
  void bind();
  void onClick(int code);
  [[nodiscard]] bool setUp(OutputCode code);
  [[nodiscard]] std::string whyNoBox(int code) const;
  [[nodiscard]] std::string whyNoSetup(int code) const;
  [[nodiscard]] bool isSelected(int code) const;
  void select(int code, bool on);
  void changed();

  const ProjectStore& store_;
  OutputSet* output_ = nullptr;
  std::array<bool, kOutputCodes> offered_;
  bool showing_ = false;  // the boxes are set by this object, not by a user
};

}  // namespace ostrand
