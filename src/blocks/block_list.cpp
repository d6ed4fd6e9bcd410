#include "blocks/block_list.h"

#include <algorithm>

#include "text/number.h"

namespace ostrand {

BlockList::BlockList(Screen& screen, Rules rules)
    : BlockCount(screen, "BlockCount", NumberType::kByte),
      screen_(screen),
      rules_(std::move(rules)) {
  BlockCount.Limits(0, rules_.max);
  BlockCount.MaxLetters = static_cast<std::size_t>(rules_.maxTyped);
  BlockCount.MayHold = [this](std::string_view text) {
    const bool digitsFit = std::all_of(text.begin(), text.end(), [this](char letter) {
      return letter >= '0' && letter - '0' <= rules_.maxDigit;
    });
    if (!digitsFit) return false;
    const int count = std::min(static_cast<int>(Val(text)), rules_.max);
    return count <= count_ || rules_.mayType(count);
  };
  BlockCount.OnSpin = [this](bool up) { onSpin(up); };
  BlockCount.OnChange = [this] { onTyped(); };
  BlockCount.OnTake = [this] { showCount(); };
  for (int row = 1; row <= rules_.rows; ++row) {
    addOpener(row);
    for (const Column& column : rules_.columns) {
      labels_.push_back(
          std::make_unique<Label>(screen, std::string(column.name) + NumberText(row)));
    }
  }
  Describe(screen, kBlockListFaces);
}

void BlockList::addOpener(int row) {
  const std::string number = NumberText(row);
  auto& opener = openers_.emplace_back(std::make_unique<Opener>(
      screen_, "Block" + number, rules_.setup, Opener::Which{number, "block"}));
  opener->OnPress = [this, row] {
    rules_.open(row);
    rules_.changed();
  };
}

void BlockList::Show(int count) {
  count_ = std::min(count, rules_.max);
  showCount();
  RefreshRows();
}

void BlockList::showCount() { BlockCount.Value(count_); }

void BlockList::RefreshRows() {
  auto label = labels_.begin();
  for (int row = 1; row <= rules_.rows; ++row) {
    openers_[static_cast<std::size_t>(row - 1)]->Show(row <= count_,
                                                      "There is no block " + NumberText(row) + ".");
    for (const Column& column : rules_.columns) {
      (*label)->Visible = row <= count_;
      (*label)->Text(row <= count_ ? column.text(row) : std::string());
      ++label;
    }
  }
}

void BlockList::onSpin(bool up) {
  if (up ? count_ >= rules_.max || !rules_.maySpinUp() : count_ <= 0) {
    screen_.Forms().Beep();
    return;
  }
  changeTo(count_ + (up ? 1 : -1));
}

// A digit takes effect at once, and the next one replaces it. An empty field waits for a digit.
void BlockList::onTyped() {
  if (BlockCount.Text().empty()) return;
  changeTo(std::min(static_cast<int>(BlockCount.Value()), rules_.max));
  BlockCount.SelectAll();
}

// Blocks are added and removed one by one at the end of the list; stops at a block that the user
// keeps.
void BlockList::changeTo(int count) {
  while (count_ < count) addOne();
  while (count_ > count && removeOne()) {
  }
  showCount();
  RefreshRows();
  rules_.changed();
}

void BlockList::addOne() {
  rules_.add(count_ + 1);
  ++count_;
}

bool BlockList::removeOne() {
  if (!agreedToRemove(count_)) return false;
  rules_.remove(count_);
  --count_;
  return true;
}

bool BlockList::agreedToRemove(int block) {
  if (rules_.sensors(block) < 1) return true;
  platform::MessageBox box;
  box.title = "CONFIRM BLOCK DELETION";
  box.text = "Measurements for this block will be Deleted, Continue?";
  box.icon = platform::Icon::kQuestion;
  box.buttons = platform::Buttons::kYesNo;
  return screen_.Forms().ShowBox(box) == platform::Answer::kYes;
}

}  // namespace ostrand
