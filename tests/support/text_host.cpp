#include "text_host.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/numeric_field.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

constexpr std::size_t kCaptionWidth = 28;
constexpr int kRowsShown = 3;

// Without the marks of access keys: "&Add" is "Add", "Fill && Stop" "Fill & Stop".
std::string plain(std::string_view caption) {
  std::string text;
  for (std::size_t at = 0; at < caption.size(); ++at) {
    if (caption[at] == '&' && ++at == caption.size()) break;
    text += caption[at];
  }
  return text;
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

bool hasCaptionInside(const Control& control) {
  switch (control.Kind()) {
    case ControlKind::kCheck:
    case ControlKind::kLamp:
    case ControlKind::kButton:
      return true;
    default:
      return false;
  }
}

std::string options(const Choice& choice) {
  std::string text;
  int at = 0;
  for (const Choice::Item& item : choice.Items) {
    if (item.Visible) {
      if (!text.empty()) text += "  ";
      text += at == choice.Index() ? "(*) " : "( ) ";
      text += plain(item.Text);
      if (!item.Enabled) text += " (off)";
    }
    ++at;
  }
  return text;
}

std::string items(const Choice& choice) {
  std::string text = "[";
  int at = 0;
  for (const Choice::Item& item : choice.Items) {
    if (!text.ends_with('[')) text += " | ";
    text += (at++ == choice.Index() ? "*" : "") + std::string(Trim(item.Text));
  }
  return text + "]";
}

// The drawing of a control's content.
std::string body(const Control& control) {
  const std::string caption = plain(control.Caption);
  switch (control.Kind()) {
    case ControlKind::kLabel:
    case ControlKind::kFigure:
    case ControlKind::kPicture:
      return control.Text();
    case ControlKind::kCode:
      return control.Text().empty() ? "|" : "| " + control.Text();
    case ControlKind::kText:
    case ControlKind::kNumber: {
      const auto& field = static_cast<const TextField&>(control);
      return "[" + control.Text() + "]" + (field.OnSpin ? " ^v" : "");
    }
    case ControlKind::kEditList:
    case ControlKind::kDropDown:
      return "[" + control.Text() + " v]";
    case ControlKind::kOptions:
      return options(static_cast<const Choice&>(control));
    case ControlKind::kTable:
      return items(static_cast<const Choice&>(control));
    case ControlKind::kCheck:
      return (control.Text() == "on" ? "[x] " : "[ ] ") + caption;
    case ControlKind::kLamp:
      return (control.Text() == "on" ? "(#) " : "(-) ") + caption;
    case ControlKind::kButton:
      return "<" + caption + ">";
  }
  return {};
}

std::string reason(const Control& control) {
  if (control.Enabled) return {};
  return control.WhyDisabled.empty() ? "  (disabled)" : "  (disabled: " + control.WhyDisabled + ")";
}

std::string lineOf(const Control& control) {
  std::string line = "  ";
  if (!hasCaptionInside(control)) line += padded(plain(control.Caption), kCaptionWidth) + " ";
  line += body(control) + reason(control);
  return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

using Controls = std::vector<const Control*>;

// A table: its columns are the captions, in order of appearance.
std::string tableOf(const Controls& cells) {
  std::vector<std::string> heads;
  std::map<int, std::map<std::string, std::string>> rows;
  for (const Control* cell : cells) {
    const std::string head = plain(cell->Caption);
    if (std::find(heads.begin(), heads.end(), head) == heads.end()) heads.push_back(head);
    rows[cell->Row][head] = (hasCaptionInside(*cell) && cell->Kind() == ControlKind::kCheck
                                 ? std::string(cell->Text() == "on" ? "[x]" : "[ ]")
                                 : body(*cell)) +
                            (cell->Enabled ? "" : " (off)");
  }
  std::vector<std::size_t> widths;
  for (const std::string& head : heads) {
    std::size_t width = head.size();
    int shown = 0;
    for (auto& [number, row] : rows) {
      if (++shown <= kRowsShown) width = std::max(width, row[head].size());
    }
    widths.push_back(width);
  }
  std::string text = "      ";
  for (std::size_t at = 0; at < heads.size(); ++at) text += padded(heads[at], widths[at] + 2);
  text = std::string(Trim(text).empty() ? text : text.substr(0, text.find_last_not_of(' ') + 1));
  text += "\n";
  int shown = 0;
  for (auto& [number, row] : rows) {
    if (++shown > kRowsShown) continue;
    std::string line = "  " + padded(NumberText(number), 4);
    for (std::size_t at = 0; at < heads.size(); ++at)
      line += padded(row[heads[at]], widths[at] + 2);
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  if (shown > kRowsShown) text += "  ... " + NumberText(shown) + " rows\n";
  return text;
}

std::string groupOf(const std::string& name, const Controls& controls) {
  std::string text = "-- " + name + " ";
  text.resize(std::max<std::size_t>(text.size() + 2, 78), '-');
  text += "\n";
  Controls cells;
  for (const Control* control : controls) {
    if (control->Row > 0) {
      cells.push_back(control);
    } else {
      text += lineOf(*control);
    }
  }
  if (!cells.empty()) text += tableOf(cells);
  return text;
}

}  // namespace

std::string DrawScreen(const Screen& screen) {
  std::vector<std::string> names;
  std::map<std::string, Controls> groups;
  for (const Control* control : screen.Controls()) {
    if (!control->Visible) continue;
    Controls& group = groups[control->Group];
    if (group.empty()) names.push_back(control->Group);
    group.push_back(control);
  }
  std::string text = "== " + screen.Caption + "\n";
  for (const std::string& name : names) text += groupOf(name, groups[name]);
  text += "<Done>";
  text += screen.DoneEnabled ? "" : " (off)";
  return Utf8FromWindows1252(text + "  <Cancel>\n");
}

}  // namespace ostrand::testing
