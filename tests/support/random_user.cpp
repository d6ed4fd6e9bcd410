#include "support/random_user.h"

#include <algorithm>
#include <array>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "text/number.h"

namespace ostrand::testing {
namespace {

using platform::Answer;

constexpr int kMaxActions = 60;  // on one screen
constexpr int kMaxWaysOut = 200;

constexpr std::array kNumbers = std::to_array<std::string_view>(
    {"0",      "1",  "2",  "3",   "4",   "5",   "7",   "8",   "12",   "19",   "20",
     "21",     "25", "40", "99",  "100", "250", "300", "800", "1000", "5000", "16001",
     "100000", "-1", "-5", "0.5", "2.5", "1e9", "-",   "e",   ".5e",  "9 x",  ""});
constexpr std::array kWords = std::to_array<std::string_view>(
    {"Counts", "Hz", "mBar", "Deg_C", "Flag(1)", "True", "False", "&HFF", "&B101", "Tank", "Tank_2",
     "Flow", "x.", "VBlk1(1)", "VBlk1(1) + 2", "a[1]", "A_name_that_is_much_too_long_for_any_field",
     ""});

template <class Words>
std::string_view anyOf(RandomUser& user, const Words& words) {
  return words[static_cast<std::size_t>(user.Below(words.size()))];
}

// The answer that changes nothing.
Answer unwilling(const platform::MessageBox& box) {
  // Whether to leave as it is what the screen does not like.
  if (box.title == "DUPLICATE FLAGS" || box.title == "CONTINUE WITH IMPROPER VALUES ?") {
    return Answer::kYes;
  }
  if (box.buttons == platform::Buttons::kOk) return Answer::kOk;
  return box.buttons == platform::Buttons::kOkCancel ? Answer::kCancel : Answer::kNo;
}

}  // namespace

void RandomUser::ShowModal(Screen& screen) {
  screens.insert(screen.Name());
  ++depth_;
  mood == Mood::kEdits ? edit(screen) : look(screen);
  --depth_;
  if (depth_ == 0) ended = screen.Result();
}

void RandomUser::edit(Screen& screen) {
  for (int n = Below(kMaxActions); n > 0 && screen.Result() == ModalResult::kNone; --n) act(screen);
  leave(screen);
}

// What is picked already changes nothing, but for the kind of a bridge.
void RandomUser::pickAgain(Screen& screen) {
  for (Control* control : screen.Controls()) {
    auto* choice = dynamic_cast<Choice*>(control);
    if (choice == nullptr || choice->Name() == "Style" || !choice->Usable()) continue;
    moveFocus(screen, choice);
    choice->Pick(choice->Text());
  }
  moveFocus(screen, nullptr);
}

void RandomUser::look(Screen& screen) {
  pickAgain(screen);
  openAll(screen);
  // Screens of tables show one of six.
  auto* tables = dynamic_cast<Choice*>(screen.Find("Table"));
  for (std::size_t t = 0; tables != nullptr && t < tables->Items.size(); ++t) {
    if (tables->Usable() && tables->Pick(std::string(tables->Items[t].Text))) openAll(screen);
  }
  if (screen.Name().starts_with("frmCalc") || screen.Name() == "frmSolveList") {
    // frmCalculated is the list of fields, and no calculator.
    if (screen.Name() != "frmCalculated") return screen.Cancel();
  }
  screen.Done();
  if (screen.Result() == ModalResult::kNone) screen.Cancel();
  if (screen.Result() == ModalResult::kNone) leave(screen);
}

// A disabled control must give a reason, and so must a hidden opener.
void RandomUser::checkReasons(const Screen& screen) {
  const auto check = [&](const Control& control) {
    if (control.WhyDisabled.empty()) unexplained = screen.Name() + "." + control.Name();
  };
  for (const Control* control : screen.Controls()) {
    if (control->Visible && !control->Enabled) check(*control);
  }
  for (const Opener* opener : screen.Openers()) {
    if (!opener->Visible) check(*opener);
  }
}

void RandomUser::openAll(Screen& screen) {
  checkReasons(screen);
  for (Opener* opener : std::vector(screen.Openers())) {
    if (opener->Usable()) opener->Press();
  }
}

void RandomUser::leave(Screen& screen) {
  for (int n = 0; screen.Result() == ModalResult::kNone; ++n) {
    moveFocus(screen, nullptr);
    const bool cancels = Below(4) == 0;
    cancels ? screen.Cancel() : screen.Done();
    if (n < kMaxWaysOut) continue;
    stuck = screen.Name();
    screen.End(ModalResult::kCancel);
  }
}

// A field that can't be left keeps its text.
void RandomUser::moveFocus(Screen& screen, Control* next) {
  if (!screen.MoveFocus(next)) dynamic_cast<TextField&>(*screen.Focused()).Escape();
}

void RandomUser::act(Screen& screen) {
  ++actions;
  if (Below(4) == 0) return openAny(screen);
  if (screen.Controls().empty()) return;
  Control& control = *screen.Controls()[static_cast<std::size_t>(Below(screen.Controls().size()))];
  if (!control.Usable()) return;
  moveFocus(screen, &control);
  if (screen.Focused() == &control && control.Usable()) use(control);
}

void RandomUser::openAny(Screen& screen) {
  checkReasons(screen);
  const auto& openers = screen.Openers();
  if (openers.empty()) return;
  moveFocus(screen, nullptr);
  Opener& opener = *openers[static_cast<std::size_t>(Below(openers.size()))];
  if (!opener.Usable()) return;
  opener.Press();
}

void RandomUser::use(Control& control) {
  if (auto* choice = dynamic_cast<Choice*>(&control)) {
    if (choice->Items.empty()) return;
    choice->Pick(
        std::string(choice->Items[static_cast<std::size_t>(Below(choice->Items.size()))].Text));
  } else if (control.Kind() == ControlKind::kCheck) {
    control.Check(Below(2) == 0);
  } else if (control.Kind() == ControlKind::kButton) {
    control.Press();
  } else if (dynamic_cast<TextField*>(&control) == nullptr) {
    return;
  } else if (Below(3) == 0) {
    control.Spin(Below(3) != 0);
  } else {
    control.TypeText(textFor(control));
    if (Below(8) == 0) dynamic_cast<TextField&>(control).Escape();
  }
}

std::string RandomUser::textFor(const Control& control) {
  // The project file does not keep blank units.
  if (control.Name().find("Units") != std::string::npos) return Below(2) == 0 ? "Counts" : "mBar";
  const auto* list = dynamic_cast<const ListField*>(&control);
  if (list != nullptr && !list->Items.empty() && Below(2) == 0) {
    return std::string(anyOf(*this, list->Items));
  }
  const bool number = control.Kind() == ControlKind::kNumber || Below(2) == 0;
  const std::string_view text = number ? anyOf(*this, kNumbers) : anyOf(*this, kWords);
  // A sensor of that name would be taken for the word in a condition.
  const bool isLogic = text == "True" || text == "False";
  return std::string(isLogic && list == nullptr ? "Counts" : text);
}

Answer RandomUser::ShowBox(const platform::MessageBox& box) {
  titles.insert(box.title);
  if (box.text.starts_with("Unexpected error")) trouble = box.text;
  if (mood != Mood::kEdits) return unwilling(box);
  // Improper values would give a program that can't be made.
  if (box.title == "CONTINUE WITH IMPROPER VALUES ?") return Answer::kNo;
  constexpr std::array kAnswers = {Answer::kYes, Answer::kNo, Answer::kCancel};
  switch (box.buttons) {
    case platform::Buttons::kOk:
      return Answer::kOk;
    case platform::Buttons::kOkCancel:
      return Below(2) == 0 ? Answer::kOk : Answer::kCancel;
    case platform::Buttons::kYesNo:
      return kAnswers[static_cast<std::size_t>(Below(2))];
    default:
      return kAnswers[static_cast<std::size_t>(Below(3))];
  }
}

std::optional<std::string> RandomUser::AskOpen(const platform::FileDialog&) {
  if (Below(2) == 0) return std::nullopt;
  return Below(2) == 0 ? "/lists/any.11LST" : "/lists/any.29LST";
}

std::optional<std::string> RandomUser::AskSave(const platform::FileDialog& dialog) {
  return AskOpen(dialog);
}

}  // namespace ostrand::testing
