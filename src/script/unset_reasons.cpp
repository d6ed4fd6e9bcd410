#include "script/unset_reasons.h"

#include <memory>

#include "controls/choice.h"
#include "controls/text_field.h"
#include "places/key_places.h"
#include "screens/setup_screens.h"
#include "script/objections.h"
#include "script/script_forms.h"
#include "session/project_origin.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The control of a key as a screen shows it, or why there is none.
struct Look {
  std::string whyNot;
  std::string control;
  std::string text;
  bool takes = false;  // whether a user can give it the text asked for
};

std::string stateOf(const Control& control) {
  const std::string state = control.Name() + (control.Visible ? " is disabled" : " is hidden");
  return state + Because(control.WhyDisabled);
}

bool canTake(const Control& control, const std::string& text) {
  if (const auto* choice = dynamic_cast<const Choice*>(&control)) {
    const Choice::Item* item = choice->Find(text);
    return item != nullptr && item->Enabled && item->Visible;
  }
  const auto* field = dynamic_cast<const TextField*>(&control);
  return field == nullptr || field->MayBecome(text);
}

class Viewer : public ScreenHost {
 public:
  explicit Viewer(Ostrand& session) : session_(session) { ConnectSetupScreens(session, *this); }

  Look At(const ScreenPlace& place, const std::string& text = {}) {
    place_ = &place;
    text_ = text;
    step_ = 0;
    look_ = {"its screen does not open", {}, {}};
    const auto before = std::make_unique<ProjectStore>(session_.Store());
    const int button = ButtonOfScreen(place.steps.front().screen);
    if (button >= 0 && session_.MainButtons().Enabled(button)) session_.Click(button);
    session_.PutBack(*before, session_.Origin());
    return look_;
  }

  void ShowModal(Screen& screen) override {
    if (step_ < place_->steps.size()) look(screen);
    screen.End(ModalResult::kCancel);
  }

 private:
  void look(Screen& screen) {
    const ScreenStep& step = place_->steps[step_++];
    if (!TakeStep(screen, step)) return;
    if (step_ == place_->steps.size()) return lookAtControl(screen);
    Opener* opener = OpenerOf(screen, place_->steps[step_]);
    if (opener == nullptr) return;
    if (opener->Usable()) return static_cast<void>(opener->Press());
    look_.whyNot = stateOf(*opener);
  }

  void lookAtControl(const Screen& screen) {
    const Control* control = NamedControl(screen, place_->control);
    if (control == nullptr) {
      look_.whyNot = screen.Name() + " has no control for it";
    } else if (!control->Usable()) {
      look_.whyNot = stateOf(*control);
    } else {
      look_ = {{}, control->Name(), control->Text(), canTake(*control, text_)};
    }
  }

  Ostrand& session_;
  const ScreenPlace* place_ = nullptr;
  std::string text_;
  std::size_t step_ = 0;
  Look look_;
};

std::string whyUnset(const KeyPlace& place, Viewer& wanted, Viewer& made) {
  if (place.derived) return "follows from other keys";
  if (place.screen.steps.empty()) return "no control of a screen from the main row shows it";
  const Look there = wanted.At(place.screen);
  const Look here = made.At(place.screen, there.text);
  if (!here.whyNot.empty()) return here.whyNot;
  if (!there.whyNot.empty()) return "in the project " + there.whyNot;
  if (here.text == there.text) return here.control + " shows " + Quoted(here.text) + " for both";
  if (!here.takes) return here.control + " does not take " + Quoted(there.text);
  return "no way to it was found";
}

}  // namespace

void ExplainUnset(Ostrand& wanted, Ostrand& made, std::vector<UnsetKey>& unset) {
  Viewer there(wanted);
  Viewer here(made);
  for (UnsetKey& row : unset) {
    const std::string_view section = Before(row.key, "] ");
    const std::string_view key = After(row.key, "] ");
    row.why = whyUnset(PlaceOfKey(std::string(section) + "]", key), there, here);
  }
}

}  // namespace ostrand
