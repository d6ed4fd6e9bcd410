// The script that makes a project.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "session/ostrand.h"

namespace ostrand {

// The forms of a session that a script is written with: a user who agrees to everything, or to
// nothing.
class WriterForms : public platform::Forms {
 public:
  explicit WriterForms(bool agrees) : agrees_(agrees) {}

  struct Box {
    std::string title;
    std::string text;
    platform::Answer answer;
    bool isQuestion;
  };
  void Agree(bool agrees) { agrees_ = agrees; }
  // The boxes and beeps of an action begin.
  void StartAction();
  [[nodiscard]] const std::vector<Box>& Boxes() const { return boxes_; }
  void TakeBoxes() { boxes_.clear(); }
  [[nodiscard]] bool Beeped() const { return beeped_; }

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog&) override { return std::nullopt; }
  std::optional<std::string> AskSave(const platform::FileDialog&) override { return std::nullopt; }
  void SetHelpLine(const std::string&) override {}
  void SetPointer(platform::Pointer) override {}
  void Beep() override { beeped_ = true; }
  void DoEvents() override {}

 private:
  bool agrees_;
  bool beeped_ = false;
  std::vector<Box> boxes_;
};

// A key that the script does not set to the project's value, in Windows-1252.
struct UnsetKey {
  std::string key;                    // "[SECTION] Key"
  std::optional<std::string> wanted;  // its value; nothing when the project does not have the key
  std::optional<std::string> made;    // the same of what the script makes
  std::string why = {};               // filled in by ExplainUnset
};

// A script, and what it does not set.
struct WrittenScript {
  std::string lines;  // in UTF-8, with LF
  std::vector<UnsetKey> unset;
};

// Shows the screens of a project beside those of a new one in a separate store, and edits the
// latter until both show the same. To be made before the projects are opened, so that the buttons
// of both sessions have their screens; the sessions have the forms given.
class ScriptWriter {
 public:
  ScriptWriter(Ostrand& wanted, WriterForms& wantedForms, Ostrand& built, WriterForms& builtForms);
  ~ScriptWriter();
  // The script that makes the project of `wanted`. Screens that open may count channels anew there.
  WrittenScript Write();

 private:
  class Run;
  std::unique_ptr<Run> run_;
};

}  // namespace ostrand
