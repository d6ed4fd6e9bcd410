// Forms without a user.
#pragma once

#include "platform/forms.h"

namespace ostrand::platform {

// Answers every box with OK, chooses no file and shows nothing.
class QuietForms : public Forms {
 public:
  Answer ShowBox(const MessageBox&) override { return Answer::kOk; }
  std::optional<std::string> AskOpen(const FileDialog&) override { return {}; }
  std::optional<std::string> AskSave(const FileDialog&) override { return {}; }
  void SetHelpLine(const std::string&) override {}
  void SetPointer(Pointer) override {}
  void Beep() override {}
  void DoEvents() override {}
};

}  // namespace ostrand::platform
