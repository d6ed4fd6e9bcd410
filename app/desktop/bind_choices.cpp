// One of several: lists, option buttons, lists with columns.
#include <QButtonGroup>
#include <QGridLayout>
#include <QHeaderView>
#include <QRadioButton>
#include <QScreen>
#include <QStandardItemModel>
#include <QTreeWidget>
#include <algorithm>

#include "bind_kinds.h"
#include "list_box.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// In letters.
constexpr int kOptionsWidth = 56;  // of a line of option buttons
constexpr int kBeside = 30;        // the caption beside it and the frames around it
constexpr int kButtonWidth = 5;    // of the circle of one
constexpr int kTableRows = 6;

// About the width of the widest text in pixels, from the longest ones only.
int widestOf(const std::vector<Choice::Item>& items, const QFontMetrics& metrics) {
  constexpr std::size_t kSlack = 3;
  constexpr int kMaxMeasured = 50;
  std::size_t longest = 0;
  for (const Choice::Item& item : items) longest = std::max(longest, item.Text.size());
  int widest = 0;
  int measured = 0;
  for (const Choice::Item& item : items) {
    if (item.Text.size() + kSlack < longest || ++measured > kMaxMeasured) continue;
    widest = std::max(widest, metrics.horizontalAdvance(FromProject(item.Text)));
  }
  return widest;
}

class BoundChoice : public BoundControl {
 public:
  BoundChoice(Choice& choice, ControlWindow& window)
      : BoundControl(choice, window), choice_(choice) {}

 protected:
  [[nodiscard]] const Choice& choice() const { return choice_; }
  [[nodiscard]] const std::vector<Choice::Item>& items() const { return items_.All(); }
  void clickAt(int index) const {
    act([&] { choice_.ClickAt(index); });
  }

  void readValue() override {
    if (items_.Take(choice_.Items)) showItems();
    showIndex(choice_.Index());
  }
  virtual void showItems() = 0;
  virtual void showIndex(int index) = 0;

 private:
  Choice& choice_;
  ShownItems<Choice::Item> items_;
};

class BoundDropDown final : public BoundChoice {
 public:
  BoundDropDown(Choice& choice, ControlWindow& window) : BoundChoice(choice, window) {
    shownBy(box_);
    QObject::connect(box_, &QComboBox::activated, box_,
                     [this](int row) { clickAt(box_->itemData(row).toInt()); });
  }

 protected:
  void showItems() override {
    box_->ContentsWidth(widestOf(items(), box_->fontMetrics()));
    box_->NewItems();
  }

  void showIndex(int index) override {
    const QString text = FromProject(choice().Text());
    if (!box_->IsFilled()) {
      if (index >= 0 && box_->count() == 0) box_->addItem(text, index);
      if (index < 0) box_->clear();
      if (box_->count() > 0 && box_->itemText(0) != text) box_->setItemText(0, text);
    } else {
      const int row = index < 0 ? -1 : box_->findData(index);
      if (box_->currentIndex() != row) box_->setCurrentIndex(row);
    }
    // For an item that is picked but cannot be picked any more.
    if (box_->placeholderText() != text) box_->setPlaceholderText(text);
  }

 private:
  void fill() {
    box_->clear();
    auto* model = qobject_cast<QStandardItemModel*>(box_->model());
    int index = 0;
    for (const Choice::Item& item : items()) {
      if (item.Visible) {
        box_->addItem(FromProject(item.Text), index);
        const int row = box_->count() - 1;
        if (!item.ToolTip.empty()) {
          box_->setItemData(row, FromProject(item.ToolTip), Qt::ToolTipRole);
        }
        model->item(row)->setEnabled(item.Enabled);
      }
      ++index;
    }
    showIndex(choice().Index());
  }

  ListBox* box_ = new ListBox([this] { fill(); });
};

class BoundOptions final : public BoundChoice {
 public:
  BoundOptions(Choice& choice, ControlWindow& window) : BoundChoice(choice, window) {
    shownBy(frame_);
    layout_->setContentsMargins(0, 0, 0, 0);
    group_->setExclusive(true);
    QObject::connect(group_, &QButtonGroup::idClicked, frame_,
                     [this](int index) { clickAt(index); });
  }
  [[nodiscard]] std::vector<QWidget*> Stops() const override {
    return {buttons_.begin(), buttons_.end()};
  }
  [[nodiscard]] QWidget* Stop() const override {
    for (QRadioButton* button : buttons_) {
      if (button->isChecked()) return button;
    }
    const auto usable = std::find_if(buttons_.begin(), buttons_.end(), [](QRadioButton* button) {
      return button->isEnabled() && !button->isHidden();
    });
    return usable == buttons_.end() ? nullptr : *usable;
  }

 protected:
  // A screen never adds an option later.
  void showItems() override {
    if (buttons_.empty()) make();
    for (std::size_t at = 0; at < buttons_.size(); ++at) {
      const bool is = at < items().size();
      QRadioButton* button = buttons_[at];
      button->setVisible(is && items()[at].Visible);
      if (!is) continue;
      const Choice::Item& item = items()[at];
      button->setText(FromProject(item.Text));
      button->setEnabled(item.Enabled);
      button->setToolTip(FromProject(item.ToolTip));
      button->setAccessibleName(PlainCaption(item.Text));
      const QString of = AccessibleName(Of());
      button->setAccessibleDescription(
          item.ToolTip.empty() ? of : of + QStringLiteral(": ") + button->toolTip());
    }
  }

  void showIndex(int index) override {
    group_->setExclusive(false);
    for (std::size_t at = 0; at < buttons_.size(); ++at) {
      buttons_[at]->setChecked(static_cast<int>(at) == index);
    }
    group_->setExclusive(true);
  }

 private:
  void make() {
    int widest = 1;
    for (const Choice::Item& item : items()) {
      widest = std::max(widest, static_cast<int>(item.Text.size()) + kButtonWidth);
    }
    const int desktop =
        frame_->screen()->availableSize().width() / frame_->fontMetrics().averageCharWidth();
    const int columns = std::max(1, std::min(kOptionsWidth, desktop - kBeside) / widest);
    for (std::size_t at = 0; at < items().size(); ++at) {
      auto* button = new QRadioButton(frame_);
      const int place = static_cast<int>(at);
      group_->addButton(button, place);
      layout_->addWidget(button, place / columns, place % columns);
      buttons_.push_back(button);
    }
    layout_->setColumnStretch(columns, 1);
  }

  QWidget* frame_ = new QWidget;
  QGridLayout* layout_ = new QGridLayout(frame_);
  QButtonGroup* group_ = new QButtonGroup(frame_);
  std::vector<QRadioButton*> buttons_;
};

// Of the columns, in the caption and in each item.
QString separator() { return QStringLiteral(" | "); }

// Its caption "Name | Units" has the headings of its columns.
class BoundTable final : public BoundChoice {
 public:
  BoundTable(Choice& choice, ControlWindow& window) : BoundChoice(choice, window) {
    shownBy(list_);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setTabKeyNavigation(false);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    const int line = list_->fontMetrics().lineSpacing();
    list_->setMinimumHeight(line * (kTableRows + 2));
    // Not the current item: the focus alone sets that, and picks nothing.
    QObject::connect(list_, &QTreeWidget::itemSelectionChanged, list_, [this] {
      const int row = rowNow();
      if (!showing_ && row >= 0) clickAt(row);
    });
    QObject::connect(list_, &QTreeWidget::itemClicked, list_, [this] {
      const int row = rowNow();
      if (this->choice().PicksAgain && row == this->choice().Index()) clickAt(row);
    });
  }
  [[nodiscard]] bool CaptionAbove() const override { return true; }
  [[nodiscard]] bool ShowsCaption() const override { return headings().size() > 1; }

 protected:
  void readValue() override {
    if (list_->topLevelItemCount() == 0) showHeadings();  // also without items
    BoundChoice::readValue();
  }

  void showItems() override {
    showing_ = true;
    list_->clear();
    for (const Choice::Item& item : items()) {
      QStringList texts = FromProject(item.Text).split(separator());
      for (QString& text : texts) text = text.trimmed();
      auto* row = new QTreeWidgetItem(list_, texts);
      for (int column = 0; column < list_->columnCount(); ++column) {
        row->setToolTip(column, FromProject(item.ToolTip));
      }
      row->setHidden(!item.Visible);
      row->setDisabled(!item.Enabled);
    }
    for (int column = 0; column + 1 < list_->columnCount(); ++column) {
      list_->resizeColumnToContents(column);
    }
    showing_ = false;
  }

  void showIndex(int index) override {
    if (rowNow() == index) return;
    showing_ = true;
    if (index < 0) {
      list_->clearSelection();
    } else {
      list_->setCurrentItem(list_->topLevelItem(index));
    }
    showing_ = false;
  }

 private:
  [[nodiscard]] QStringList headings() const {
    return PlainCaption(Of().Caption).split(separator());
  }
  void showHeadings() {
    const QStringList texts = headings();
    list_->setColumnCount(static_cast<int>(texts.size()));
    list_->setHeaderLabels(texts);
    list_->setHeaderHidden(texts.size() < 2);
    constexpr int kColumnWidth = 14;
    SetMinimumLetters(*list_, std::max(kCodeWidth, kColumnWidth * list_->columnCount()));
  }
  // -1 for none.
  [[nodiscard]] int rowNow() const {
    const QList<QTreeWidgetItem*> selected = list_->selectedItems();
    return selected.isEmpty() ? -1 : list_->indexOfTopLevelItem(selected.front());
  }

  QTreeWidget* list_ = new QTreeWidget;
  bool showing_ = false;
};

}  // namespace

std::unique_ptr<BoundControl> BindChoice(Choice& choice, ControlWindow& window) {
  switch (choice.Kind()) {
    case ControlKind::kOptions:
      return std::make_unique<BoundOptions>(choice, window);
    case ControlKind::kTable:
      return std::make_unique<BoundTable>(choice, window);
    default:
      return std::make_unique<BoundDropDown>(choice, window);
  }
}

}  // namespace ostrand::desktop
