#include "table_grid.h"

#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <map>
#include <span>

#include "texts.h"

namespace ostrand::desktop {
namespace {

// In letters: the number of a row and the frame around a table; the space between two columns.
constexpr int kTableFrame = 10;
constexpr int kColumnGap = 2;

using Group = std::vector<BoundControl*>;

struct Column {
  QString caption;
  Group cells;

  [[nodiscard]] bool HasRow(int row) const {
    return std::any_of(cells.begin(), cells.end(),
                       [&](const BoundControl* cell) { return cell->Of().Row == row; });
  }
  // Of the cells, in pixels.
  [[nodiscard]] int CellWidth() const {
    int width = 0;
    for (const BoundControl* cell : cells) {
      const QWidget& widget = *cell->Widget();
      width = std::max({width, widget.sizeHint().width(), widget.minimumWidth()});
    }
    return width;
  }
  // The caption, broken at blanks into about two lines if it is wider than the cells.
  [[nodiscard]] QString Heading() const {
    const QFontMetrics metrics = cells.front()->Widget()->fontMetrics();
    const QStringList words = caption.split(u' ');
    int width = std::max(CellWidth(), metrics.horizontalAdvance(caption) * 3 / 5);
    for (const QString& word : words) width = std::max(width, metrics.horizontalAdvance(word));
    QString heading;
    QString line;
    for (const QString& word : words) {
      const QString longer = line.isEmpty() ? word : line + u' ' + word;
      if (!line.isEmpty() && metrics.horizontalAdvance(longer) > width) {
        heading += line + u'\n';
        line = word;
      } else {
        line = longer;
      }
    }
    return heading + line;
  }
  [[nodiscard]] int Width() const {
    if (cells.front()->ShowsCaption()) return CellWidth();
    const QFontMetrics metrics = cells.front()->Widget()->fontMetrics();
    int width = CellWidth();
    for (const QString& line : Heading().split(u'\n')) {
      width = std::max(width, metrics.horizontalAdvance(line));
    }
    return width;
  }
};

// Columns by caption, in their order. Two controls of a row with the same caption get a column
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

// The columns side by side, with the header of each and the number of each row.
class Piece {
 public:
  Piece(std::span<const Column> columns, std::vector<LaidPart>& parts) {
    int place = 0;
    for (const Column& column : columns) {
      ++place;
      const BoundControl& first = *column.cells.front();
      if (!first.ShowsCaption()) {
        addHead(column.Heading(), column.cells, 0, place, parts);
      }
      if (first.Of().Kind() == ControlKind::kCode) grid_->setColumnStretch(place, 1);
    }
    if (!hasStretch(columns)) grid_->setColumnStretch(place + 1, 1);
    std::map<int, Group> rows;
    place = 0;
    for (const Column& column : columns) {
      ++place;
      for (BoundControl* cell : column.cells) {
        const int row = cell->Of().Row;
        if (!lines_.contains(row)) lines_[row] = 0;
        rows[row].push_back(cell);
      }
    }
    int line = 0;
    for (auto& [row, at] : lines_) {
      at = ++line;
      addHead(QString::number(row), rows[row], at, 0, parts);
    }
    place = 0;
    for (const Column& column : columns) {
      ++place;
      for (BoundControl* cell : column.cells) {
        grid_->addWidget(cell->Widget(), lines_[cell->Of().Row], place);
      }
    }
  }

  // A further row, with a cell in each column.
  void AddRow(std::span<BoundControl* const> cells) {
    const int line = static_cast<int>(lines_.size()) + 1;
    const int row = cells.front()->Of().Row;
    lines_[row] = line;
    grid_->addWidget(new QLabel(QString::number(row)), line, 0, Qt::AlignRight);
    int place = 0;
    for (BoundControl* cell : cells) grid_->addWidget(cell->Widget(), line, ++place);
  }

  [[nodiscard]] QGridLayout* Grid() const { return grid_; }

 private:
  static bool hasStretch(std::span<const Column> columns) {
    return std::any_of(columns.begin(), columns.end(), [](const Column& column) {
      return column.cells.front()->Of().Kind() == ControlKind::kCode;
    });
  }

  void addHead(const QString& text, const Group& cells, int line, int column,
               std::vector<LaidPart>& parts) {
    auto* head = new QLabel(text);
    head->setTextFormat(Qt::PlainText);
    const bool isNumber = column == 0;
    grid_->addWidget(
        head, line, column,
        isNumber ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignBottom);
    parts.push_back({head, cells});
  }

  QGridLayout* grid_ = new QGridLayout;
  std::map<int, int> lines_;  // by row
};

class Grid final : public TableGrid {
 public:
  void Add(std::span<const Column> columns, QVBoxLayout& box, std::vector<LaidPart>& parts) {
    const Piece& piece = pieces_.emplace_back(columns, parts);
    sizes_.push_back(columns.size());
    box.addLayout(piece.Grid());
  }
  void AddRow(const std::vector<BoundControl*>& cells) override {
    std::span<BoundControl* const> left(cells);
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
      pieces_[at].AddRow(left.first(sizes_[at]));
      left = left.subspan(sizes_[at]);
    }
  }

 private:
  std::vector<Piece> pieces_;
  std::vector<std::size_t> sizes_;  // in columns
};

// How many of the columns fit side by side. A piece ends where the number in the captions changes,
// as between the columns of two states.
std::size_t fitting(std::span<const Column> columns, int maxWidth) {
  const QFontMetrics metrics = columns.front().cells.front()->Widget()->fontMetrics();
  const int gap = metrics.averageCharWidth() * kColumnGap;
  int width = metrics.averageCharWidth() * kTableFrame;
  std::size_t count = 0;
  for (; count < columns.size(); ++count) {
    width += columns[count].Width() + gap;
    if (count > 0 && width > maxWidth) break;
  }
  if (count == columns.size()) return count;
  for (std::size_t end = count; end > 1; --end) {
    const QChar before = DigitIn(columns[end - 1].caption);
    const QChar after = DigitIn(columns[end].caption);
    if (before != u' ' && after != u' ' && before != after) return end;
  }
  return count;
}

}  // namespace

std::shared_ptr<TableGrid> LayOutTable(const std::vector<BoundControl*>& cells, QVBoxLayout& box,
                                       int maxWidth, std::vector<LaidPart>& parts) {
  const std::vector<Column> columns = columnsOf(cells);
  auto table = std::make_shared<Grid>();
  for (std::span<const Column> left(columns); !left.empty();) {
    const std::size_t count = fitting(left, maxWidth);
    table->Add(left.first(count), box, parts);
    left = left.subspan(count);
  }
  return table;
}

}  // namespace ostrand::desktop
