// Lists of blocks that edit the store in place: how they take their edits back.
#pragma once

#include <functional>
#include <memory>

#include "conditions/backup.h"
#include "conditions/names_backup.h"
#include "controls/edits.h"
#include "model/store.h"

namespace ostrand {

// The blocks of a group as they were when their list opened, and the names of sensors in the rest
// of the project.
template <class Group>
class BlockEdits {
 public:
  BlockEdits(Group& group, ProjectStore& store)
      : group_(group), blocks_(group), opened_(std::make_unique<Group>(group)), names_(store) {}

  // The list shows so many blocks; what it made of the group up to here is no edit.
  void Begin(int count) {
    blocks_.Retake();
    *opened_ = group_;
    count_ = count;
  }

  // The setup of a block was opened and, without an edit, would leave `settled` in place of
  // `before`.
  template <class Block>
  void Opened(int block, const Block& before, const Block& settled) {
    if (before == blocks_.Before()[block]) (*opened_)[block] = settled;
  }

  // The edits stay.
  void Keep() {
    blocks_.Keep();
    names_.Keep();
  }

  // The list of now so many blocks is cancelled: whether it may close. The user is asked about
  // edits: No takes them back, Yes runs `save`, which ends the list in its own way.
  [[nodiscard]] bool Cancel(platform::Forms& forms, int count, const std::function<void()>& save) {
    if (count == count_ && !edited()) return true;
    const platform::Answer answer = AskSaveEdits(forms);
    if (answer == platform::Answer::kNo) blocks_.PutBack();
    if (answer == platform::Answer::kYes) save();
    return answer == platform::Answer::kNo;
  }

 private:
  // Counts of channels follow the blocks and are no edits themselves.
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
