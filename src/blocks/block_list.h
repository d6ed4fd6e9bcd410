// Common part of screens with a list of blocks: the count of blocks, the rows, and the question
// before a block with sensors is removed.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "blocks/faces.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"

namespace ostrand {

// A list of blocks, counted from 1. A count field adds and removes blocks at the end. The screen
// decides what a block is and whether one more fits.
class BlockList {
 public:
  struct Column {
    std::string_view name;  // of the labels: "Reps" gives Reps1 and so on
    std::function<std::string(int block)> text;
  };
  struct Rules {
    std::string_view setup;               // the screen that edits a block
    std::function<void(int block)> open;  // edits a block on it
    int max = 0;                          // blocks
    int rows = 0;                         // on the screen
    int maxTyped = 1;  // digits that can be typed; a number above `max` becomes `max`
    int maxDigit = 9;  // the largest digit that can be typed
    std::function<bool()> maySpinUp;
    // Whether a typed count above the present one is accepted.
    std::function<bool(int count)> mayType;
    std::function<int(int block)> sensors;
    std::function<void(int block)> add;     // appends a block
    std::function<void(int block)> remove;  // removes the last block
    std::function<void()> changed;          // after each change of the count or a block
    std::vector<Column> columns;
  };

  BlockList(Screen& screen, Rules rules);

  NumericField BlockCount;

  [[nodiscard]] int Count() const { return count_; }
  // Shows a count and the rows without events; for loading.
  void Show(int count);
  // Updates the rows from the blocks.
  void RefreshRows();

 private:
  void addOpener(int row);
  void onSpin(bool up);
  void onTyped();
  void addOne();
  bool removeOne();
  [[nodiscard]] bool agreedToRemove(int block);
  void changeTo(int count);
  void showCount();

  Screen& screen_;
  Rules rules_;
  std::vector<std::unique_ptr<Opener>> openers_;  // "Block1" and so on
  std::vector<std::unique_ptr<Label>> labels_;    // row by row
  int count_ = 0;
};

}  // namespace ostrand
