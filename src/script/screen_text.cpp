#include "script/screen_text.h"

#include <algorithm>
#include <array>
#include <vector>

#include "screens/setup_screens.h"
#include "script/script_forms.h"

namespace ostrand {
namespace {

constexpr std::size_t kMaxWidth = 40;  // of a column; a longer text moves the next one

using Cells = std::array<std::string, 3>;

// Lines in one.
std::string oneLine(std::string text) {
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; at += 2) {
    text.replace(at, 2, "\\n");
  }
  return text;
}

bool isButton(const Control& control) { return control.Kind() == ControlKind::kButton; }

std::string captionOf(const Control& control) {
  std::string text = control.Caption;
  std::erase(text, '&');
  return text.empty() || isButton(control) ? "" : "(" + text + ")";
}

// "&" precedes the access key of a button.
std::string shownBy(const Control& control) {
  std::string text = control.Text();
  if (!isButton(control)) return Quoted(oneLine(text));
  std::erase(text, '&');
  return text;
}

std::string stateOf(const Control& control) {
  if (control.Usable()) return {};
  const std::string state = control.Visible ? "disabled" : "hidden";
  return control.WhyDisabled.empty() ? state : state + ": " + control.WhyDisabled;
}

Cells cellsOf(const Control& control) {
  std::string last = captionOf(control);
  if (const std::string state = stateOf(control); !state.empty()) {
    last += (last.empty() ? "" : "  ") + state;
  }
  return {control.Name(), shownBy(control), last};
}

std::string table(const std::vector<Cells>& rows) {
  Row<std::size_t, 0, 1> widths;
  for (const Cells& row : rows) {
    for (int column = 0; column < 2; ++column) {
      const std::size_t size = row[static_cast<std::size_t>(column)].size();
      if (size <= kMaxWidth) widths[column] = std::max(widths[column], size);
    }
  }
  std::string text;
  for (const Cells& row : rows) {
    std::string line = "  " + row[0];
    if (!row[1].empty() || !row[2].empty()) {
      line.resize(std::max(line.size(), widths[0] + 2), ' ');
      line += "  " + row[1];
    }
    if (!row[2].empty()) {
      line.resize(std::max(line.size(), widths[0] + widths[1] + 4), ' ');
      line += "  " + row[2];
    }
    text += line + "\r\n";
  }
  return text;
}

}  // namespace

std::string ControlLine(const Control& control) {
  const Cells cells = cellsOf(control);
  return cells[0] + ": " + cells[1] + (cells[2].empty() ? "" : "  " + cells[2]) + "\r\n";
}

std::string ScreenText(const Screen& screen) {
  std::vector<Cells> rows;
  for (const Control* control : screen.Controls()) {
    if (control->Visible) rows.push_back(cellsOf(*control));
  }
  const std::string head = screen.Caption.empty() ? "" : "  (" + screen.Caption + ")";
  return screen.Name() + head + "\r\n" + table(rows);
}

std::string MainScreenText(Ostrand& control) {
  std::vector<Cells> rows = {{"txtOper", Quoted(control.txtOper()), ""},
                             {"txtIDNum", Quoted(control.txtIDNum()), ""}};
  for (const std::string_view name : MainScreenNames()) {
    const int button = ButtonOfScreen(name);
    std::string state;
    if (button >= 0 && !control.MainButtons().Enabled(button)) {
      state.append("disabled: ").append(MissingForButton(button, control.Store().Config));
    }
    rows.push_back({"open " + std::string(name), std::move(state), ""});
  }
  return "main screen\r\n" + table(rows);
}

}  // namespace ostrand
