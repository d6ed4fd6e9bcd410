#include "script/script_writer.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/numeric_field.h"
#include "model/new_store.h"
#include "projectfile/file_lines.h"
#include "projectfile/genfile.h"
#include "screens/setup_screens.h"
#include "script/detours.h"
#include "session/project_origin.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using platform::Answer;

constexpr int kMaxPasses = 8;  // over the controls of a screen
constexpr int kMaxRounds = 4;  // over all screens
// Keys that differ at most for a second start: with more, the project was not made at screens.
constexpr std::size_t kMaxUnset = 300;

// Screens that set nothing that others do not show: pictures, lists in files.
constexpr std::array<std::string_view, 4> kAids = {"frmLogGraph", "frmTK40Graph", "frmCanPick",
                                                   "frmTableTimes"};

// The list of calculators ends with the first calculator that ends with Done.
constexpr std::string_view kSolveList = "frmSolveList";
constexpr std::array<std::string_view, 8> kCalculators = {
    "frmSpdCalc",     "frmMoreSpeed",     "frmRPMCalc", "frmFlowCalc",
    "frmCalcMultOff", "frmCalcmVPerVolt", "frmCalcPot", "frmRsCalc"};

// Choices of what a screen shows.
constexpr std::array<std::string_view, 3> kPages = {"Table", "Item", "Formulas"};

// A list whose entries are made in other controls of its screen.
struct EntryList {
  std::string_view screen;
  std::string_view list;
  std::string_view edit;  // the button that shows a picked entry; empty when the pick does
  std::string_view mode;  // the check box that lets its text be typed
  std::array<std::string_view, 6> parts;
  std::string_view add;
};
constexpr std::array<EntryList, 4> kEntryLists = {{
    {"frmCalculated",
     "Formulas",
     "Edit",
     "EditMode",
     {"Formula", "NewName", "Units", "Public", "DataResolution"},
     "Save"},
    {"frmConfig",
     "StatusRows",
     "",
     "",
     {"StatusField", "StatusCompare", "StatusValue", "StatusFlag", "StatTrueFalse"},
     "AddStatus"},
    {"frmLevel", "LevelsOne", "", "", {"LevelVarOne"}, "AddOne"},
    {"frmLevel", "LevelsTwo", "", "", {"LevelVarTwo"}, "AddTwo"},
}};

// The spins from what a field shows to a whole number, negative for down; 0 when it does not spin
// or the number is far off.
int spinsTo(const TextField& field, std::string_view text) {
  constexpr int kMaxSpins = 20;
  const std::optional<std::int16_t> now = ToInt16(field.Text());
  const std::optional<std::int16_t> then = ToInt16(text);
  if (!field.OnSpin || !now || !then) return 0;
  const int spins = *then - *now;
  return std::abs(spins) <= kMaxSpins ? spins : 0;
}

template <class Names>
bool holds(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Whether what a calculator hands back can be changed to what the screen showed before.
bool canSetScaling(const Screen& screen) {
  constexpr std::array<std::string_view, 3> kScaling = {"Units", "DefaultMult", "DefaultOffset"};
  return std::all_of(kScaling.begin(), kScaling.end(), [&](std::string_view name) {
    const Control* control = screen.Find(name);
    return control != nullptr && control->Usable();
  });
}

// Whether a control is set for an entry of a list, or is the list.
bool isOfEntry(const Screen& screen, const Control& control) {
  return std::any_of(kEntryLists.begin(), kEntryLists.end(), [&](const EntryList& row) {
    return row.screen == screen.Name() &&
           (row.screen == "frmCalculated" || control.Name() == row.list ||
            holds(row.parts, control.Name()));
  });
}

bool isEdited(const Control& control) {
  return control.Kind() >= ControlKind::kText && control.Kind() <= ControlKind::kCheck;
}

// A word of a script.
std::string wordOf(std::string_view text) {
  const bool bare = !text.empty() && text.find_first_of(" \t\"#") == std::string_view::npos;
  if (bare) return std::string(text);
  std::string word = "\"";
  for (const char letter : text) word.append(letter == '"' ? 2 : 1, letter);
  return word + "\"";
}

std::string_view answerName(Answer answer) {
  switch (answer) {
    case Answer::kYes:
      return "yes";
    case Answer::kNo:
      return "no";
    case Answer::kCancel:
      return "cancel";
    default:
      return "ok";
  }
}

using Keys = std::map<std::string, std::string>;

// The keys of a project file by section and name, but for the moment of its save.
Keys keysOf(std::string_view file) {
  Keys keys;
  VisitFileLines(
      file, [](std::string_view, int) {},
      [&](std::string_view section, std::string_view key, std::string_view value, int) {
        if (section == "[GEN VERSION]") return;
        keys[std::string(section).append(" ").append(key)] = value;
      });
  return keys;
}

// The keys that differ, in the order of the project and then of what was built.
std::vector<UnsetKey> unsetKeys(const Keys& wanted, const Keys& built) {
  std::vector<UnsetKey> unset;
  for (const auto& [key, value] : wanted) {
    const auto found = built.find(key);
    if (found == built.end()) {
      unset.push_back({key, value, std::nullopt, {}});
    } else if (found->second != value) {
      unset.push_back({key, value, found->second, {}});
    }
  }
  for (const auto& [key, value] : built) {
    if (!wanted.contains(key)) unset.push_back({key, std::nullopt, value, {}});
  }
  return unset;
}

}  // namespace

class ScriptWriter::Run {
 public:
  Run(Ostrand& wanted, Ostrand& built, WriterForms& builtForms)
      : wanted_(wanted), built_(built), forms_(builtForms) {
    ConnectSetupScreens(wanted_, wantedHost_);
    ConnectSetupScreens(built_, builtHost_);
    builtHost_.Else = [this](Screen& screen) { passBy(screen); };
  }

  WrittenScript Write();

 private:
  // Hands the next screen of a session over.
  class Host : public ScreenHost {
   public:
    std::function<void(Screen&)> Next;
    std::function<void(Screen&)> Else;  // with a screen that nobody waits for
    void ShowModal(Screen& screen) override {
      const auto next = std::exchange(Next, nullptr);
      if (next) {
        next(screen);
      } else if (Else) {
        Else(screen);
      }
      if (screen.Result() == ModalResult::kNone) screen.End(ModalResult::kCancel);
    }
  };

  void writeBoxes();
  void writeScreens();
  void writeRounds();
  std::size_t differing();
  void keepIfBetter(const std::function<bool()>& attempt);
  bool writeDetour(const Detour& detour);
  void writeDetours();
  bool writeBoldRounds();
  void startAnew();
  void settle();
  Keys built();
  void both(const std::string& open, const std::function<void()>& openWanted,
            const std::function<void()>& openBuilt);
  void visit(Screen& wanted, Screen& built);
  void pages(Screen& wanted, Screen& built);
  void agree(Screen& wanted, Screen& built);
  void agreeOnLocked(Screen& wanted, Screen& built);
  static std::vector<Control*> inOrder(const Screen& screen);
  void openers(Screen& wanted, Screen& built);
  void open(Opener& opener, Screen& built, Opener& like);
  void calculators(Screen& wanted, Opener& opener, Screen& built, Opener& like);
  void switchOn(std::string_view box, Screen& wanted, Screen& built);
  void setParts(const EntryList& row, const std::string& text, const Screen& wanted, Screen& built);
  void entries(const EntryList& row, Screen& wanted, Screen& built);
  void leave(Screen& built, bool isWritten);
  bool set(Screen& screen, Control& control, const std::string& text);
  void spin(TextField& field, int spins);
  void typeInto(TextField& field, const std::string& text);
  void press(Screen& screen, std::string_view button);
  bool focus(Screen& screen, Control& control);

  // Writes an action with the answers that its questions need, and what it shows to be expected.
  void act(const std::string& line, const std::function<void()>& action);
  void writeAction();
  void writeAnswers();
  void writeInforming();
  void put(const std::string& line);
  void flush();
  void write(const std::string& line);
  void passBy(Screen& screen);
  void end(Screen& screen);

  // A line that is written only when others follow.
  struct Pending {
    std::string line;
    bool written;
  };

  struct Action {
    const std::string& line;
    bool written;
  };

  Ostrand& wanted_;
  Ostrand& built_;
  WriterForms& forms_;
  Host wantedHost_;
  Host builtHost_;
  std::vector<Pending> pending_;
  std::vector<Screen*> wantedOpen_;  // one over the other
  Action* action_ = nullptr;         // under way
  bool bold_ = false;                // uses calculators whose scaling may not be undone
  std::string_view onlyCalculator_;  // to be opened and left by Done; empty for all
  std::string_view doneAt_;          // a screen to be left by Done though nothing is set there
  Keys keys_;                        // of the wanted project
  std::unique_ptr<ProjectStore> new_ = NewStore();
  std::size_t depth_ = 0;  // screens that are open in the script
  std::string lines_;
  // What was tried in vain: screen, control, its text and the one wanted.
  std::set<std::tuple<std::string, std::string, std::string, std::string>> tried_;
};

// ---- Lines --------------------------------------------------------------------------------------

void ScriptWriter::Run::put(const std::string& line) {
  lines_.append(2 * depth_, ' ').append(Utf8FromWindows1252(line)).append("\n");
}

void ScriptWriter::Run::flush() {
  for (Pending& pending : pending_) {
    if (pending.written) continue;
    pending.written = true;
    put(pending.line);
    if (pending.line.starts_with("open ")) ++depth_;
  }
}

void ScriptWriter::Run::write(const std::string& line) {
  flush();
  put(line);
}

void ScriptWriter::Run::act(const std::string& line, const std::function<void()>& action) {
  Action now{line, false};
  Action* const outer = std::exchange(action_, &now);
  forms_.StartAction();
  action();
  now.written ? writeInforming() : writeAction();
  action_ = outer;
}

void ScriptWriter::Run::writeAction() {
  if (action_ == nullptr || std::exchange(action_->written, true)) return;
  writeAnswers();
  write(action_->line);
  writeInforming();
}

// Before the line that raises the questions.
void ScriptWriter::Run::writeAnswers() {
  for (const WriterForms::Box& box : forms_.Boxes()) {
    if (!box.isQuestion) continue;
    write("answer " + wordOf(box.title) + " " + std::string(answerName(box.answer)));
  }
}

void ScriptWriter::Run::writeInforming() {
  for (const WriterForms::Box& box : forms_.Boxes()) {
    if (!box.isQuestion) write("expect box " + wordOf(box.title));
  }
  forms_.TakeBoxes();
}

// A screen that an action opens by itself, a check box for example. It is left as the wanted one
// when that has just one opener for it; otherwise it follows when its opener is visited.
void ScriptWriter::Run::passBy(Screen& screen) {
  writeAction();
  std::vector<Opener*> openers;
  if (!wantedOpen_.empty()) openers = wantedOpen_.back()->Openers();
  std::erase_if(openers, [&](const Opener* opener) {
    return opener->Opens() != screen.Name() || !opener->Usable();
  });
  if (openers.size() == 1) {
    ++depth_;
    wantedHost_.Next = [&](Screen& wanted) {
      wantedOpen_.push_back(&wanted);
      visit(wanted, screen);
      wantedOpen_.pop_back();
      wanted.Cancel();
    };
    openers.front()->Press();
    wantedHost_.Next = nullptr;
    screen.MoveFocus(nullptr);
    --depth_;
  }
  end(screen);
}

// Leaves a screen by Done, or by Cancel if it refuses.
void ScriptWriter::Run::end(Screen& screen) {
  act("done", [&] { screen.Done(); });
  if (screen.Result() != ModalResult::kNone) return;
  if (forms_.Beeped()) write("expect beep");
  forms_.Agree(false);
  act("cancel", [&] { screen.Cancel(); });
  forms_.Agree(true);
}

// ---- Controls -----------------------------------------------------------------------------------

// A field that keeps the focus gets its old text back.
bool ScriptWriter::Run::focus(Screen& screen, Control& control) {
  if (screen.MoveFocus(&control)) return control.Usable();
  if (auto* field = dynamic_cast<TextField*>(screen.Focused())) {
    field->Escape();
    write("escape");
  }
  return screen.MoveFocus(&control) && control.Usable();
}

void ScriptWriter::Run::typeInto(TextField& field, const std::string& text) {
  act("type " + field.Name() + " " + wordOf(text), [&] { field.TypeText(text); });
  if (forms_.Beeped()) write("expect beep");
  if (field.Text() != text && !forms_.Beeped()) {
    write("expect " + field.Name() + " " + wordOf(field.Text()));
  }
  forms_.StartAction();
  const std::string typed = field.Text();
  const bool taken = field.Leave();
  const bool quiet = taken && !forms_.Beeped() && forms_.Boxes().empty() && field.Text() == typed;
  if (quiet) return;
  writeAnswers();
  write("enter");
  writeInforming();
  if (forms_.Beeped()) write("expect beep");
  write("expect " + field.Name() + " " + wordOf(field.Text()));
  if (taken) return;
  field.Escape();
  write("escape");
}

// Some counts can be spun where they can't be typed. Stops where the field does.
void ScriptWriter::Run::spin(TextField& field, int spins) {
  const std::string direction = spins > 0 ? " up" : " down";
  for (int left = std::abs(spins); left > 0; --left) {
    const std::string before = field.Text();
    forms_.StartAction();
    field.Spin(spins > 0);
    const bool moved = field.Text() != before;
    writeAnswers();
    write("spin " + field.Name() + direction);
    writeInforming();
    if (!moved && forms_.Beeped()) write("expect beep");
    if (!moved) return;
  }
}

// Whether the control shows the text then.
bool ScriptWriter::Run::set(Screen& screen, Control& control, const std::string& text) {
  auto* choice = dynamic_cast<Choice*>(&control);
  auto* field = dynamic_cast<TextField*>(&control);
  auto* list = dynamic_cast<ListField*>(&control);
  if (choice != nullptr) {
    const Choice::Item* item = choice->Find(text);
    if (item == nullptr || !item->Enabled || !item->Visible) return false;
  }
  const bool fromList = list != nullptr && !list->Items.empty() && holds(list->Items, text);
  const bool typed = field != nullptr && !fromList && field->MayBecome(text);
  const int spins = field == nullptr || fromList || typed ? 0 : spinsTo(*field, text);
  if (field != nullptr && !fromList && !typed && spins == 0) return false;
  std::string place = screen.Name();
  for (const Pending& pending : pending_) place += "\n" + pending.line;
  if (!tried_.insert({place, control.Name(), control.Text(), text}).second) return false;
  if (!focus(screen, control)) return false;
  if (spins != 0) {
    spin(*field, spins);
  } else if (choice != nullptr || fromList) {
    act("pick " + control.Name() + " " + wordOf(Trim(text)), [&] { control.Pick(text); });
  } else if (field != nullptr) {
    typeInto(*field, text);
    return field->Text() == text;
  } else {
    act("check " + control.Name() + " " + text, [&] { control.Check(text == "on"); });
  }
  if (control.Text() != text) write("expect " + control.Name() + " " + wordOf(control.Text()));
  return control.Text() == text;
}

void ScriptWriter::Run::press(Screen& screen, std::string_view button) {
  Control* found = screen.Find(button);
  if (found == nullptr || !focus(screen, *found)) return;
  act("press " + found->Name(), [&] { found->Press(); });
  if (forms_.Beeped()) write("expect beep");
}

// ---- Screens ------------------------------------------------------------------------------------

// Choices and check boxes come first, since they change fields; the rows of a table one after the
// other.
std::vector<Control*> ScriptWriter::Run::inOrder(const Screen& screen) {
  std::vector<Control*> controls;
  for (Control* control : screen.Controls()) {
    const bool isPage = holds(kPages, control->Name());
    if (isEdited(*control) && !isPage && !isOfEntry(screen, *control)) controls.push_back(control);
  }
  const auto rank = [](const Control& control) {
    const bool isField = dynamic_cast<const TextField*>(&control) != nullptr;
    return control.Row > 0 ? 1 + control.Row : isField ? 1 : 0;
  };
  std::stable_sort(
      controls.begin(), controls.end(),
      [&](const Control* left, const Control* right) { return rank(*left) < rank(*right); });
  return controls;
}

// Fields that other settings of the project lock keep what was typed before those.
void ScriptWriter::Run::agreeOnLocked(Screen& wanted, Screen& built) {
  for (Control* control : inOrder(built)) {
    const Control* like = wanted.Find(control->Name());
    if (like == nullptr || like->Usable() || !control->Usable()) continue;
    if (control->Text() != like->Text()) set(built, *control, like->Text());
  }
}

void ScriptWriter::Run::agree(Screen& wanted, Screen& built) {
  agreeOnLocked(wanted, built);
  for (int pass = 0; pass < kMaxPasses; ++pass) {
    const std::size_t before = lines_.size();
    for (Control* control : inOrder(built)) {
      const Control* like = wanted.Find(control->Name());
      if (like == nullptr || !like->Usable() || !control->Usable()) continue;
      if (control->Text() == like->Text()) continue;
      const bool changed = set(built, *control, like->Text());
      if (changed && dynamic_cast<TextField*>(control) == nullptr) agreeOnLocked(wanted, built);
    }
    if (lines_.size() == before) return;
  }
}

void ScriptWriter::Run::open(Opener& opener, Screen& built, Opener& like) {
  const Opener::Which& which = like.ForWhich();
  built.MoveFocus(nullptr);
  both(
      "open " + like.Opens() + (which.value.empty() ? "" : " " + wordOf(which.value)),
      [&] { opener.Press(); }, [&] { like.Press(); });
}

// Calculators keep what was typed, and hand back a scaling. Some units come from them alone.
void ScriptWriter::Run::calculators(Screen& wanted, Opener& opener, Screen& built, Opener& like) {
  const bool opens = bold_ || canSetScaling(wanted);
  for (std::size_t time = 0; opens && time < kCalculators.size(); ++time) {
    const std::size_t before = lines_.size();
    open(opener, built, like);
    if (lines_.size() == before) break;
    agree(wanted, built);
  }
  const std::string which = like.ForWhich().value;
  const std::string name = which.empty() ? "Units" : "AliasUnits" + which;
  const Control* units = wanted.Find(name);
  const Control* now = built.Find(name);
  if (!bold_ || units == nullptr || now == nullptr) return;
  for (const std::string_view calculator : kCalculators) {
    if (now->Text() == units->Text() || !like.Usable()) return;
    onlyCalculator_ = calculator;
    open(opener, built, like);
    onlyCalculator_ = {};
    agree(wanted, built);
  }
}

void ScriptWriter::Run::openers(Screen& wanted, Screen& built) {
  for (Opener* opener : std::vector(wanted.Openers())) {
    auto* like = dynamic_cast<Opener*>(built.Find(opener->Name()));
    if (holds(kAids, opener->Opens()) || like == nullptr) continue;
    if (!onlyCalculator_.empty() && opener->Opens() != onlyCalculator_) continue;
    if (!opener->Usable() || !like->Usable()) continue;
    if (opener->Opens() == kSolveList) {
      calculators(wanted, *opener, built, *like);
    } else {
      open(*opener, built, *like);
    }
    if (built.Result() != ModalResult::kNone) return;
  }
}

void ScriptWriter::Run::switchOn(std::string_view box, Screen& wanted, Screen& built) {
  wanted.Find(box)->Check(true);
  Control* like = built.Find(box);
  if (like->Text() == "on" || !focus(built, *like)) return;
  act("check " + like->Name() + " on", [&] { like->Check(true); });
}

// The controls that make the entry `text`.
void ScriptWriter::Run::setParts(const EntryList& row, const std::string& text,
                                 const Screen& wanted, Screen& built) {
  for (const std::string_view part : row.parts) {
    const Control* source = wanted.Find(part);
    Control* target = built.Find(part);
    if (part.empty() || source == nullptr || target == nullptr || !target->Usable()) continue;
    const std::string value = part.starts_with("LevelVar") ? text : source->Text();
    if (target->Text() != value) set(built, *target, value);
  }
}

void ScriptWriter::Run::entries(const EntryList& row, Screen& wanted, Screen& built) {
  auto* like = dynamic_cast<Choice*>(wanted.Find(row.list));
  auto* list = dynamic_cast<Choice*>(built.Find(row.list));
  if (like == nullptr || list == nullptr || !list->Usable()) return;
  const auto missing = [&](const std::string& text) {
    return std::none_of(list->Items.begin(), list->Items.end(),
                        [&](const Choice::Item& item) { return item.Text == text; });
  };
  for (std::size_t at = 0; at < like->Items.size(); ++at) {
    const std::string text = like->Items[at].Text;
    if (!missing(text)) continue;
    tried_.clear();  // the parts start anew
    like->ClickAt(static_cast<int>(at));
    if (!row.edit.empty()) wanted.Find(row.edit)->Press();
    if (!row.mode.empty()) switchOn(row.mode, wanted, built);
    setParts(row, text, wanted, built);
    press(built, row.add);
    if (missing(text)) return;
  }
}

// Screens show one table or one CAN item at a time.
void ScriptWriter::Run::pages(Screen& wanted, Screen& built) {
  for (const std::string_view name : kPages) {
    auto* like = dynamic_cast<Choice*>(wanted.Find(name));
    auto* page = dynamic_cast<Choice*>(built.Find(name));
    if (like == nullptr || page == nullptr) continue;
    while (name == "Item" && page->Items.size() < like->Items.size()) {
      const std::size_t count = page->Items.size();
      press(built, "Add");
      if (page->Items.size() == count) break;
    }
    const std::size_t count = std::min(like->Items.size(), page->Items.size());
    for (std::size_t at = 0; at < count; ++at) {
      const int index = static_cast<int>(at);
      if (!like->Usable() || !page->Usable()) break;
      if (!like->ClickAt(index) || !built.MoveFocus(page)) continue;
      pending_.push_back(
          {"pick " + page->Name() + " " + wordOf(Trim(page->Items[at].Text)), false});
      if (page->ClickAt(index)) {
        agree(wanted, built);
        openers(wanted, built);
        agree(wanted, built);
      }
      pending_.pop_back();
    }
    return;
  }
  openers(wanted, built);
}

void ScriptWriter::Run::visit(Screen& wanted, Screen& built) {
  agree(wanted, built);
  if (built.Name() == onlyCalculator_ || built.Name() == doneAt_) flush();
  for (const EntryList& row : kEntryLists) {
    if (row.screen == built.Name()) entries(row, wanted, built);
  }
  pages(wanted, built);
  if (built.Result() == ModalResult::kNone) agree(wanted, built);
}

// By Done when it was opened in the script, too.
void ScriptWriter::Run::leave(Screen& built, bool isWritten) {
  if (!isWritten) {
    forms_.Agree(false);
    built.Cancel();
    forms_.Agree(true);
    return;
  }
  --depth_;
  if (built.Result() != ModalResult::kNone) return;
  built.MoveFocus(nullptr);
  end(built);
}

void ScriptWriter::Run::both(const std::string& open, const std::function<void()>& openWanted,
                             const std::function<void()>& openBuilt) {
  const std::size_t first = pending_.size();
  pending_.push_back({open, false});
  wantedHost_.Next = [&](Screen& wanted) {
    wantedOpen_.push_back(&wanted);
    builtHost_.Next = [&](Screen& built) {
      for (const WriterForms::Box& box : forms_.Boxes()) {
        pending_.push_back({"expect box " + wordOf(box.title), false});
      }
      visit(wanted, built);
      leave(built, pending_[first].written);
    };
    forms_.StartAction();
    openBuilt();
    // Some boxes come after the screen.
    if (pending_[first].written) writeInforming();
    builtHost_.Next = nullptr;
    wantedOpen_.pop_back();
    wanted.Cancel();
  };
  openWanted();
  wantedHost_.Next = nullptr;
  pending_.resize(first);
}

void ScriptWriter::Run::writeBoxes() {
  const auto type = [&](std::string_view name, const std::string& text, const std::string& now) {
    if (text != now) write("type " + std::string(name) + " " + wordOf(text));
  };
  type("txtOper", wanted_.txtOper(), built_.txtOper());
  type("txtIDNum", wanted_.txtIDNum(), built_.txtIDNum());
  built_.txtOper(wanted_.txtOper());
  built_.txtIDNum(wanted_.txtIDNum());
  built_.KeepTextBoxes();
}

void ScriptWriter::Run::writeScreens() {
  for (const std::string_view name : MainScreenNames()) {
    const int button = ButtonOfScreen(name);
    if (button < 0 || !wanted_.MainButtons().Enabled(button)) continue;
    if (!built_.MainButtons().Enabled(button)) continue;
    const bool atStart = lines_.empty();
    const std::size_t before = lines_.size();
    both(
        "open " + std::string(name), [&] { wanted_.Click(button); }, [&] { built_.Click(button); });
    if (!atStart && lines_.size() > before) lines_.insert(before, "\n");
  }
}

Keys ScriptWriter::Run::built() {
  return keysOf(ORVUS_GENFILE::ProjectFileText(built_.Store(), {}));
}

// The number of keys that differ.
std::size_t ScriptWriter::Run::differing() { return unsetKeys(keys_, built()).size(); }

// Writes the lines of an attempt, and takes them back if it fails or no fewer keys differ then.
void ScriptWriter::Run::keepIfBetter(const std::function<bool()>& attempt) {
  const std::string lines = lines_;
  const std::size_t least = differing();
  const auto before = std::make_unique<ProjectStore>(built_.Store());
  if (attempt() && differing() < least) return;
  built_.PutBack(*before, built_.Origin());
  lines_ = lines;
}

// Some screens store values of their own accord when they are left by Done.
void ScriptWriter::Run::settle() {
  for (const std::string_view name : MainScreenNames()) {
    const int button = ButtonOfScreen(name);
    if (button < 0 || !built_.MainButtons().Enabled(button)) continue;
    keepIfBetter([&] {
      ModalResult result = ModalResult::kNone;
      builtHost_.Next = [&](Screen& screen) {
        screen.Done();
        result = screen.Result();
      };
      forms_.StartAction();
      built_.Click(button);
      write("open " + std::string(name));
      write("done");
      return result == ModalResult::kDone && forms_.Boxes().empty();
    });
  }
}

// Until nothing more can be set.
void ScriptWriter::Run::writeRounds() {
  for (int round = 0; round < kMaxRounds; ++round) {
    const std::size_t before = lines_.size();
    tried_.clear();
    writeScreens();
    if (lines_.size() == before) return;
  }
}

bool ScriptWriter::Run::writeBoldRounds() {
  bold_ = true;
  writeRounds();
  bold_ = false;
  return true;
}

void ScriptWriter::Run::startAnew() {
  lines_.clear();
  built_.PutBack(*new_, built_.Origin());
  writeBoxes();
}

bool ScriptWriter::Run::writeDetour(const Detour& detour) {
  if (detour.change != nullptr) {
    const auto wanted = std::make_unique<ProjectStore>(wanted_.Store());
    const auto other = std::make_unique<ProjectStore>(wanted_.Store());
    detour.change(*other);
    wanted_.PutBack(*other, wanted_.Origin());
    if (detour.fromNew) startAnew();
    writeRounds();
    if (detour.fromNew) writeBoldRounds();
    wanted_.PutBack(*wanted, wanted_.Origin());
  }
  doneAt_ = detour.doneAt;
  writeRounds();
  doneAt_ = {};
  return true;
}

void ScriptWriter::Run::writeDetours() {
  for (const Detour& detour : Detours()) {
    const std::vector<UnsetKey> unset = unsetKeys(keys_, built());
    const bool helps = std::any_of(unset.begin(), unset.end(), [&](const UnsetKey& row) {
      return row.key.starts_with(detour.keys);
    });
    const bool pays = !detour.fromNew || unset.size() <= kMaxUnset;
    if (helps && pays) keepIfBetter([&] { return writeDetour(detour); });
  }
}

WrittenScript ScriptWriter::Run::Write() {
  keys_ = keysOf(ORVUS_GENFILE::ProjectFileText(wanted_.Store(), {}));
  *new_ = built_.Store();
  startAnew();
  writeRounds();
  keepIfBetter([&] { return writeBoldRounds(); });
  writeDetours();
  settle();
  return {lines_, unsetKeys(keys_, built())};
}

void WriterForms::StartAction() {
  boxes_.clear();
  beeped_ = false;
}

Answer WriterForms::ShowBox(const platform::MessageBox& box) {
  const auto answer = [&] {
    switch (box.buttons) {
      case platform::Buttons::kOk:
        return Answer::kOk;
      case platform::Buttons::kOkCancel:
        return agrees_ ? Answer::kOk : Answer::kCancel;
      case platform::Buttons::kOverwriteCancel:
        return Answer::kCancel;
      default:
        return agrees_ ? Answer::kYes : Answer::kNo;
    }
  }();
  boxes_.push_back({box.title, box.text, answer, box.buttons != platform::Buttons::kOk});
  return answer;
}

ScriptWriter::ScriptWriter(Ostrand& wanted, WriterForms& wantedForms, Ostrand& built,
                           WriterForms& builtForms)
    : run_(std::make_unique<Run>(wanted, built, builtForms)) {
  wantedForms.Agree(false);
  builtForms.Agree(true);
}

ScriptWriter::~ScriptWriter() = default;

WrittenScript ScriptWriter::Write() { return run_->Write(); }

}  // namespace ostrand
