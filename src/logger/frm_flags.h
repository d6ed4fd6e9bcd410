// Flags that the program sets and clears by conditions.
#pragma once

#include <array>
#include <memory>

#include "conditions/backup.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/screen.h"
#include "logger/state_rows.h"

namespace ostrand {

// Edits the flags in place; Cancel restores them. Names of controls contain the flag number:
// "FlagInclude3", "State1FlagVar3".
class frmFlags final : public Screen {
 public:
  explicit frmFlags(const ScreenContext& context);
  ~frmFlags() override;

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  struct FlagControls;

  [[nodiscard]] FlagControls& at(int number) { return *flags_[number]; }
  void load(int number);
  void bind(int number);
  void takeInclude(int number);
  void takeState(int number, int state);
  void refresh(int number);
  void viewCode(int number);

  ConditionVariables variables_;
  Backup<Row<FlagControl, 1, kFlags>> before_;
  Row<std::unique_ptr<FlagControls>, 1, kFlags> flags_;
};

}  // namespace ostrand
