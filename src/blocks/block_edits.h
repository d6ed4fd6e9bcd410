// How lists of blocks that edit the store in place undo their edits.
#pragma once

#include <functional>
#include <memory>

#include "conditions/backup.h"
#include "conditions/names_backup.h"
#include "controls/edits.h"
#include "model/store.h"

namespace ostrand {

// The blocks of a group when their list opened, and the names of sensors in the rest of the
// project.
template <class Group>
class BlockEdits {
 public:
  BlockEdits(Group& group, ProjectStore& store)
      : group_(group), blocks_(group), opened_(std::make_unique<Group>(group)), names_(store) {}

  // The list is shown with this many blocks; its changes to the group up to here are not edits.
  void Begin(int count) {
    blocks_.Retake();
    *opened_ = group_;
    count_ = count;
  }

  // The setup of a block was opened. Without an edit it would change `before` to `settled`.
  template <class Block>
  void Opened(int block, const Block& before, const Block& settled) {
    if (before == blocks_.Before()[block]) (*opened_)[block] = settled;
  }

  // Keeps the edits.
  void Keep() {
    blocks_.Keep();
    names_.Keep();
  }

  // Called when the list, now with this many blocks, is cancelled; returns whether it may close.
  // Asks about edits: No undoes them, Yes runs `save`, which ends the list itself.
  [[nodiscard]] bool Cancel(platform::Forms& forms, int count, const std::function<void()>& save) {
    if (count == count_ && !edited()) return true;
    const platform::Answer answer = AskSaveEdits(forms);
    if (answer == platform::Answer::kNo) blocks_.PutBack();
    if (answer == platform::Answer::kYes) save();
    return answer == platform::Answer::kNo;
  }

 private:
  // Channel counts depend on the blocks and are not edits themselves.
  [[nodiscard]] bool edited() const {
    for (int b = 1; b <= Group::kLast; ++b) {
      if (group_[b] != blocks_.Before()[b] && group_[b] != (*opened_)[b]) return true;
    }
    return false;
  }

  Group& group_;
  Backup<Group> blocks_;
  std::unique_ptr<Group> opened_;  // the blocks as their setups leave them without an edit
  NamesBackup names_;
  int count_ = 0;
};

}  // namespace ostrand
