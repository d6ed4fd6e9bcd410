#include "layout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <map>
#include <span>
#include <string>

#include "texts.h"

namespace ostrand::desktop {
namespace {

// Letters of captions in one line of buttons or check boxes, each with its frame.
constexpr int kLineWidth = 52;
constexpr int kFrameWidth = 6;
// Of the number of a row and the frame around a table.
constexpr int kTableFrame = 10;

using Group = std::vector<BoundControl*>;
using Parts = std::vector<LaidPart>;

QLabel* captionOf(BoundControl& control) {
  auto* caption = new QLabel;
  caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  caption->setBuddy(control.Stop());
  control.Beside(caption);
  return caption;
}

// Whether it stands in a line with others of its kind.
bool isInLine(const BoundControl& control) {
  const ControlKind kind = control.Of().Kind();
  return kind == ControlKind::kButton || kind == ControlKind::kCheck || kind == ControlKind::kLamp;
}

bool isWide(const BoundControl& control) {
  return control.Of().Kind() == ControlKind::kCode || control.Of().Kind() == ControlKind::kTable;
}

// The buttons or check boxes from `at` on that fit into one line; moves `at` past them.
QWidget* lineOf(const Group& group, std::size_t& at, Parts& parts) {
  auto* line = new QWidget;
  LaidPart part{line, {}};
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  const ControlKind kind = group[at]->Of().Kind();
  int width = 0;
  for (; at < group.size() && group[at]->Of().Kind() == kind; ++at) {
    width += static_cast<int>(group[at]->Of().Caption.size()) + kFrameWidth;
    if (layout->count() > 0 && width > kLineWidth) break;
    layout->addWidget(group[at]->Widget());
    part.controls.push_back(group[at]);
  }
  layout->addStretch();
  parts.push_back(std::move(part));
  return line;
}

void layOutForm(const Group& group, QGridLayout& grid, Parts& parts) {
  int row = 0;
  for (std::size_t at = 0; at < group.size(); ++row) {
    BoundControl& control = *group[at];
    if (isInLine(control)) {
      grid.addWidget(lineOf(group, at, parts), row, 1);
      continue;
    }
    ++at;
    grid.addWidget(captionOf(control), row, 0);
    const Control& shown = control.Of();
    const bool narrow =
        shown.Kind() == ControlKind::kNumber || shown.Kind() == ControlKind::kText ||
        shown.Kind() == ControlKind::kDropDown || shown.Kind() == ControlKind::kEditList;
    grid.addWidget(control.Widget(), row, 1, narrow ? Qt::AlignLeft : Qt::Alignment());
  }
  grid.setColumnStretch(1, 1);
}

// ---- Tables -------------------------------------------------------------------------------------

struct Column {
  QString caption;
  Group cells;

  [[nodiscard]] bool HasRow(int row) const {
    return std::any_of(cells.begin(), cells.end(),
                       [&](const BoundControl* cell) { return cell->Of().Row == row; });
  }
  [[nodiscard]] int Width() const {
    int width = 0;
    for (const BoundControl* cell : cells) {
      const QWidget& widget = *cell->Widget();
      width = std::max({width, widget.sizeHint().width(), widget.minimumWidth(),
                        widget.fontMetrics().horizontalAdvance(caption)});
    }
    return width;
  }
};

// Columns by the captions, in their order. Two controls of a row with the same caption get a column
// each.
std::vector<Column> columnsOf(const Group& group) {
  std::vector<Column> columns;
  for (BoundControl* control : group) {
    const QString caption = PlainCaption(control->Of().Caption);
    auto column = std::find_if(columns.begin(), columns.end(), [&](const Column& candidate) {
      return candidate.caption == caption && !candidate.HasRow(control->Of().Row);
    });
    if (column == columns.end()) {
      columns.push_back({caption, {}});
      column = columns.end() - 1;
    }
    column->cells.push_back(control);
  }
  return columns;
}

// A header, and a line for each row with its number.
QGridLayout* layOutColumns(std::span<const Column> columns, Parts& parts) {
  auto* grid = new QGridLayout;
  const auto addHead = [&](const QString& text, const Group& cells, int line, int column) {
    auto* head = new QLabel(text);
    head->setTextFormat(Qt::PlainText);
    grid->addWidget(head, line, column, column == 0 ? Qt::AlignRight : Qt::AlignLeft);
    parts.push_back({head, cells});
  };
  std::map<int, Group> rows;
  int place = 0;
  for (const Column& column : columns) {
    ++place;
    if (!column.cells.front()->ShowsCaption()) addHead(column.caption, column.cells, 0, place);
    if (isWide(*column.cells.front())) grid->setColumnStretch(place, 1);
    for (BoundControl* cell : column.cells) rows[cell->Of().Row].push_back(cell);
  }
  grid->setColumnStretch(place + 1, 1);
  int line = 0;
  for (const auto& [row, cells] : rows) {
    addHead(QString::number(row), cells, ++line, 0);
    place = 0;
    for (const Column& column : columns) {
      ++place;
      for (BoundControl* cell : column.cells) {
        if (cell->Of().Row == row) grid->addWidget(cell->Widget(), line, place);
      }
    }
  }
  return grid;
}

// A table that is too wide goes on below with its further columns.
void layOutTable(const Group& group, QVBoxLayout& box, int maxWidth, Parts& parts) {
  const std::vector<Column> columns = columnsOf(group);
  const std::span<const Column> all(columns);
  const QFontMetrics metrics = group.front()->Widget()->fontMetrics();
  const int gap = metrics.averageCharWidth() * 2;
  for (std::size_t from = 0; from < all.size();) {
    int width = metrics.averageCharWidth() * kTableFrame;
    std::size_t to = from;
    for (; to < all.size(); ++to) {
      width += all[to].Width() + gap;
      if (to > from && width > maxWidth) break;
    }
    box.addLayout(layOutColumns(all.subspan(from, to - from), parts));
    from = to;
  }
}

QGroupBox* boxOf(const std::string& heading, const Group& group, int maxWidth, Parts& parts) {
  auto* box = new QGroupBox(FromProject(heading).replace(u'&', QStringLiteral("&&")));
  auto* layout = new QVBoxLayout(box);
  Group single;
  Group rows;
  for (BoundControl* control : group) {
    (control->Of().Row > 0 ? rows : single).push_back(control);
  }
  if (!single.empty()) {
    auto* form = new QGridLayout;
    layOutForm(single, *form, parts);
    layout->addLayout(form);
  }
  if (!rows.empty()) layOutTable(rows, *layout, maxWidth, parts);
  layout->addStretch();
  return box;
}

// How many of the groups are in the first column, so that the higher one is as low as can be.
std::size_t firstColumn(const std::vector<int>& heights) {
  std::size_t best = heights.size();
  int lowest = 0;
  for (const int height : heights) lowest += height;
  for (std::size_t split = 1; split < heights.size(); ++split) {
    int left = 0;
    int right = 0;
    for (std::size_t at = 0; at < heights.size(); ++at) (at < split ? left : right) += heights[at];
    if (std::max(left, right) >= lowest) continue;
    lowest = std::max(left, right);
    best = split;
  }
  return best;
}

}  // namespace

void ShowParts(const std::vector<LaidPart>& parts) {
  for (const LaidPart& part : parts) {
    const bool shown =
        std::any_of(part.controls.begin(), part.controls.end(),
                    [](const BoundControl* control) { return control->Of().Visible; });
    if (part.widget->isHidden() == shown) part.widget->setVisible(shown);
  }
}

Laid LayOut(const BoundControls& controls, int maxWidth, int maxHeight) {
  std::vector<std::string> headings;
  std::map<std::string, Group> members;
  for (const auto& control : controls) {
    Group& group = members[control->Of().Group];
    if (group.empty()) headings.push_back(control->Of().Group);
    group.push_back(control.get());
  }
  Laid laid{new QWidget, {}};
  for (const auto& control : controls) {
    if (control->Of().Row > 0) control->InTable();
    control->Widget()->setParent(laid.page);
    control->Read();  // its size depends on what it shows
  }
  std::vector<QGroupBox*> boxes;
  for (const std::string& heading : headings) {
    boxes.push_back(boxOf(heading, members[heading], maxWidth, laid.parts));
    laid.parts.push_back({boxes.back(), members[heading]});
  }
  for (const auto& control : controls) control->Read();
  ShowParts(laid.parts);

  std::vector<int> heights;
  int height = 0;
  for (const QGroupBox* box : boxes) {
    heights.push_back(box->isHidden() ? 0 : box->sizeHint().height());
    height += heights.back();
  }
  std::size_t split = boxes.size();
  if (height > maxHeight) split = firstColumn(heights);
  const auto widest = [&](std::size_t from, std::size_t to) {
    int width = 0;
    for (std::size_t at = from; at < to; ++at) {
      width = std::max(width, boxes[at]->sizeHint().width());
    }
    return width;
  };
  if (widest(0, split) + widest(split, boxes.size()) > maxWidth) split = boxes.size();

  auto* columns = new QHBoxLayout(laid.page);
  for (std::size_t at = 0; at < boxes.size();) {
    auto* column = new QVBoxLayout;
    const std::size_t end = at < split ? split : boxes.size();
    for (; at < end; ++at) column->addWidget(boxes[at]);
    column->addStretch();
    columns->addLayout(column);
  }
  return laid;
}

}  // namespace ostrand::desktop
