// A screen independent of a toolkit: its controls, what it opens, and how it ends.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/control.h"
#include "controls/text_field.h"
#include "model/options.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// Shows a screen and returns when it has ended: a desktop in a window, a script by its lines.
class ScreenHost {
 public:
  virtual ~ScreenHost() = default;
  virtual void ShowModal(Screen& screen) = 0;
};

class ScreenFactory;

// What every screen works with. Everything here must outlive the screen.
struct ScreenContext {
  ProjectStore& store;
  platform::Forms& forms;
  ScreenHost& host;
  const ScreenFactory& screens;  // makes the screens that a screen opens
  const OptionValues& options;
  i32 WarningMessageMask;
  const std::vector<i32>& UserVarListTypes;  // order of the kinds in lists of variables
  TextFont* ConditionFont = nullptr;         // the user's; null when there is none to choose
};

enum class ModalResult { kNone, kDone, kCancel };

class Screen {
 public:
  Screen(const ScreenContext& context, std::string_view name);
  virtual ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }
  std::string Caption;

  // In order of creation, which is the tab order.
  [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }
  // By name, ignoring case; null when there is none.
  [[nodiscard]] Control* Find(std::string_view name) const;

  // Its controls that open other screens.
  [[nodiscard]] const std::vector<Opener*>& Openers() const { return openers_; }

  // Moves the focus to a control, after the text typed before takes effect; false when the focus
  // stays.
  bool MoveFocus(Control* control);
  [[nodiscard]] Control* Focused() const { return focused_; }

  // The two ways out. Each may refuse and leave the screen open. Done beeps while disabled.
  bool DoneEnabled = true;
  std::string WhyNotDone;  // while Done is disabled, as a sentence
  void Done();
  void Cancel();
  [[nodiscard]] ModalResult Result() const { return result_; }
  // Ends the screen without conditions; for hosts that shut down.
  void End(ModalResult result) { result_ = result; }

  // While the screen loads, clicks on options skip their side effects.
  [[nodiscard]] bool IsLoading() const { return loading_ > 0; }

  [[nodiscard]] platform::Forms& Forms() const { return context_.forms; }
  // Beeps, with the reason as a sentence in the help line.
  void Refuse(const std::string& why) const;

 protected:
  [[nodiscard]] const ScreenContext& context() const { return context_; }
  [[nodiscard]] ProjectStore& store() const { return context_.store; }

  // Handlers of Done and Cancel; false keeps the screen open.
  virtual bool onDone() { return true; }
  virtual bool onCancel() { return true; }

  // Shows another screen until it ends; true when it ended with Done.
  bool showModal(Screen& screen);
  // Runs a routine of the screen and reports a failure under its name. False after a failure.
  bool guarded(std::string_view routine, const std::function<void()>& body);

  // Marks the screen as loading for the lifetime of this object.
  class Loading {
   public:
    explicit Loading(Screen& screen) : screen_(screen) { ++screen_.loading_; }
    ~Loading() { --screen_.loading_; }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;

   private:
    Screen& screen_;
  };

 private:
  friend class Control;
  friend class Opener;
  void add(Control& control) { controls_.push_back(&control); }
  void remove(const Control& control);

  ScreenContext context_;
  std::string name_;
  std::vector<Control*> controls_;
  std::vector<Opener*> openers_;
  Control* focused_ = nullptr;
  ModalResult result_ = ModalResult::kNone;
  int loading_ = 0;
};

}  // namespace ostrand
