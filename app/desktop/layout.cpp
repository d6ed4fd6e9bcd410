#include "layout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <map>
#include <span>
#include <string>

#include "table_grid.h"
#include "terminal_tile.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Letters of captions in one line of buttons or check boxes, each with its frame.
constexpr int kLineWidth = 52;
constexpr int kFrameWidth = 6;

using Group = std::vector<BoundControl*>;
using Parts = std::vector<LaidPart>;

// A widget without a parent would be a window: it has one before it is shown.
QLabel* captionOf(BoundControl& control) {
  auto* caption = new QLabel(control.Widget()->parentWidget());
  const bool isLong = control.Of().Kind() == ControlKind::kCode ||
                      qobject_cast<QLabel*>(control.Widget()) != nullptr;
  if (control.CaptionAbove()) {
    caption->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
  } else {
    caption->setAlignment(Qt::AlignRight | (isLong ? Qt::AlignTop : Qt::AlignVCenter));
  }
  caption->setBuddy(control.Stop());
  control.CaptionLabel(caption);
  return caption;
}

// Whether it shares a line with others of its kind.
bool isInLine(const BoundControl& control) {
  const ControlKind kind = control.Of().Kind();
  return kind == ControlKind::kButton || kind == ControlKind::kCheck || kind == ControlKind::kLamp;
}

// Whether it keeps its width in a wide group.
bool isNarrow(const BoundControl& control) {
  const ControlKind kind = control.Of().Kind();
  return kind == ControlKind::kNumber || kind == ControlKind::kText ||
         kind == ControlKind::kDropDown || kind == ControlKind::kEditList;
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

// Captions to the right in the first column, their fields in the second. Where no control has a
// caption beside it, there is one column.
void layOutForm(const Group& group, QGridLayout& grid, Parts& parts) {
  const bool beside = std::any_of(group.begin(), group.end(), [](const BoundControl* control) {
    return !isInLine(*control) && !control->CaptionAbove();
  });
  const int second = beside ? 1 : 0;
  int row = 0;
  for (std::size_t at = 0; at < group.size(); ++row) {
    BoundControl& control = *group[at];
    if (isInLine(control)) {
      grid.addWidget(lineOf(group, at, parts), row, second);
      continue;
    }
    ++at;
    if (control.CaptionAbove()) {
      if (!control.ShowsCaption()) grid.addWidget(captionOf(control), row++, 0, 1, second + 1);
      grid.addWidget(control.Widget(), row, 0, 1, second + 1);
      continue;
    }
    grid.addWidget(captionOf(control), row, 0);
    grid.addWidget(control.Widget(), row, 1, isNarrow(control) ? Qt::AlignLeft : Qt::Alignment());
  }
  grid.setColumnStretch(second, 1);
}

// The picture of all inputs: as square as it can be, but with an even number in each line, so that
// pairs stay together.
QLayout* layOutTiles(const Group& tiles) {
  const int columns = tiles.size() > 25 ? 10 : 5;
  auto* grid = new QGridLayout;
  grid->setSpacing(2);
  int place = 0;
  for (BoundControl* tile : tiles) {
    grid->addWidget(tile->Widget(), place / columns, place % columns);
    ++place;
  }
  grid->setColumnStretch(columns, 1);
  return grid;
}

// ---- Groups -------------------------------------------------------------------------------------

// A group under its heading.
struct Box {
  QGroupBox* box;
  QGridLayout* form;  // null for a group without single controls
};

class Page {
 public:
  Page(int maxWidth, int maxHeight) : maxWidth_(maxWidth), maxHeight_(maxHeight) {}

  void Add(const std::string& heading, const Group& group) {
    auto* box = new QGroupBox(FromProject(heading).replace(u'&', QStringLiteral("&&")), laid_.page);
    box->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* layout = new QVBoxLayout(box);
    Group single;
    Group rows;
    Group tiles;
    for (BoundControl* control : group) {
      const bool isTile = control->Of().Kind() == ControlKind::kPicture;
      (isTile ? tiles : control->Of().Row > 0 ? rows : single).push_back(control);
    }
    QGridLayout* form = nullptr;
    if (!single.empty()) {
      form = new QGridLayout;
      layOutForm(single, *form, laid_.parts);
      layout->addLayout(form);
    }
    if (!rows.empty()) table_ = LayOutTable(rows, *layout, maxWidth_, laid_.parts);
    if (!tiles.empty()) {
      layout->addLayout(layOutTiles(tiles));
      hasTiles_ = true;
    }
    laid_.parts.push_back({box, group});
    boxes_.push_back({box, form});
  }

  Laid Finish() {
    ShowParts(laid_.parts);
    for (const Box& box : boxes_) {
      sizes_.push_back(box.box->isHidden() ? QSize(0, 0) : box.box->sizeHint());
    }
    const std::size_t split = chooseSplit();
    auto* page = new QVBoxLayout(laid_.page);
    auto* columns = new QHBoxLayout;
    page->addLayout(columns);
    columns->addLayout(columnOf(0, split));
    if (split < boxes_.size()) columns->addLayout(columnOf(split, boxes_.size()));
    if (hasTiles_) page->addWidget(TileLegend());
    page->addStretch();
    if (const std::shared_ptr<TableGrid> table = table_) {
      laid_.addRow = [table](const Group& cells) { table->AddRow(cells); };
    }
    return std::move(laid_);
  }

  [[nodiscard]] QWidget* Widget() const { return laid_.page; }

 private:
  // Groups side by side.
  struct Shelf {
    std::vector<std::size_t> boxes;
    int width = 0;
    int height = 0;
  };

  [[nodiscard]] int widest(std::size_t from, std::size_t to) const {
    int width = 0;
    for (std::size_t at = from; at < to; ++at) width = std::max(width, sizes_[at].width());
    return width;
  }

  // Small groups share a line, as far as they do not make the column wider and concern the same one
  // of several things, by the number in the heading. A hidden one has a line to itself, since its
  // size is not known.
  [[nodiscard]] std::vector<Shelf> shelvesOf(std::size_t from, std::size_t to) const {
    const int width = widest(from, to);
    std::vector<Shelf> shelves;
    for (std::size_t at = from; at < to; ++at) {
      const QSize size = sizes_[at];
      if (shelves.empty() || shelves.back().width + size.width() > width || isHidden(at) ||
          isHidden(shelves.back().boxes.back()) ||
          numberIn(shelves.back().boxes.back()) != numberIn(at)) {
        shelves.push_back({});
      }
      Shelf& shelf = shelves.back();
      shelf.boxes.push_back(at);
      shelf.width += size.width() + kGap;
      shelf.height = std::max(shelf.height, size.height());
    }
    return shelves;
  }
  [[nodiscard]] bool isHidden(std::size_t at) const { return boxes_[at].box->isHidden(); }
  [[nodiscard]] QChar numberIn(std::size_t at) const { return DigitIn(boxes_[at].box->title()); }
  [[nodiscard]] int heightOf(std::size_t from, std::size_t to) const {
    int height = 0;
    for (const Shelf& shelf : shelvesOf(from, to)) height += shelf.height + kGap;
    return height;
  }

  // The number of groups in the first column: all if they are not too high or two columns would be
  // hardly lower, else as many as make the higher column lowest.
  [[nodiscard]] std::size_t chooseSplit() const {
    std::size_t best = boxes_.size();
    const int whole = heightOf(0, best);
    if (whole <= maxHeight_) return best;
    int lowest = std::max(maxHeight_, whole * 3 / 4) + 1;
    for (std::size_t split = 1; split < boxes_.size(); ++split) {
      const int height = std::max(heightOf(0, split), heightOf(split, boxes_.size()));
      if (height >= lowest || widest(0, split) + widest(split, boxes_.size()) > maxWidth_) continue;
      lowest = height;
      best = split;
    }
    return best;
  }

  QLayout* columnOf(std::size_t from, std::size_t to) {
    auto* column = new QVBoxLayout;
    int captions = 0;
    std::vector<QGridLayout*> forms;
    for (const Shelf& shelf : shelvesOf(from, to)) {
      auto* line = new QHBoxLayout;
      for (const std::size_t at : shelf.boxes) line->addWidget(boxes_[at].box, 0, Qt::AlignTop);
      column->addLayout(line);
      if (shelf.boxes.size() > 1 || boxes_[shelf.boxes.front()].form == nullptr) continue;
      QGridLayout* form = boxes_[shelf.boxes.front()].form;
      if (form->columnCount() < 2) continue;
      forms.push_back(form);
      for (int row = 0; row < form->rowCount(); ++row) {
        const QLayoutItem* caption = form->itemAtPosition(row, 0);
        if (caption == nullptr || form->itemAtPosition(row, 1) == caption) continue;
        captions = std::max(captions, caption->sizeHint().width());
      }
    }
    // The fields of all groups begin at one line.
    for (QGridLayout* form : forms) form->setColumnMinimumWidth(0, captions);
    for (std::size_t at = from; at < to; ++at) boxes_[at].box->layout()->invalidate();
    column->addStretch();
    return column;
  }

  static constexpr int kGap = 6;  // about the space between two groups

  int maxWidth_;
  int maxHeight_;
  Laid laid_{new QWidget, {}, {}};
  std::vector<Box> boxes_;
  std::vector<QSize> sizes_;  // of them
  std::shared_ptr<TableGrid> table_;
  bool hasTiles_ = false;
};

}  // namespace

bool ShowParts(const std::vector<LaidPart>& parts) {
  bool changed = false;
  for (const LaidPart& part : parts) {
    const bool shown =
        std::any_of(part.controls.begin(), part.controls.end(),
                    [](const BoundControl* control) { return control->Of().Visible; });
    if (part.widget->isHidden() != shown) continue;
    part.widget->setVisible(shown);
    changed = true;
  }
  return changed;
}

Laid LayOut(const std::vector<BoundControl*>& controls, int maxWidth, int maxHeight) {
  std::vector<std::string> headings;
  std::map<std::string, Group> members;
  for (BoundControl* control : controls) {
    Group& group = members[control->Of().Group];
    if (group.empty()) headings.push_back(control->Of().Group);
    group.push_back(control);
  }
  Page page(maxWidth, maxHeight);
  for (BoundControl* control : controls) {
    if (control->Of().Row > 0) control->InTable();
    control->Widget()->setParent(page.Widget());
    control->Read();  // its size depends on what it shows
  }
  for (const std::string& heading : headings) page.Add(heading, members[heading]);
  return page.Finish();
}

}  // namespace ostrand::desktop
