// The output selection of an item: how each table stores it.
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
// passes: the store's, or the screen's copy. Boxes of a table that is off are disabled but keep
// their state.
class OutputBoxes {
 public:
  OutputBoxes(Screen& screen, const ProjectStore& store);

  Choice Table;     // "Table 1" to "Table 6"
  Label TableName;  // of the table shown
  // "Smp", "Max", "Min", "Avg", "Std", "Hst", "RFH", "LCr", by their OutputCode.
  std::array<CheckBox, kOutputCodes> Boxes;
  // Reopen the parameters: "HstSetup", "RFHSetup", "LCrSetup".
  std::array<Opener, 3> Setups;

  // Opens the parameter screens. `resolution` is the index of the item's data type, `stem` comes
  // from LevelStem.
  void AskBy(const ScreenContext& context, const Choice& resolution, std::string stem);
  // Edits the parameters of a histogram, a rainflow or a level crossing in a table, from 1; false
  // when the user cancelled. Without this function none of the three can be chosen.
  std::function<bool(OutputCode code, int table, HistoSet& histo)> AskParameters;
  // Called after the user changed the output set.
  std::function<void()> OnChange;

  // Shows this output set, which must outlive the display, and the first table that stores any of
  // it.
  void Show(OutputSet& output);
  // Updates the available boxes after the tables changed.
  void Refresh();

  [[nodiscard]] int TableShown() const { return Table.Index() + 1; }

  // Why the instruction does not suit the item, as a sentence; empty when it does. Boxes already
  // checked stay.
  void Offer(OutputCode code, std::string_view whyNot);

  // Replaces these instructions by a sample in all six tables. False when none was chosen.
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
  std::array<std::string_view, kOutputCodes> whyNot_;
  bool showing_ = false;  // this object, not the user, sets the boxes
};

}  // namespace ostrand
