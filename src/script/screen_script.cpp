#include "script/screen_script.h"

#include <algorithm>
#include <array>
#include <utility>

#include "controls/choice.h"
#include "platform/box.h"
#include "screens/setup_screens.h"
#include "script/screen_catalog.h"
#include "script/screen_text.h"
#include "text/codepage.h"
#include "text/letters.h"
#include "text/nearest.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kEllipsis = "...";
constexpr std::size_t kMaxLine = 10000;  // bytes

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

// The available items, for an item that does not exist: ", but" and the items, if any, and those
// that were probably meant.
std::string butItems(const Choice& choice, std::string_view wanted) {
  const std::string items = ItemsText(choice);
  std::vector<std::string_view> texts;
  for (const Choice::Item& item : choice.Items) texts.push_back(Trim(item.Text));
  return items.empty() ? "" : ", but" + items + DidYouMean(wanted, texts);
}

// The error for a control that a screen does not have.
std::string noControl(const Screen& screen, std::string_view name) {
  std::vector<std::string_view> names;
  for (const Control* control : screen.Controls()) names.push_back(control->Name());
  return screen.Name() + " has no control " + std::string(name) + DidYouMean(name, names);
}

// The first control character of a line, which is not a tab; -1 for none.
int controlCharacter(std::string_view line) {
  for (const char letter : line) {
    const auto code = static_cast<unsigned char>(letter);
    if ((code < 0x20 && letter != '\t') || code == 0x7F) return code;
  }
  return -1;
}

// The first character of a text in UTF-8 that `converted`, its Windows-1252, does not have, in
// quotes; empty for none.
std::string lostCharacter(std::string_view utf8, std::string_view converted) {
  for (const char byte : converted) {
    const std::size_t length = std::max<std::size_t>(Utf8Length(utf8), 1);
    if (byte == '?' && utf8.front() != '?') return Quoted(utf8.substr(0, length));
    utf8.remove_prefix(length);
  }
  return {};
}

// A control's name and caption; the caption has "&" before the access key.
std::string named(const Control& control) {
  std::string caption = control.Caption;
  std::erase(caption, '&');
  return caption.empty() ? control.Name() : control.Name() + " (" + caption + ")";
}

// ": type CONTROL TEXT", the first line of the help on an action; empty for none.
std::string usageOf(std::string_view name) {
  for (std::string_view help = ScriptHelp(); !help.empty();) {
    const std::string_view line = TakeLine(help);
    if (!line.starts_with("  ") || !SameText(Before(Trim(line), " "), name)) continue;
    return ": " + std::string(Before(Trim(line), "  "));
  }
  return {};
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
  if (!failForBox()) failForObjection();
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
  const std::string remedy = forms_.Remedy();
  const std::string where = actionScreen_.empty() ? "" : actionScreen_ + ": ";
  fail(where + box + (remedy.empty() ? "" : "\r\nTo answer it, write before this line: " + remedy));
  return true;
}

bool ScreenScript::failForObjection() {
  const Objection* first = objections_.First();
  if (first == nullptr || !failure_.empty()) return false;
  line_ = first->line;
  failure_ = first->text;
  return true;
}

void ScreenScript::ShowModal(Screen& screen) {
  play(&screen);
  // A script that fails or ends leaves no screen open.
  if (screen.Result() == ModalResult::kNone) {
    if (!failForBox()) failForObjection();
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
  static constexpr std::array<Verb, 15> kVerbs = {{
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
      {"show", 0, 1, false, &ScreenScript::show},
  }};
  Words words;
  if (!readWords(line, words) || words.empty()) return;
  const std::string& name = words.front().text;
  const auto verb = std::find_if(kVerbs.begin(), kVerbs.end(),
                                 [&](const Verb& row) { return SameText(row.name, name); });
  if (verb == kVerbs.end()) {
    std::array<std::string_view, kVerbs.size()> names;
    std::transform(kVerbs.begin(), kVerbs.end(), names.begin(),
                   [](const Verb& row) { return row.name; });
    return fail("there is no action " + name + DidYouMean(name, names));
  }
  const std::size_t count = words.size() - 1;
  if (count < verb->min || count > verb->max) {
    return fail(name + " takes " + (count < verb->min ? "more" : "fewer") + " words" +
                usageOf(name));
  }
  if (verb->onScreen && screen == nullptr) return fail("no screen is open");
  // Names of files stay unchanged.
  if (verb->play != &ScreenScript::choose && !convert(words)) return;
  const bool isAction = verb->play != &ScreenScript::expect &&
                        verb->play != &ScreenScript::answer && verb->play != &ScreenScript::show;
  if (isAction) {
    if (failForBox() || failForObjection()) return;
    forms_.StartAction();
    actionLine_ = line_;
    actionScreen_ = screen == nullptr ? std::string() : screen->Name();
  }
  (this->*verb->play)(screen, words);
  // An answer given in advance expects what it leads to.
  if (isAction && forms_.Answered()) objections_.Clear();
  // Checking it afterwards does not answer a question.
  if (forms_.AskedInVain()) failForBox();
}

// Reports a failure and returns false for a line that is not text.
bool ScreenScript::readWords(std::string_view line, Words& words) {
  if (line.size() > kMaxLine) {
    fail("the line has more than " + NumberText(static_cast<int>(kMaxLine)) + " bytes");
    return false;
  }
  if (const int code = controlCharacter(line); code >= 0) {
    fail("character " + NumberText(code) +
         (code == 0 ? " is not text; a script is in UTF-8" : " is a control character"));
    return false;
  }
  std::optional<Words> read = wordsOf(line);
  if (!read) {
    fail("a quote is not closed");
    return false;
  }
  words = std::move(*read);
  return true;
}

// To the code page of a project. False when it lacks a character, which is a failure.
bool ScreenScript::convert(Words& words) {
  for (Word& word : words) {
    std::string text = Windows1252FromUtf8(word.text);
    const std::string lost = strict_ ? lostCharacter(word.text, text) : std::string();
    if (!lost.empty()) {
      fail("a project can't hold " + lost + ", which is not in Windows-1252");
      return false;
    }
    word.text = std::move(text);
  }
  return true;
}

// ---- What screens do instead --------------------------------------------------------------------

// The help line of the present action; empty if it gave none.
std::string ScreenScript::help() const {
  return forms_.HelpGiven() ? forms_.HelpLine() : std::string();
}

void ScreenScript::object(int line, const Control* control, std::string text, int beepsBefore) {
  if (!strict_) return;
  objections_.Add({line, control == nullptr ? std::string() : control->Name(),
                   forms_.Beeps() > beepsBefore, std::move(text)});
}

// What became of a text that was typed, after it took effect.
void ScreenScript::lookAtTyped(int beepsBefore) {
  const Typed typed = std::exchange(typed_, {});
  if (typed.field == nullptr) return;
  if (!IsAccepted(*typed.field, typed.text, typed.field->Text())) {
    object(typed.line, typed.field, ValueChanged(*typed.field, typed.text, help()), beepsBefore);
  } else if (forms_.Beeps() > beepsBefore) {
    object(typed.line, typed.field,
           typed.field->Name() + " beeps at " + Quoted(typed.text) + Because(help()), beepsBefore);
  }
}

bool ScreenScript::moveFocus(Screen& screen, Control* to) {
  const int beeps = forms_.Beeps();
  const bool leaves = screen.Focused() != to;
  if (!hands_->MoveFocus(screen, to)) return false;
  if (leaves) lookAtTyped(beeps);
  return true;
}

// A typed text takes effect in its field, which keeps the focus.
void ScreenScript::enterTyped() {
  if (typed_.field == nullptr) return;
  TextField& field = *typed_.field;
  const int beeps = forms_.Beeps();
  hands_->Enter(field);
  lookAtTyped(beeps);
}

// ---- Actions ------------------------------------------------------------------------------------

// The control with that name, enabled and focused; otherwise null and a failure.
Control* ScreenScript::usable(Screen* screen, const Word& name) {
  Control* found = screen->Find(name.text);
  if (found == nullptr) {
    fail(noControl(*screen, name.text));
  } else if (!found->Visible) {
    fail(found->Name() + " is hidden" + Because(found->WhyDisabled));
  } else if (!found->Enabled) {
    fail(found->Name() + " is disabled" + Because(found->WhyDisabled));
  } else if (!moveFocus(*screen, found)) {
    fail(keptFocus(*screen));
  } else if (!found->Usable()) {
    // Text accepted on the way has changed the screen.
    fail(found->Name() + " is disabled or hidden now" + Because(found->WhyDisabled));
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
    if (button < 0) {
      return fail("no main button opens " + name + DidYouMean(name, MainScreenNames()));
    }
    if (!control_.MainButtons().Enabled(button)) {
      return fail("the main button of " + name + " is disabled" +
                  Because(MissingForButton(button, control_.Store().Config)));
    }
    return control_.Click(button);
  }
  if (!moveFocus(*screen, nullptr)) return fail(keptFocus(*screen));
  std::vector<std::string_view> names;
  for (const Opener* opener : screen->Openers()) names.push_back(opener->Opens());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  std::string whyNot = screen->Name() + " does not open " + name + DidYouMean(name, names);
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
  if (found == nullptr) return;
  const std::string& text = words[2].text;
  const int beeps = forms_.Beeps();
  if (!hands_->Type(*found, text)) return fail(found->Name() + " cannot be typed into");
  auto& field = dynamic_cast<TextField&>(*found);
  typed_ = {&field, field.Text(), line_};
  if (IsAccepted(field, text, field.Text())) return;
  const bool beeped = forms_.Beeps() > beeps;
  object(line_, found, beeped ? KeyRefused(field, text, help()) : ValueChanged(field, text, help()),
         beeps);
}

void ScreenScript::typeOnMainScreen(const Words& words) {
  const MainBox* box = mainBox(words[1].text);
  if (box == nullptr) return fail("no screen is open; the main screen has txtOper and txtIDNum");
  control_.SetFocus(box->focus);
  const std::string& text = words[2].text;
  if (text.size() > Ostrand::kMaxBoxLetters) forms_.Beep();
  (control_.*box->type)(text);
  if ((control_.*box->text)() == text) return;
  object(line_, nullptr,
         std::string(box->name) + ": " + Quoted(text) + " became " +
             Quoted((control_.*box->text)()) + ": it takes " +
             NumberText(static_cast<int>(Ostrand::kMaxBoxLetters)) + " characters, no \"[\"",
         0);
}

void ScreenScript::key(Screen* screen, const Words& words) {
  auto* field = dynamic_cast<TextField*>(screen->Focused());
  if (field == nullptr) return fail("no field has the focus");
  if (SameText(words[0].text, "escape")) {
    typed_ = {};
    return hands_->Escape(*field);
  }
  const std::string text = field->Text();
  const int beeps = forms_.Beeps();
  if (SameText(words[0].text, "leave")) {
    if (moveFocus(*screen, nullptr)) return;
  } else {
    hands_->Enter(*field);
    if (field->Text() != text || forms_.Beeps() == beeps) return lookAtTyped(beeps);
  }
  object(line_, nullptr, keptFocus(*screen), beeps);
}

void ScreenScript::pick(Screen* screen, const Words& words) {
  if (Control* found = usable(screen, words[1])) pickItem(*found, words[2].text);
}

void ScreenScript::pickItem(Control& control, const std::string& item) {
  const auto* choice = dynamic_cast<const Choice*>(&control);
  const auto isPicked = [&] { return SameText(Trim(control.Text()), Trim(item)); };
  // Some items count each click: a script that is played twice would then give another project.
  if (strict_ && choice != nullptr && control.Kind() != ControlKind::kTable && isPicked()) return;
  const int beeps = forms_.Beeps();
  if (hands_->Pick(control, item)) {
    typed_ = {};
    // The rows of a table also have short names.
    if (isPicked() || control.Kind() == ControlKind::kTable) return;
    return object(line_, &control,
                  control.Name() + ": " + Quoted(item) + " became " + Quoted(control.Text()) +
                      Because(help()),
                  beeps);
  }
  const std::string wanted = Quoted(item);
  if (choice == nullptr) {
    fail(control.Name() + " is not a list");
  } else if (const Choice::Item* found = choice->Find(item)) {
    const std::string_view state = found->Visible ? " is disabled" : " is not offered";
    fail(wanted + " of " + control.Name() + std::string(state) + Because(found->ToolTip));
  } else {
    fail(control.Name() + " has no " + wanted + " to pick" + butItems(*choice, item));
  }
}

void ScreenScript::check(Screen* screen, const Words& words) {
  const bool on = SameText(words[2].text, "on");
  if (!on && !SameText(words[2].text, "off")) return fail("check takes on or off");
  Control* found = usable(screen, words[1]);
  if (found == nullptr) return;
  const int beeps = forms_.Beeps();
  if (!hands_->Check(*found, on)) return fail(found->Name() + " is not a check box");
  if (SameText(found->Text(), words[2].text)) return;
  object(line_, found, found->Name() + " stays " + found->Text() + Because(help()), beeps);
}

void ScreenScript::spin(Screen* screen, const Words& words) {
  const bool up = SameText(words[2].text, "up");
  if (!up && !SameText(words[2].text, "down")) return fail("spin takes up or down");
  const std::optional<std::int16_t> times = words.size() > 3 ? ToInt16(words[3].text) : 1;
  if (!times || *times < 1) return fail("a spin takes a number of times from 1 to 32767");
  for (int time = 0; time < *times && failure_.empty(); ++time) {
    Control* found = usable(screen, words[1]);
    if (found == nullptr) return;
    if (typed_.field == found) enterTyped();
    const std::string before = found->Text();
    const int beeps = forms_.Beeps();
    if (!hands_->Spin(*found, up)) return fail(found->Name() + " has no spin buttons");
    if (found->Text() != before) continue;
    std::string text = found->Name() + ": spin " + words[2].text + " changes nothing";
    if (time > 0) text += " after " + NumberText(time) + " of " + NumberText(*times);
    return object(line_, found, text + Because(WhySpinStops(*found, up, help())), beeps);
  }
}

void ScreenScript::press(Screen* screen, const Words& words) {
  Control* found = usable(screen, words[1]);
  if (found == nullptr) return;
  const int beeps = forms_.Beeps();
  if (!hands_->Press(*found)) return fail(found->Name() + " is not a button");
  if (forms_.Beeps() == beeps) return;
  object(line_, nullptr, found->Name() + " beeps" + Because(help()), beeps);
}

// The script must acknowledge a screen that stays open: by the box, beep or help line that it
// expects next, or by continuing on that screen.
void ScreenScript::end(Screen* screen, const Words& words) {
  const std::string help = forms_.HelpLine();
  const bool done = SameText(words[0].text, "done");
  const int beeps = forms_.Beeps();
  if (done) {
    const bool holds = typed_.field != nullptr && !moveFocus(*screen, nullptr);
    if (!holds) hands_->Done(*screen);
  } else {
    typed_ = {};
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
    refusal_ += ": its Done is disabled" + Because(screen->WhyNotDone);
  } else if (forms_.HelpLine() != help) {
    refusal_ += ": " + forms_.HelpLine();
  }
  object(line_, nullptr, refusal_, beeps);
}

void ScreenScript::show(Screen* screen, const Words& words) {
  std::string text;
  if (words.size() == 1) {
    text = screen == nullptr ? MainScreenText(control_) : ScreenText(*screen);
  } else if (screen == nullptr) {
    const MainBox* box = mainBox(words[1].text);
    if (box == nullptr) return fail("no screen is open");
    text = std::string(box->name) + ": " + Quoted((control_.*box->text)()) + "\r\n";
  } else {
    const Control* found = screen->Find(words[1].text);
    if (found == nullptr) return fail(noControl(*screen, words[1].text));
    text = ControlLine(*found);
  }
  if (OnShow) OnShow(text);
}

void ScreenScript::expect(Screen* screen, const Words& words) {
  const Word& what = words[1];
  if (isWord(what, "beep")) {
    if (!forms_.Beeped()) return fail("no beep came");
    refusal_.clear();
    objections_.ExpectBeep();
  } else if (isWord(what, "box")) {
    expectBox(words);
  } else if (words.size() < 3) {
    fail("expect takes more words" + usageOf("expect"));
  } else if (isWord(what, "help")) {
    if (!isAsExpected(forms_.HelpLine(), words[2].text)) {
      return fail("the help line shows " + Quoted(forms_.HelpLine()));
    }
    refusal_.clear();
    objections_.Clear();
  } else {
    expectControl(screen, words);
  }
}

void ScreenScript::expectBox(const Words& words) {
  if (words.size() < 3) return fail("the title of the box is missing");
  const std::optional<ScriptForms::Box> box = forms_.Claim(words[2].text);
  if (!box) return fail("no box " + Quoted(words[2].text) + " came");
  refusal_.clear();
  objections_.Clear();
  if (words.size() > 3 && !isAsExpected(box->text, withBreaks(words[3].text))) {
    fail("the box says " + Quoted(box->text));
  }
}

void ScreenScript::expectControl(Screen* screen, const Words& words) {
  if (screen == nullptr) {
    const MainBox* box = mainBox(words[1].text);
    if (box == nullptr) return fail("no screen is open");
    objections_.Clear();
    return shows(std::string(box->name), (control_.*box->text)(), words[2].text);
  }
  const Control* found = screen->Find(words[1].text);
  if (found == nullptr) return fail(noControl(*screen, words[1].text));
  const Looks looks = {found->Name(), found->Enabled, found->Visible, found->Caption,
                       found->ToolTip};
  const std::span<const Word> rest = std::span(words).subspan(2);
  if (isWord(rest[0], "item") && rest.size() > 1) return expectItem(*found, rest.subspan(1));
  if (expectLooks(looks, rest)) return;
  if (rest.size() > 1) return fail("expect takes fewer words");
  objections_.ExpectValue(looks.name);
  shows(looks.name, found->Text(), rest[0].text);
}

// An item and, with more words, its appearance.
void ScreenScript::expectItem(const Control& control, std::span<const Word> words) {
  const auto* choice = dynamic_cast<const Choice*>(&control);
  if (choice == nullptr) return fail(control.Name() + " has no items");
  const Choice::Item* item = choice->Find(words[0].text);
  if (item == nullptr) {
    return fail(control.Name() + " has no item " + Quoted(words[0].text) +
                butItems(*choice, words[0].text));
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
         "  expect beep | expect help TEXT\n"
         "  show [CONTROL]             prints what it shows, or the whole screen\n"
         "\n"
         "A refused key, a changed value, a spin without effect or a screen that stays open ends\n"
         "the script, unless the next lines expect it.\n";
}

}  // namespace ostrand
