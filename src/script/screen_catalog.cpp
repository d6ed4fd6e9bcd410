#include "script/screen_catalog.h"

#include <algorithm>
#include <array>
#include <functional>

#include "controls/list_field.h"
#include "controls/numeric_field.h"
#include "model/defaults.h"
#include "screens/setup_screens.h"
#include "script/script_forms.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kLead =
    "The screens and their controls. Each control has its kind, its script command, the limits of "
    "a\r\n"
    "number, the items of a choice, and in parentheses the text on it or beside it. They are "
    "taken\r\n"
    "from a project with one block of each kind. There are rows for all sensors of a block. "
    "Some\r\n"
    "choices depend on others: a pick that fails lists the current items.\r\n"
    "\r\n";

struct KindRow {
  ControlKind kind;
  std::string_view name;
};
constexpr std::array<KindRow, 13> kKinds = {{
    {ControlKind::kLabel, "label"},
    {ControlKind::kFigure, "figure"},
    {ControlKind::kCode, "code"},
    {ControlKind::kPicture, "picture"},
    {ControlKind::kText, "text     type"},
    {ControlKind::kNumber, "number   type"},
    {ControlKind::kEditList, "text     type"},
    {ControlKind::kDropDown, "choice   pick"},
    {ControlKind::kOptions, "options  pick"},
    {ControlKind::kTable, "table    pick"},
    {ControlKind::kCheck, "check    check"},
    {ControlKind::kLamp, "lamp"},
    {ControlKind::kButton, "button   press"},
}};

// Whether an item is the number after the previous item.
bool follows(const std::string& item, const std::string& before) {
  const std::optional<std::int16_t> number = ToInt16(item);
  const std::optional<std::int16_t> previous = ToInt16(before);
  return number && previous && *number == *previous + 1;
}

// The kind and the actions of a control.
std::string usesOf(const Control& control) {
  std::string text(kKinds[static_cast<std::size_t>(control.Kind())].name);
  if (const auto* number = dynamic_cast<const NumericField*>(&control)) {
    if (number->HasMin()) text += " from " + NumberText(number->Min());
    if (number->HasMax()) text += " to " + NumberText(number->Max());
  }
  if (const auto* field = dynamic_cast<const TextField*>(&control);
      field != nullptr && field->OnSpin) {
    text += ", spin";
  }
  if (const auto* list = dynamic_cast<const ListField*>(&control)) {
    text += ", pick" + ItemsText(list->Items.All());
  }
  if (const auto* choice = dynamic_cast<const Choice*>(&control)) text += ItemsText(*choice);
  if (!control.Caption.empty()) text += "  (" + control.Caption + ")";
  return text;
}

// "Reps1" is the first row of "Reps".
struct RowName {
  std::string stem;
  int number = 0;  // 0 for a name without one
};
RowName rowNameOf(const std::string& name) {
  const std::size_t end = name.find_last_not_of("0123456789") + 1;
  return {name.substr(0, end), ToInt16(name.substr(end)).value_or(0)};
}

// The last row of a run of equal rows from 1; 0 when there is no row 1.
int lastRowAlike(const Screen& screen, const std::string& stem) {
  const Control* first = screen.Find(stem + "1");
  if (first == nullptr) return 0;
  int last = 1;
  for (;; ++last) {
    const Control* next = screen.Find(stem + NumberText(last + 1));
    if (next == nullptr || usesOf(*next) != usesOf(*first)) return last;
  }
}

std::string controlsOf(const Screen& screen) {
  std::string text;
  for (const Control* control : screen.Controls()) {
    std::string name = control->Name();
    const RowName row = rowNameOf(name);
    const int last = row.number > 0 ? lastRowAlike(screen, row.stem) : 0;
    if (row.number > 1 && row.number <= last) continue;
    if (row.number == 1 && last > 1) name += " to " + row.stem + NumberText(last);
    std::string line = "  " + name;
    line.resize(std::max<std::size_t>(line.size() + 1, 32), ' ');
    text += line + usesOf(*control) + "\r\n";
  }
  return text;
}

// Opens everything that a screen can open.
class Walker : public ScreenHost {
 public:
  explicit Walker(const std::function<void(Screen&)>& visit) : visit_(visit) {}

  void ShowModal(Screen& screen) override {
    visit_(screen);
    // Two numbered openers are enough: what a screen shows depends on the kind of a block.
    for (Opener* opener : screen.Openers()) {
      const Opener::Which& which = opener->ForWhich();
      const bool isLater = !which.name.empty() && which.value != "1" && which.value != "2";
      if (opener->Usable() && !isLater) opener->Press();
    }
    screen.End(ModalResult::kCancel);
  }

 private:
  const std::function<void(Screen&)>& visit_;
};

}  // namespace

std::string ItemsText(const Choice& choice) {
  std::vector<std::string> items;
  for (const Choice::Item& item : choice.Items) {
    if (item.Visible) items.emplace_back(Trim(item.Text));
  }
  return ItemsText(items);
}

std::string ItemsText(const std::vector<std::string>& items) {
  constexpr std::size_t kFewest = 4;  // minimum length of a run
  std::string text;
  for (std::size_t at = 0; at < items.size();) {
    std::size_t end = at + 1;
    while (end < items.size() && follows(items[end], items[end - 1])) ++end;
    if (end - at < kFewest) end = at + 1;
    text += " " + Quoted(items[at]);
    if (end - at > 1) text += " to " + Quoted(items[end - 1]);
    at = end;
  }
  return text;
}

void VisitScreens(Ostrand& control, const std::function<void(Screen&)>& visit) {
  Walker walker(visit);
  ConnectSetupScreens(control, walker);
  for (int button = kConfigurationButton; button <= kExciteButton; ++button) {
    if (control.Screens()[button]) control.Screens()[button]();
  }
  for (const OptionScreen& row : kOptionScreens) control.ShowOptions(row.option);
}

std::string_view CatalogLead() { return kLead; }

Catalog::Catalog(Ostrand& control) {
  VisitScreens(control, [&](const Screen& screen) { add(screen); });
}

// The screens that a screen opens depend on who opened it.
void Catalog::add(const Screen& screen) {
  Entry& entry = entryOf(screen);
  for (const Opener* opener : screen.Openers()) {
    const Opener::Which& which = opener->ForWhich();
    std::string line = opener->Opens();
    if (!which.value.empty()) line += " " + (which.name.empty() ? which.value : Upper(which.name));
    if (std::find(entry.opens.begin(), entry.opens.end(), line) == entry.opens.end()) {
      entry.opens.push_back(std::move(line));
    }
  }
}

Catalog::Entry& Catalog::entryOf(const Screen& screen) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.name == screen.Name(); });
  if (found != entries_.end()) return *found;
  std::string title = screen.Name();
  if (!screen.Caption.empty()) title += "  (" + screen.Caption + ")";
  if (ButtonOfScreen(screen.Name()) >= 0) title += ", by its main button";
  Entry entry = {screen.Name(), screen.Caption, title + "\r\n" + controlsOf(screen), {}, {}};
  for (const Control* control : screen.Controls()) entry.controls.push_back(partOf(*control));
  return entries_.emplace_back(std::move(entry));
}

Catalog::Part Catalog::partOf(const Control& control) {
  Part part = {control.Name(), control.Kind(), control.Caption, {}, false, {}, {}, {}};
  const std::string_view kind = kKinds[static_cast<std::size_t>(control.Kind())].name;
  if (const std::size_t blank = kind.rfind(' '); blank != std::string_view::npos) {
    part.action = kind.substr(blank + 1);
  }
  if (const auto* number = dynamic_cast<const NumericField*>(&control)) {
    if (number->HasMin()) part.min = number->Min();
    if (number->HasMax()) part.max = number->Max();
  }
  if (const auto* field = dynamic_cast<const TextField*>(&control)) {
    part.spins = static_cast<bool>(field->OnSpin);
  }
  if (const auto* list = dynamic_cast<const ListField*>(&control)) part.items = list->Items.All();
  if (const auto* choice = dynamic_cast<const Choice*>(&control)) {
    for (const Choice::Item& item : choice->Items) {
      if (item.Visible) part.items.emplace_back(Trim(item.Text));
    }
  }
  return part;
}

bool Catalog::Keep(std::string_view screen) {
  const auto isOther = [&](const Entry& entry) { return !SameText(entry.name, screen); };
  if (std::all_of(entries_.begin(), entries_.end(), isOther)) return false;
  std::erase_if(entries_, isOther);
  return true;
}

std::vector<std::string_view> Catalog::Names() const {
  std::vector<std::string_view> names;
  for (const Entry& entry : entries_) names.push_back(entry.name);
  return names;
}

std::string Catalog::Text() const {
  std::string text;
  for (const Entry& entry : entries_) {
    text += entry.text;
    for (const std::string& line : entry.opens) text += "  open " + line + "\r\n";
    text += "\r\n";
  }
  return text;
}

std::string Catalog::Json() const {
  constexpr auto kOneLine = JsonWriter::Layout::kOneLine;
  JsonWriter json;
  const auto put = [&](std::string_view key, std::string_view text) {
    json.Key(key).Text(Utf8FromWindows1252(text));
  };
  json.BeginArray();
  for (const Entry& entry : entries_) {
    json.BeginObject();
    put("screen", entry.name);
    put("caption", entry.caption);
    json.Key("mainButton").Bool(ButtonOfScreen(entry.name) >= 0);
    json.Key("controls").BeginArray();
    for (const Part& part : entry.controls) {
      const std::string_view kind = kKinds[static_cast<std::size_t>(part.kind)].name;
      json.BeginObject(kOneLine);
      put("name", part.name);
      put("kind", Before(kind, " "));
      put("caption", part.caption);
      if (!part.action.empty()) put("action", part.action);
      if (part.spins) json.Key("spin").Bool(true);
      if (part.min) json.Key("min").Number(*part.min);
      if (part.max) json.Key("max").Number(*part.max);
      if (!part.items.empty()) {
        json.Key("items").BeginArray();
        for (const std::string& item : part.items) json.Text(Utf8FromWindows1252(item));
        json.End();
      }
      json.End();
    }
    json.End().Key("opens").BeginArray(kOneLine);
    for (const std::string& line : entry.opens) json.Text(Utf8FromWindows1252(line));
    json.End().End();
  }
  json.End();
  return json.Take();
}

void MakeCatalogProject(ProjectStore& store) {
  store.Config.TK40MQty = 1;
  store.Config.CanBusQty = 1;
  store.TempBlock.BlockCount = store.VoltBlock.BlockCount = 1;
  store.TK40MBlock.BlockCount = store.PulseBlock[0].BlockCount = 1;
  // Type K has a choice of ranges; a resistance has a separate calculator.
  store.TempBlock[1].TypeNo = store.TK40MBlock[1].TypeNo = ORVUS_TCTYPE_K;
  store.BridgeBlock.BlockCount = 2;
  store.BridgeBlock[2].Style = 4;
  store.TempBlock[1].Reps = store.VoltBlock[1].Reps = store.BridgeBlock[1].Reps = 2;
  store.TK40MBlock[1].Reps = store.PulseBlock[0][1].Reps = 2;
  store.Tables[1].TableOn = kTrue;
  for (int code = kHistogram; code <= kLevelCrossing; ++code) {
    store.VoltBlock[1].Output.OutputSelect[1][code] = 1;
  }
  store.Can.CanCount = 1;
  store.Can.Item[1].Reps = 1;
}

}  // namespace ostrand
