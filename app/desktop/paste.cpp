#include "paste.h"

#include <algorithm>

#include "bind.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

bool takesText(const Control& control) {
  return dynamic_cast<const TextField*>(&control) != nullptr ||
         control.Kind() == ControlKind::kDropDown;
}

// The cells of the table that take a text, of one row.
std::vector<Control*> rowOf(const Screen& screen, const Control& from, int row) {
  std::vector<Control*> cells;
  for (Control* control : screen.Controls()) {
    if (control->Group == from.Group && control->Row == row && takesText(*control)) {
      cells.push_back(control);
    }
  }
  return cells;
}

enum class Entered { kAsGiven, kLimited, kRefused };

Entered enter(Screen& screen, Control& cell, const std::string& text) {
  if (!cell.Usable() || !screen.MoveFocus(&cell)) return Entered::kRefused;
  auto* field = dynamic_cast<TextField*>(&cell);
  if (field == nullptr) return cell.Pick(text) ? Entered::kAsGiven : Entered::kRefused;
  if (!field->Edit(text)) return Entered::kRefused;
  const auto* number = dynamic_cast<const NumericField*>(field);
  const double given = number == nullptr ? 0 : number->Value();
  if (!field->Leave()) {
    field->Escape();
    return Entered::kRefused;
  }
  return number != nullptr && number->Value() != given ? Entered::kLimited : Entered::kAsGiven;
}

QString counted(int cells, int limited) {
  QString report =
      cells == 1 ? QStringLiteral("1 cell pasted.") : QStringLiteral("%1 cells pasted.").arg(cells);
  if (limited > 0) report += QStringLiteral(" Changed to fit the limits: %1.").arg(limited);
  return report;
}

}  // namespace

CellBlock CellsOf(const QString& text) {
  CellBlock cells;
  QString lines = text;
  lines.remove(u'\r');
  if (lines.endsWith(u'\n')) lines.chop(1);
  if (lines.isEmpty()) return cells;
  for (const QString& line : lines.split(u'\n')) {
    const QStringList texts = line.split(u'\t');
    cells.emplace_back(texts.begin(), texts.end());
  }
  return cells;
}

QString PasteCells(Screen& screen, Control& from, const CellBlock& cells,
                   const std::function<QString()>& reason) {
  int pasted = 0;
  int limited = 0;
  const std::vector<Control*> firstRow = rowOf(screen, from, from.Row);
  const auto column = static_cast<std::size_t>(std::find(firstRow.begin(), firstRow.end(), &from) -
                                               firstRow.begin());
  int row = from.Row;
  for (const std::vector<QString>& line : cells) {
    const std::vector<Control*> into = from.Row == 0 ? firstRow : rowOf(screen, from, row);
    for (std::size_t at = 0; at < line.size(); ++at) {
      if (from.Row == 0 || column + at >= into.size()) {
        screen.Forms().Beep();
        return QStringLiteral("There is no cell for \"%1\". ").arg(line[at]) +
               counted(pasted, limited);
      }
      Control& cell = *into[column + at];
      const std::optional<std::string> text = ToProject(line[at]);
      const Entered entered = text ? enter(screen, cell, *text) : Entered::kRefused;
      if (entered == Entered::kRefused) {
        screen.Forms().Beep();
        const QString why = cell.Usable() ? reason() : ToolTipOf(cell);
        return QStringLiteral("%1: \"%2\" is refused. ").arg(AccessibleName(cell), line[at]) +
               (why.isEmpty() ? QString() : why + u' ') + counted(pasted, limited);
      }
      ++pasted;
      if (entered == Entered::kLimited) ++limited;
    }
    ++row;
  }
  return counted(pasted, limited);
}

}  // namespace ostrand::desktop
