#include "session/screen_script.h"

#include <algorithm>
#include <array>

#include "session/setup_screens.h"
#include "setup/controls/choice.h"
#include "setup/controls/list_field.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using platform::Answer;

struct AnswerWord {
  std::string_view word;
  Answer answer;
};
constexpr std::array<AnswerWord, 4> kAnswers = {{
    {"yes", Answer::kYes},
    {"no", Answer::kNo},
    {"cancel", Answer::kCancel},
    {"ok", Answer::kOk},
}};

constexpr std::string_view kEllipsis = "...";

// "\n" in a script stands for a line break.
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

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace

// ---- The forms ----------------------------------------------------------------------------------

void ScriptForms::Prepare(std::string title, Answer answer) {
  answers_.push_back({std::move(title), answer});
}

void ScriptForms::StartAction() {
  beeped_ = false;
  seen_.clear();
}

Answer ScriptForms::ShowBox(const platform::MessageBox& box) {
  const auto prepared = std::find_if(answers_.begin(), answers_.end(), [&](const Prepared& row) {
    return SameText(row.title, box.title);
  });
  if (prepared != answers_.end()) {
    const Answer answer = prepared->answer;
    answers_.erase(prepared);
    seen_.push_back({box.title, box.text});
    return answer;
  }
  if (box.buttons == platform::Buttons::kOk) {
    told_.push_back({box.title, box.text});
    return Answer::kOk;
  }
  if (unanswered_.empty()) unanswered_ = quoted(box.title) + ": " + box.text;
  return box.buttons == platform::Buttons::kYesNo ? Answer::kNo : Answer::kCancel;
}

std::optional<ScriptForms::Box> ScriptForms::Claim(std::string_view title) {
  for (std::vector<Box>* boxes : {&told_, &seen_}) {
    const auto found = std::find_if(boxes->begin(), boxes->end(),
                                    [&](const Box& box) { return SameText(box.title, title); });
    if (found == boxes->end()) continue;
    Box box = *found;
    boxes->erase(found);
    return box;
  }
  return std::nullopt;
}

std::string ScriptForms::Unforeseen() const {
  if (!unanswered_.empty()) return "no answer to the box " + unanswered_;
  if (told_.empty()) return {};
  return "unexpected box " + quoted(told_.front().title) + ": " + told_.front().text;
}

std::vector<std::string> ScriptForms::Unused() const {
  std::vector<std::string> titles;
  titles.reserve(answers_.size());
  for (const Prepared& row : answers_) titles.push_back(row.title);
  return titles;
}

std::optional<std::string> ScriptForms::takeFile() { return std::exchange(file_, std::nullopt); }

std::optional<std::string> ScriptForms::AskOpen(const platform::FileDialog&) { return takeFile(); }

std::optional<std::string> ScriptForms::AskSave(const platform::FileDialog&) { return takeFile(); }

// ---- The lines ----------------------------------------------------------------------------------

struct ScreenScript::Verb {
  std::string_view name;
  std::size_t least;  // words behind it
  std::size_t most;
  bool onScreen;  // needs an open screen
  void (ScreenScript::*play)(Screen* screen, const Words& words);
};

ScreenScript::ScreenScript(Ostrand& control, ScriptForms& forms, std::string_view text)
    : control_(control), forms_(forms), text_(Windows1252FromUtf8(text)), rest_(text_) {
  ConnectSetupScreens(control, *this);
}

Result<> ScreenScript::Run() {
  play(nullptr);
  failForBox();
  if (failure_.empty()) {
    for (const std::string& title : forms_.Unused()) fail("no box " + quoted(title) + " came");
  }
  if (failure_.empty()) {
    control_.KeepTextBoxes();  // a script that comes to its end is one whose project is saved
    return Done{};
  }
  return Error{"line " + NumberText(line_) + ": " + failure_};
}

void ScreenScript::fail(const std::string& why) {
  if (failure_.empty()) failure_ = why;
}

// Fails for a box that nobody foresaw, at the line that brought it.
bool ScreenScript::failForBox() {
  const std::string box = forms_.Unforeseen();
  if (box.empty() || !failure_.empty()) return false;
  line_ = actionLine_;
  fail(box);
  return true;
}

void ScreenScript::ShowModal(Screen& screen) {
  play(&screen);
  // A script that fails or ends leaves no screen open behind it.
  if (screen.Result() == ModalResult::kNone) {
    fail(screen.Name() + " is still open at the end of the script");
    screen.End(ModalResult::kCancel);
  }
}

// Plays the lines that are for `screen`, or with none those for the main buttons.
void ScreenScript::play(Screen* screen) {
  while (failure_.empty() && !rest_.empty()) {
    ++line_;
    playLine(screen, TakeLine(rest_));
    if (screen != nullptr && screen->Result() != ModalResult::kNone) return;
  }
}

// Words are parted by blanks; one in double quotes may hold blanks, and "" in it is a quote. A line
// that begins with "#" is a comment. Nothing for a quote that is not closed.
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
      {"expect", 1, 3, false, &ScreenScript::expect},
  }};
  const std::optional<Words> words = wordsOf(line);
  if (!words) return fail("a quote is not closed");
  if (words->empty()) return;
  const std::string& name = words->front().text;
  const auto verb = std::find_if(kVerbs.begin(), kVerbs.end(),
                                 [&](const Verb& row) { return SameText(row.name, name); });
  if (verb == kVerbs.end()) return fail("there is no action " + name);
  const std::size_t count = words->size() - 1;
  if (count < verb->least || count > verb->most) {
    return fail(name + " takes " + (count < verb->least ? "more" : "fewer") + " words");
  }
  if (verb->onScreen && screen == nullptr) return fail("no screen is open");
  if (verb->play != &ScreenScript::expect && verb->play != &ScreenScript::answer) {
    if (failForBox()) return;
    forms_.StartAction();
    actionLine_ = line_;
  }
  (this->*verb->play)(screen, *words);
  // Looking at it afterwards answers no question.
  if (forms_.AskedInVain()) failForBox();
}

// The control of that name when it can be used, with the focus on it; null and a failure otherwise.
Control* ScreenScript::usable(Screen* screen, const Word& name) {
  Control* found = screen->Find(name.text);
  if (found == nullptr) {
    fail(screen->Name() + " has no control " + name.text);
  } else if (!found->Visible) {
    fail(found->Name() + " is hidden");
  } else if (!found->Enabled) {
    fail(found->Name() + " is disabled");
  } else if (!screen->MoveFocus(found)) {
    fail(screen->Focused()->Name() + " keeps the focus, since it can't take " +
         quoted(screen->Focused()->Text()));
  } else if (!found->Usable()) {
    // What was taken on the way has changed the screen.
    fail(found->Name() + " is disabled or hidden now");
  } else {
    return found;
  }
  return nullptr;
}

void ScreenScript::open(Screen* screen, const Words& words) {
  const std::string& name = words[1].text;
  const std::string argument = words.size() > 2 ? words[2].text : "";
  if (screen == nullptr) {
    const int button = ButtonOfScreen(name);
    if (button < 0) return fail("no main button opens " + name);
    if (!control_.MainButtons().Enabled(button)) {
      return fail("the main button of " + name + " is disabled");
    }
    return control_.Click(button);
  }
  for (const Screen::Opener& opener : screen->Openers()) {
    if (!SameText(opener.name, name)) continue;
    if (!screen->MoveFocus(nullptr)) return fail("a field keeps the focus");
    if (!opener.open(argument)) fail(name + " can't be opened now");
    return;
  }
  fail(screen->Name() + " does not open " + name);
}

void ScreenScript::answer(Screen*, const Words& words) {
  for (const AnswerWord& row : kAnswers) {
    if (SameText(row.word, words[2].text)) return forms_.Prepare(words[1].text, row.answer);
  }
  fail("an answer is yes, no, cancel or ok");
}

void ScreenScript::choose(Screen*, const Words& words) { forms_.PrepareFile(words[1].text); }

void ScreenScript::type(Screen* screen, const Words& words) {
  if (screen == nullptr) return typeOnMainScreen(words);
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !found->TypeText(words[2].text)) {
    fail(found->Name() + " is not typed into");
  }
}

void ScreenScript::typeOnMainScreen(const Words& words) {
  const MainBox* box = mainBox(words[1].text);
  if (box == nullptr) return fail("no screen is open");
  control_.SetFocus(box->focus);
  if (words[2].text.size() > Ostrand::kMostBoxLetters) forms_.Beep();
  (control_.*box->type)(words[2].text);
}

void ScreenScript::key(Screen* screen, const Words& words) {
  auto* field = dynamic_cast<TextField*>(screen->Focused());
  if (field == nullptr) return fail("the focus is on no field");
  if (SameText(words[0].text, "enter")) {
    static_cast<void>(field->Take());
  } else if (SameText(words[0].text, "escape")) {
    field->Escape();
  } else {
    static_cast<void>(screen->MoveFocus(nullptr));
  }
}

void ScreenScript::pick(Screen* screen, const Words& words) {
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !found->Pick(words[2].text)) {
    fail(found->Name() + " has no " + quoted(words[2].text) + " to pick");
  }
}

void ScreenScript::check(Screen* screen, const Words& words) {
  const bool on = SameText(words[2].text, "on");
  if (!on && !SameText(words[2].text, "off")) return fail("a box is checked on or off");
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !found->Check(on)) fail(found->Name() + " is no check box");
}

void ScreenScript::spin(Screen* screen, const Words& words) {
  const bool up = SameText(words[2].text, "up");
  if (!up && !SameText(words[2].text, "down")) return fail("a spin goes up or down");
  const std::optional<std::int16_t> times = words.size() > 3 ? ToInt16(words[3].text) : 1;
  if (!times || *times < 1) return fail("how many times?");
  for (int time = 0; time < *times && failure_.empty(); ++time) {
    Control* found = usable(screen, words[1]);
    if (found != nullptr && !found->Spin(up)) fail(found->Name() + " has no spin buttons");
  }
}

void ScreenScript::press(Screen* screen, const Words& words) {
  Control* found = usable(screen, words[1]);
  if (found != nullptr && !found->Press()) fail(found->Name() + " is no button");
}

void ScreenScript::end(Screen* screen, const Words& words) {
  if (SameText(words[0].text, "done")) {
    screen->Done();
  } else {
    screen->Cancel();
  }
}

void ScreenScript::expect(Screen* screen, const Words& words) {
  const Word& what = words[1];
  if (!what.quoted && SameText(what.text, "beep")) {
    if (!forms_.Beeped()) fail("no beep came");
  } else if (!what.quoted && SameText(what.text, "box")) {
    expectBox(words);
  } else if (words.size() < 3) {
    fail("expect what of " + what.text + "?");
  } else if (!what.quoted && SameText(what.text, "help")) {
    if (!isAsExpected(forms_.HelpLine(), words[2].text)) {
      fail("the help line shows " + quoted(forms_.HelpLine()));
    }
  } else {
    expectControl(screen, words);
  }
}

void ScreenScript::expectBox(const Words& words) {
  if (words.size() < 3) return fail("which box?");
  const std::optional<ScriptForms::Box> box = forms_.Claim(words[2].text);
  if (!box) return fail("no box " + quoted(words[2].text) + " came");
  if (words.size() > 3 && !isAsExpected(box->text, withBreaks(words[3].text))) {
    fail("the box says " + quoted(box->text));
  }
}

void ScreenScript::expectControl(Screen* screen, const Words& words) {
  if (screen == nullptr) {
    const MainBox* box = mainBox(words[1].text);
    if (box == nullptr) return fail("no screen is open");
    const std::string& text = (control_.*box->text)();
    if (!isAsExpected(text, words[2].text)) {
      fail(std::string(box->name) + " shows " + quoted(text));
    }
    return;
  }
  const Control* found = screen->Find(words[1].text);
  if (found == nullptr) return fail(screen->Name() + " has no control " + words[1].text);
  const Word& what = words[2];
  const auto isWord = [&](std::string_view word) {
    return !what.quoted && SameText(what.text, word);
  };
  const auto state = [&](bool holds, std::string_view otherwise) {
    if (!holds) fail(found->Name() + " is " + std::string(otherwise));
  };
  const auto shows = [&](std::string_view of, const std::string& text, const Word& expected) {
    if (!isAsExpected(text, withBreaks(expected.text))) {
      fail(found->Name() + std::string(of) + " shows " + quoted(text));
    }
  };
  if (isWord("enabled")) return state(found->Enabled, "disabled");
  if (isWord("disabled")) return state(!found->Enabled, "enabled");
  if (isWord("shown")) return state(found->Visible, "hidden");
  if (isWord("hidden")) return state(!found->Visible, "shown");
  if (isWord("caption") && words.size() > 3) return shows("'s caption", found->Caption, words[3]);
  if (isWord("tip") && words.size() > 3) return shows("'s tool tip", found->ToolTip, words[3]);
  shows("", found->Text(), what);
}

// ---- For people ---------------------------------------------------------------------------------

std::string_view ScriptHelp() {
  return "A script has one action a line; words with blanks stand in double quotes, and a line\n"
         "that begins with # is a comment.\n"
         "\n"
         "  open SCREEN [WHICH]        by its main button, or from the screen that is open\n"
         "  type CONTROL TEXT          key by key, in place of what is there\n"
         "  type txtOper|txtIDNum TEXT on the main screen: operator and identification\n"
         "  enter | escape | leave     what was typed takes effect, or does not\n"
         "  pick CONTROL ITEM          one of a list or of options\n"
         "  check CONTROL on|off\n"
         "  spin CONTROL up|down [TIMES]\n"
         "  press CONTROL              a button\n"
         "  done | cancel              the two ways out of a screen\n"
         "  answer TITLE yes|no|cancel|ok   to the next box of that title\n"
         "  choose PATH                in the next file dialog; none is a cancelled one\n"
         "  expect CONTROL TEXT        what it shows; a text that ends in ... is its beginning\n"
         "  expect CONTROL enabled|disabled|shown|hidden\n"
         "  expect CONTROL caption|tip TEXT\n"
         "  expect box TITLE [TEXT]    that came by the last action; \\n is a line break\n"
         "  expect beep | expect help TEXT\n";
}

namespace {

struct KindRow {
  ControlKind kind;
  std::string_view name;
};
constexpr std::array<KindRow, 6> kKinds = {{
    {ControlKind::kLabel, "label"},
    {ControlKind::kText, "text     type"},
    {ControlKind::kNumber, "number   type"},
    {ControlKind::kChoice, "choice   pick"},
    {ControlKind::kCheck, "check    check"},
    {ControlKind::kButton, "button   press"},
}};

// Walks through all screens and writes down what each of them has.
class CatalogHost : public ScreenHost {
 public:
  void ShowModal(Screen& screen) override {
    Entry& entry = entryOf(screen);
    // What a screen opens depends on who opened it, and on the kind of a block.
    for (const Screen::Opener& opener : screen.Openers()) {
      std::string line = "  opens " + opener.name;
      if (!opener.argument.empty()) line += " " + Upper(opener.argument);
      if (std::find(entry.opens.begin(), entry.opens.end(), line) == entry.opens.end()) {
        entry.opens.push_back(std::move(line));
      }
      opener.open("1");
      if (opener.argument == "block") opener.open("2");
    }
    screen.End(ModalResult::kCancel);
  }

  // In the order in which they were met.
  [[nodiscard]] std::string Text() const {
    std::string text;
    for (const Entry& entry : entries_) {
      text += entry.text;
      for (const std::string& line : entry.opens) text += line + "\r\n";
      text += "\r\n";
    }
    return text;
  }

 private:
  struct Entry {
    std::string name;
    std::string text;
    std::vector<std::string> opens;
  };

  Entry& entryOf(const Screen& screen) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      return entry.name == screen.Name();
    });
    if (found != entries_.end()) return *found;
    return entries_.emplace_back(Entry{screen.Name(), textOf(screen), {}});
  }

  static std::string textOf(const Screen& screen) {
    std::string text =
        screen.Name() + (screen.Caption.empty() ? "" : "  (" + screen.Caption + ")") + "\r\n";
    for (const Control* control : screen.Controls()) {
      std::string line = "  " + control->Name();
      line.resize(std::max<std::size_t>(line.size() + 1, 28), ' ');
      line += kKinds[static_cast<std::size_t>(control->Kind())].name;
      if (const auto* field = dynamic_cast<const TextField*>(control);
          field != nullptr && field->OnSpin) {
        line += ", spin";
      }
      if (const auto* list = dynamic_cast<const ListField*>(control)) {
        line += ", pick:" + itemsOf(list->Items);
      }
      if (const auto* choice = dynamic_cast<const Choice*>(control)) {
        std::vector<std::string> items;
        for (const Choice::Item& item : choice->Items) items.push_back(item.Text);
        line += ":" + itemsOf(items);
      }
      text += line + "\r\n";
    }
    return text;
  }

  // The first items; a long list goes on as it began.
  static std::string itemsOf(const std::vector<std::string>& items) {
    constexpr std::size_t kMost = 12;
    std::string text;
    for (std::size_t at = 0; at < std::min(kMost, items.size()); ++at) {
      text += " " + quoted(Trim(items[at]));
    }
    return items.size() > kMost ? text + " ..." : text;
  }

  std::deque<Entry> entries_;  // of which none moves
};

}  // namespace

std::string ScreenCatalog(Ostrand& control) {
  CatalogHost host;
  ConnectSetupScreens(control, host);
  for (int button = kConfigurationButton; button <= kExciteButton; ++button) {
    if (control.Screens()[button]) control.Screens()[button]();
  }
  return host.Text();
}

}  // namespace ostrand
