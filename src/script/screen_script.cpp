#include "script/screen_script.h"

#include <algorithm>
#include <array>

#include "controls/choice.h"
#include "platform/box.h"
#include "screens/setup_screens.h"
#include "script/screen_catalog.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kEllipsis = "...";

// "\n" in a script is a line break.
std::string withBreaks(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::string_view part = Before(text, "\\n");
    result += part;
    if (part.size() == text.size()) break;
    result += "\r\n";
    text.remove_prefix(part.size() + 2);
  }
  return result;
}

// Whether a text is what a script expects; an expectation may end in "...".
bool isAsExpected(std::string_view text, std::string_view expected) {
  if (!expected.ends_with(kEllipsis)) return text == expected;
  return text.starts_with(expected.substr(0, expected.size() - kEllipsis.size()));
}

// The available items, for an item that does not exist: ", but" and the items, if any.
std::string butItems(const Choice& choice) {
  const std::string items = ItemsText(choice);
  return items.empty() ? "" : ", but" + items;
}

// A control's name and caption; the caption has "&" before the access key.
std::string named(const Control& control) {
  std::string caption = control.Caption;
  std::erase(caption, '&');
  return caption.empty() ? control.Name() : control.Name() + " (" + caption + ")";
}

// The text boxes of the main screen.
struct MainBox {
  std::string_view name;
  Focus focus;
  const std::string& (Ostrand::*text)() const;
  void (Ostrand::*type)(std::string_view text);
};
constexpr std::array<MainBox, 2> kMainBoxes = {{
    {"txtOper", Focus::kOper, &Ostrand::txtOper, &Ostrand::txtOper},
    {"txtIDNum", Focus::kIDNum, &Ostrand::txtIDNum, &Ostrand::txtIDNum},
}};

const MainBox* mainBox(std::string_view name) {
  const auto* found = std::find_if(kMainBoxes.begin(), kMainBoxes.end(),
                                   [&](const MainBox& box) { return SameText(box.name, name); });
  return found == kMainBoxes.end() ? nullptr : found;
}

}  // namespace

// ---- The lines ----------------------------------------------------------------------------------

// States that a script can expect of a control, and of an item of a choice.
struct ScreenScript::Looks {
  std::string name;
  bool enabled;
  bool visible;
  std::string caption;
  std::string tip;
};

struct ScreenScript::Verb {
  std::string_view name;
  std::size_t min;  // number of words after it
  std::size_t max;
  bool onScreen;  // needs an open screen
  void (ScreenScript::*play)(Screen* screen, const Words& words);
};

ScreenScript::ScreenScript(Ostrand& control, ScriptForms& forms, std::string_view text)
    : control_(control), forms_(forms), text_(text), rest_(text_) {
  if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
  ConnectSetupScreens(control, *this);
}

Result<> ScreenScript::Run() {
  play(nullptr);
  failForBox();
  if (failure_.empty()) {
    for (const std::string& title : forms_.Unused()) fail("no box " + Quoted(title) + " came");
  }
  if (failure_.empty()) {
    control_.KeepTextBoxes();  // a script that ends well has its project saved
    return Done{};
  }
  return Error{"line " + NumberText(line_) + ": " + failure_};
}

// A line that fails after a refused `done` or `cancel` was probably meant for another screen.
void ScreenScript::fail(const std::string& why) {
  if (!failure_.empty()) return;
  failure_ = refusal_.empty() ? why : refusal_;
  if (!refusal_.empty()) line_ = refusalLine_;
}

// Fails for an unexpected box, at the line that caused it.
bool ScreenScript::failForBox() {
  const std::string box = forms_.Unforeseen();
  if (box.empty() || !failure_.empty()) return false;
  line_ = actionLine_;
  fail(box);
  return true;
}

void ScreenScript::ShowModal(Screen& screen) {
  play(&screen);
  // A script that fails or ends leaves no screen open.
  if (screen.Result() == ModalResult::kNone) {
    failForBox();
    fail(screen.Name() + " is still open at the end of the script");
    screen.End(ModalResult::kCancel);
  }
}

// Plays the lines for `screen`, or those for the main buttons when it is null.
void ScreenScript::play(Screen* screen) {
  while (failure_.empty() && !rest_.empty()) {
    ++line_;
    playLine(screen, TakeLine(rest_));
    if (screen != nullptr && screen->Result() != ModalResult::kNone) return;
  }
}

// Words are separated by blanks; a word in double quotes may contain blanks, and "" in it is a
// quote. A line that begins with "#" is a comment. Nothing for an unclosed quote.
std::optional<ScreenScript::Words> ScreenScript::wordsOf(std::string_view line) {
  Words words;
  std::size_t at = 0;
  while (at < line.size()) {
    if (line[at] == ' ' || line[at] == '\t') {
      ++at;
      continue;
    }
    if (line[at] == '#' && words.empty()) break;
    Word word{{}, line[at] == '"'};
    if (!word.quoted) {
      const std::size_t end = std::min(line.find_first_of(" \t", at), line.size());
      word.text = line.substr(at, end - at);
      at = end;
    } else {
      for (++at;; ++at) {
        if (at == line.size()) return std::nullopt;
        if (line[at] != '"') {
          word.text += line[at];
        } else if (at + 1 < line.size() && line[at + 1] == '"') {
          word.text += '"';
          ++at;
        } else {
          ++at;
          break;
        }
      }
    }
    words.push_back(std::move(word));
  }
  return words;
}

void ScreenScript::playLine(Screen* screen, std::string_view line) {
  static constexpr std::array<Verb, 14> kVerbs = {{
      {"open", 1, 2, false, &ScreenScript::open},
      {"answer", 2, 2, false, &ScreenScript::answer},
      {"choose", 1, 1, false, &ScreenScript::choose},
      {"type", 2, 2, false, &ScreenScript::type},
      {"enter", 0, 0, true, &ScreenScript::key},
      {"escape", 0, 0, true, &ScreenScript::key},
      {"leave", 0, 0, true, &ScreenScript::key},
      {"pick", 2, 2, true, &ScreenScript::pick},
      {"check", 2, 2, true, &ScreenScript::check},
      {"spin", 2, 3, true, &ScreenScript::spin},
      {"press", 1, 1, true, &ScreenScript::press},
      {"done", 0, 0, true, &ScreenScript::end},
      {"cancel", 0, 0, true, &ScreenScript::end},
      {"expect", 1, 5, false, &ScreenScript::expect},
  }};
  std::optional<Words> words = wordsOf(line);
  if (!words) return fail("a quote is not closed");
  if (words->empty()) return;
  const std::string& name = words->front().text;
  const auto verb = std::find_if(kVerbs.begin(), kVerbs.end(),
                                 [&](const Verb& row) { return SameText(row.name, name); });
  if (verb == kVerbs.end()) return fail("there is no action " + name);
  const std::size_t count = words->size() - 1;
  if (count < verb->min || count > verb->max) {
    return fail(name + " takes " + (count < verb->min ? "more" : "fewer") + " words");
  }
  if (verb->onScreen && screen == nullptr) return fail("no screen is open");
  // Names of files stay unchanged.
  if (verb->play != &ScreenScript::choose) {
    for (Word& word : *words) word.text = Windows1252FromUtf8(word.text);
  }
  if (verb->play != &ScreenScript::expect && verb->play != &ScreenScript::answer) {
    if (failForBox()) return;
    forms_.StartAction();
    actionLine_ = line_;
  }
  (this->*verb->play)(screen, *words);
  // Checking it afterwards does not answer a question.
  if (forms_.AskedInVain()) failForBox();
}

// The control with that name, enabled and focused; otherwise null and a failure.
Control* ScreenScript::usable(Screen* screen, const Word& name) {
  Control* found = screen->Find(name.text);
  if (found == nullptr) {
    fail(screen->Name() + " has no control " + name.text);
  } else if (!found->Visible) {
    fail(found->Name() + " is hidden");
  } else if (!found->Enabled) {
    fail(found->Name() + " is disabled");
  } else if (!hands_->MoveFocus(*screen, found)) {
    fail(keptFocus(*screen));
  } else if (!found->Usable()) {
    // Text accepted on the way has changed the screen.
    fail(found->Name() + " is disabled or hidden now");
  } else {
    refusal_.clear();
    return found;
  }
  return nullptr;
}

// Why the focus did not move.
std::string ScreenScript::keptFocus(const Screen& screen) {
  const Control& field = *screen.Focused();
  return named(field) + " keeps the focus, since it can't take " + Quoted(field.Text());
}

void ScreenScript::open(Screen* screen, const Words& words) {
  const std::string& name = words[1].text;
  const std::string argument = words.size() > 2 ? words[2].text : "";
  if (screen == nullptr) {
    if (openOptions(name)) return;
    const int button = ButtonOfScreen(name);
    if (button < 0) return fail("no main button opens " + name);
    if (!control_.MainButtons().Enabled(button)) {
      return fail("the main button of " + name + " is disabled");
    }
    return control_.Click(button);
  }
  if (!hands_->MoveFocus(*screen, nullptr)) return fail(keptFocus(*screen));
  std::string whyNot = screen->Name() + " does not open " + name;
  for (Opener* opener : screen->Openers()) {
    if (!SameText(opener->Opens(), name)) continue;
    whyNot = name + " can't be opened now";
    if (!opener->IsFor(argument)) continue;
    if (opener->Usable()) return static_cast<void>(hands_->Press(*opener));
    if (!opener->WhyDisabled.empty()) whyNot += ": " + opener->WhyDisabled;
    break;
  }
  fail(whyNot);
}

bool ScreenScript::openOptions(std::string_view name) {
  for (const OptionScreen& row : kOptionScreens) {
    if (!SameText(row.name, name)) continue;
    openedOptions_ = true;
    control_.ShowOptions(row.option);
    return true;
  }
  return false;
}

void ScreenScript::answer(Screen*, const Words& words) {
  if (const auto named = AnswerNamed(words[2].text)) return forms_.Prepare(words[1].text, *named);
  fail("an answer is yes, no, cancel or ok");
}

void ScreenScript::choose(Screen*, const Words& words) { forms_.PrepareFile(words[1].text); }

void ScreenScript::type(Screen* screen, const Words& words) {
  if (screen == nullptr) return typeOnMainScreen(words);
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !hands_->Type(*found, words[2].text)) {
    fail(found->Name() + " cannot be typed into");
  }
}

void ScreenScript::typeOnMainScreen(const Words& words) {
  const MainBox* box = mainBox(words[1].text);
  if (box == nullptr) return fail("no screen is open");
  control_.SetFocus(box->focus);
  if (words[2].text.size() > Ostrand::kMaxBoxLetters) forms_.Beep();
  (control_.*box->type)(words[2].text);
}

void ScreenScript::key(Screen* screen, const Words& words) {
  auto* field = dynamic_cast<TextField*>(screen->Focused());
  if (field == nullptr) return fail("no field has the focus");
  if (SameText(words[0].text, "enter")) {
    hands_->Enter(*field);
  } else if (SameText(words[0].text, "escape")) {
    hands_->Escape(*field);
  } else {
    static_cast<void>(hands_->MoveFocus(*screen, nullptr));
  }
}

void ScreenScript::pick(Screen* screen, const Words& words) {
  Control* found = usable(screen, words[1]);
  if (found == nullptr || hands_->Pick(*found, words[2].text)) return;
  const std::string wanted = Quoted(words[2].text);
  const auto* choice = dynamic_cast<const Choice*>(found);
  if (choice == nullptr) {
    fail(found->Name() + " is not a list");
  } else if (choice->Find(words[2].text) != nullptr) {
    fail(wanted + " of " + found->Name() + " is disabled or hidden");
  } else {
    fail(found->Name() + " has no " + wanted + " to pick" + butItems(*choice));
  }
}

void ScreenScript::check(Screen* screen, const Words& words) {
  const bool on = SameText(words[2].text, "on");
  if (!on && !SameText(words[2].text, "off")) return fail("check takes on or off");
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !hands_->Check(*found, on)) fail(found->Name() + " is not a check box");
}

void ScreenScript::spin(Screen* screen, const Words& words) {
  const bool up = SameText(words[2].text, "up");
  if (!up && !SameText(words[2].text, "down")) return fail("spin takes up or down");
  const std::optional<std::int16_t> times = words.size() > 3 ? ToInt16(words[3].text) : 1;
  if (!times || *times < 1) return fail("the number of spins is not valid");
  for (int time = 0; time < *times && failure_.empty(); ++time) {
    Control* found = usable(screen, words[1]);
    if (found != nullptr && !hands_->Spin(*found, up)) fail(found->Name() + " has no spin buttons");
  }
}

void ScreenScript::press(Screen* screen, const Words& words) {
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !hands_->Press(*found)) fail(found->Name() + " is not a button");
}

// The script must acknowledge a screen that stays open: by the box, beep or help line that it
// expects next, or by continuing on that screen.
void ScreenScript::end(Screen* screen, const Words& words) {
  const std::string help = forms_.HelpLine();
  const bool done = SameText(words[0].text, "done");
  if (done) {
    hands_->Done(*screen);
  } else {
    hands_->Cancel(*screen);
  }
  if (screen->Result() != ModalResult::kNone) {
    if (refusalAnswered_) refusal_.clear();
    return;
  }
  // An unexpected box is reported separately.
  if (!forms_.Unforeseen().empty() || !refusal_.empty()) return;
  refusalLine_ = line_;
  refusalAnswered_ = forms_.Answered();
  refusal_ = screen->Name() + " stays open";
  if (done && screen->Focused() != nullptr) {
    refusal_ += ": " + keptFocus(*screen);
  } else if (done && !screen->DoneEnabled) {
    refusal_ += ": its Done is disabled";
  } else if (forms_.HelpLine() != help) {
    refusal_ += ": " + forms_.HelpLine();
  }
}

void ScreenScript::expect(Screen* screen, const Words& words) {
  const Word& what = words[1];
  if (isWord(what, "beep")) {
    if (!forms_.Beeped()) return fail("no beep came");
    refusal_.clear();
  } else if (isWord(what, "box")) {
    expectBox(words);
  } else if (words.size() < 3) {
    fail("cannot expect that of " + what.text);
  } else if (isWord(what, "help")) {
    if (!isAsExpected(forms_.HelpLine(), words[2].text)) {
      return fail("the help line shows " + Quoted(forms_.HelpLine()));
    }
    refusal_.clear();
  } else {
    expectControl(screen, words);
  }
}

void ScreenScript::expectBox(const Words& words) {
  if (words.size() < 3) return fail("the title of the box is missing");
  const std::optional<ScriptForms::Box> box = forms_.Claim(words[2].text);
  if (!box) return fail("no box " + Quoted(words[2].text) + " came");
  refusal_.clear();
  if (words.size() > 3 && !isAsExpected(box->text, withBreaks(words[3].text))) {
    fail("the box says " + Quoted(box->text));
  }
}

void ScreenScript::expectControl(Screen* screen, const Words& words) {
  if (screen == nullptr) {
    const MainBox* box = mainBox(words[1].text);
    if (box == nullptr) return fail("no screen is open");
    return shows(std::string(box->name), (control_.*box->text)(), words[2].text);
  }
  const Control* found = screen->Find(words[1].text);
  if (found == nullptr) return fail(screen->Name() + " has no control " + words[1].text);
  const Looks looks = {found->Name(), found->Enabled, found->Visible, found->Caption,
                       found->ToolTip};
  const std::span<const Word> rest = std::span(words).subspan(2);
  if (isWord(rest[0], "item") && rest.size() > 1) return expectItem(*found, rest.subspan(1));
  if (expectLooks(looks, rest)) return;
  if (rest.size() > 1) return fail("expect takes fewer words");
  shows(looks.name, found->Text(), rest[0].text);
}

// An item and, with more words, its appearance.
void ScreenScript::expectItem(const Control& control, std::span<const Word> words) {
  const auto* choice = dynamic_cast<const Choice*>(&control);
  if (choice == nullptr) return fail(control.Name() + " has no items");
  const Choice::Item* item = choice->Find(words[0].text);
  if (item == nullptr) {
    return fail(control.Name() + " has no item " + Quoted(words[0].text) + butItems(*choice));
  }
  const Looks looks = {Quoted(item->Text) + " of " + control.Name(), item->Enabled, item->Visible,
                       item->Text, item->ToolTip};
  if (words.size() > 1 && !expectLooks(looks, words.subspan(1)))
    fail("cannot expect that of an item");
}

// Whether the words ask for a state, a caption or a tool tip; compares them then.
bool ScreenScript::expectLooks(const Looks& looks, std::span<const Word> words) {
  struct State {
    std::string_view word;
    bool holds;
    std::string_view otherwise;
  };
  const State states[] = {{"enabled", looks.enabled, "disabled"},
                          {"disabled", !looks.enabled, "enabled"},
                          {"shown", looks.visible, "hidden"},
                          {"hidden", !looks.visible, "shown"}};
  if (words.size() == 1) {
    for (const State& state : states) {
      if (!isWord(words[0], state.word)) continue;
      if (!state.holds) fail(looks.name + " is " + std::string(state.otherwise));
      return true;
    }
  } else if (words.size() == 2 && isWord(words[0], "caption")) {
    shows(looks.name + "'s caption", looks.caption, words[1].text);
    return true;
  } else if (words.size() == 2 && isWord(words[0], "tip")) {
    shows(looks.name + "'s tool tip", looks.tip, words[1].text);
    return true;
  }
  return false;
}

void ScreenScript::shows(const std::string& what, const std::string& text,
                         std::string_view expected) {
  if (!isAsExpected(text, withBreaks(expected))) fail(what + " shows " + Quoted(text));
}

// A keyword is written without quotes.
bool ScreenScript::isWord(const Word& word, std::string_view meaning) {
  return !word.quoted && SameText(word.text, meaning);
}

// ---- Help ---------------------------------------------------------------------------------------

std::string_view ScriptHelp() {
  return "A script has one action a line; words with blanks are put in double quotes, and a line\n"
         "that begins with # is a comment.\n"
         "\n"
         "  open SCREEN [WHICH]        of the main buttons, the options or the open screen\n"
         "  type CONTROL TEXT          key by key, replacing the old text\n"
         "  type txtOper|txtIDNum TEXT on the main screen: operator and identification\n"
         "  enter | escape | leave     the typed text takes effect, or not\n"
         "  pick CONTROL ITEM          one of a list or of options\n"
         "  check CONTROL on|off\n"
         "  spin CONTROL up|down [TIMES]\n"
         "  press CONTROL              a button\n"
         "  done | cancel              the two ways out of a screen\n"
         "  answer TITLE yes|no|cancel|ok   to the next box of that title\n"
         "  choose PATH                in the next file dialog, else it is cancelled\n"
         "  expect CONTROL TEXT        what it shows; a text that ends in ... is its beginning\n"
         "  expect CONTROL enabled|disabled|shown|hidden\n"
         "  expect CONTROL caption|tip TEXT\n"
         "  expect CONTROL item ITEM [enabled|disabled|shown|hidden | tip TEXT]\n"
         "  expect box TITLE [TEXT]    raised by the last action; \\n is a line break\n"
         "  expect beep | expect help TEXT\n";
}

}  // namespace ostrand
