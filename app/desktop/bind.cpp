#include "bind.h"

#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardItemModel>
#include <QValidator>
#include <algorithm>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/text_field.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Widths in letters.
constexpr int kNumberWidth = 10;
constexpr int kMinTextWidth = 8;
constexpr int kMaxTextWidth = 24;
constexpr int kCodeWidth = 32;
constexpr int kLongLabel = 44;     // what is longer is broken into lines
constexpr int kOptionsWidth = 56;  // of a line of option buttons
constexpr int kButtonWidth = 5;    // of the circle of one
constexpr int kListRows = 6;

void setWidth(QWidget& widget, int letters) {
  widget.setMinimumWidth(widget.fontMetrics().averageCharWidth() * (letters + 2));
}

QString indent(bool on) { return on ? QStringLiteral("● ") : QStringLiteral("○ "); }

// ---- Shown only ---------------------------------------------------------------------------------

class BoundLabel final : public BoundControl {
 public:
  BoundLabel(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(label_);
    label_->setTextFormat(Qt::PlainText);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label_->setFocusPolicy(Qt::NoFocus);
  }
  [[nodiscard]] std::vector<QWidget*> Stops() const override { return {}; }

  void Flash(bool lit) override {
    const auto* label = dynamic_cast<const Label*>(&Of());
    const bool dark = label != nullptr && label->Flashes && !lit;
    label_->setForegroundRole(dark ? QPalette::Window : QPalette::WindowText);
  }

 protected:
  void readValue() override {
    const QString text = FromProject(Of().Text());
    if (label_->text() == text) return;
    label_->setText(text);
    const bool isLong = text.size() > kLongLabel;
    label_->setWordWrap(isLong);
    if (isLong) setWidth(*label_, kLongLabel);
  }

 private:
  QLabel* label_ = new QLabel;
};

class BoundLamp final : public BoundControl {
 public:
  BoundLamp(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(label_);
  }
  [[nodiscard]] std::vector<QWidget*> Stops() const override { return {}; }
  [[nodiscard]] bool ShowsCaption() const override { return true; }

 protected:
  void readValue() override {
    label_->setText(indent(Of().Text() == "on") + PlainCaption(Of().Caption));
  }

 private:
  QLabel* label_ = new QLabel;
};

class BoundCode final : public BoundControl {
 public:
  BoundCode(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(line_);
    line_->setReadOnly(true);
    line_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setWidth(*line_, kCodeWidth);
  }

 protected:
  void readValue() override {
    const QString text = FromProject(Of().Text());
    if (line_->text() == text) return;
    line_->setText(text);
    line_->setCursorPosition(0);
  }

 private:
  QLineEdit* line_ = new QLineEdit;
};

// ---- Fields -------------------------------------------------------------------------------------

// Lets the line take the texts that the field may hold. What it turns away is offered to the field
// all the same, which beeps or finds a form of it.
class FieldValidator final : public QValidator {
 public:
  FieldValidator(TextField& field, QObject* parent) : QValidator(parent), field_(field) {}

  State validate(QString& text, int&) const override {
    const std::optional<std::string> bytes = ToProject(text);
    if (bytes && (*bytes == field_.Text() || isItem(*bytes) || field_.MayBecome(*bytes))) {
      return Acceptable;
    }
    refused_ = text;
    return Invalid;
  }
  [[nodiscard]] const QString& Refused() const { return refused_; }

 private:
  // An item that is picked is shown before the field has it.
  [[nodiscard]] bool isItem(const std::string& text) const {
    const auto* list = dynamic_cast<const ListField*>(&field_);
    return list != nullptr &&
           std::find(list->Items.begin(), list->Items.end(), text) != list->Items.end();
  }

  TextField& field_;
  mutable QString refused_;
};

// The text of a field in a line of whatever widget.
class BoundField : public BoundControl {
 public:
  BoundField(TextField& field, ControlWindow& window)
      : BoundControl(field, window), field_(field) {}
  [[nodiscard]] QLineEdit* Line() const override { return line_; }
  void BeforeKey() override {
    cursor_ = line_->cursorPosition();
    selectionStart_ = line_->selectionStart();
    selectionLength_ = line_->selectionLength();
  }

 protected:
  [[nodiscard]] TextField& field() const { return field_; }

  // `line` is the widget or a part of it.
  void typedInto(QLineEdit* line) {
    line_ = line;
    auto* validator = new FieldValidator(field_, line);
    line->setValidator(validator);
    QObject::connect(line, &QLineEdit::textEdited, line, [this](const QString& text) {
      if (const auto bytes = ToProject(text)) act([&] { field_.Edit(*bytes); });
    });
    QObject::connect(line, &QLineEdit::inputRejected, line, [this, validator] {
      const std::optional<std::string> bytes = ToProject(validator->Refused());
      act([&] { field_.Edit(bytes ? *bytes : std::string(1, '\x01')); });
      if (cursor_ < 0) return;
      // A key that is refused leaves cursor and selection as they were.
      line_->setCursorPosition(cursor_);
      if (selectionStart_ >= 0) line_->setSelection(selectionStart_, selectionLength_);
    });
    if (field_.Kind() == ControlKind::kNumber) {
      setWidth(*Widget(), kNumberWidth);
    } else {
      setWidth(*Widget(), static_cast<int>(std::clamp<std::size_t>(field_.MaxLetters, kMinTextWidth,
                                                                   kMaxTextWidth)));
    }
  }

  void readValue() override {
    const QString text = FromProject(field_.Text());
    if (line_->text() == text) return;
    const int cursor = line_->cursorPosition();
    const bool selected = line_->hasSelectedText();
    line_->setText(text);
    if (!line_->hasFocus()) return line_->setCursorPosition(0);
    line_->setCursorPosition(cursor);
    if (selected) line_->selectAll();
  }

 private:
  TextField& field_;
  QLineEdit* line_ = nullptr;
  // Before the last key; -1 for none.
  int cursor_ = -1;
  int selectionStart_ = -1;
  int selectionLength_ = 0;
};

class BoundLine final : public BoundField {
 public:
  BoundLine(TextField& field, ControlWindow& window) : BoundField(field, window) {
    auto* line = new QLineEdit;
    shownBy(line);
    typedInto(line);
  }
};

// A line with two buttons; the numbers are the field's business.
class SpinLine final : public QAbstractSpinBox {
 public:
  explicit SpinLine(std::function<void(bool up)> spin) : spin_(std::move(spin)) {
    setFocusPolicy(Qt::StrongFocus);  // the wheel does not fetch the focus
    setKeyboardTracking(false);
  }
  using QAbstractSpinBox::lineEdit;

  void stepBy(int steps) override {
    for (int step = 0; step < std::abs(steps); ++step) spin_(steps > 0);
  }

 protected:
  [[nodiscard]] StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

 private:
  std::function<void(bool up)> spin_;
};

class BoundSpin final : public BoundField {
 public:
  BoundSpin(TextField& field, ControlWindow& window) : BoundField(field, window) {
    shownBy(spin_);
    typedInto(spin_->lineEdit());
    setWidth(*spin_, kNumberWidth + 2);
  }

 private:
  SpinLine* spin_ = new SpinLine([this](bool up) { act([&] { field().Spin(up); }); });
};

class BoundEditList final : public BoundField {
 public:
  BoundEditList(ListField& field, ControlWindow& window) : BoundField(field, window), list_(field) {
    shownBy(box_);
    box_->setEditable(true);
    box_->setInsertPolicy(QComboBox::NoInsert);
    box_->setCompleter(nullptr);
    box_->setFocusPolicy(Qt::StrongFocus);
    typedInto(box_->lineEdit());
    QObject::connect(box_, &QComboBox::activated, box_, [this](int index) {
      const std::string item = list_.Items[static_cast<std::size_t>(index)];
      act([&] { list_.Pick(item); });
    });
  }

 protected:
  void readValue() override {
    QStringList items;
    for (const std::string& item : list_.Items) items.append(FromProject(item));
    if (items != items_) {
      items_ = items;
      box_->clear();
      box_->addItems(items);
    }
    if (box_->currentIndex() != list_.ItemIndex()) box_->setCurrentIndex(list_.ItemIndex());
    BoundField::readValue();
  }

 private:
  ListField& list_;
  QStringList items_;
  QComboBox* box_ = new QComboBox;
};

// ---- Choices ------------------------------------------------------------------------------------

class BoundChoice : public BoundControl {
 public:
  BoundChoice(Choice& choice, ControlWindow& window)
      : BoundControl(choice, window), choice_(choice) {}

 protected:
  [[nodiscard]] const Choice& choice() const { return choice_; }
  void clickAt(int index) const {
    act([&] { choice_.ClickAt(index); });
  }

  void readValue() override {
    if (!sameItems()) {
      items_ = choice_.Items;
      showItems(items_);
    }
    showIndex(choice_.Index());
  }
  virtual void showItems(const std::vector<Choice::Item>& items) = 0;
  virtual void showIndex(int index) = 0;

 private:
  [[nodiscard]] bool sameItems() const {
    return std::equal(items_.begin(), items_.end(), choice_.Items.begin(), choice_.Items.end(),
                      [](const Choice::Item& one, const Choice::Item& other) {
                        return one.Text == other.Text && one.Enabled == other.Enabled &&
                               one.Visible == other.Visible && one.ToolTip == other.ToolTip;
                      });
  }

  Choice& choice_;
  std::vector<Choice::Item> items_;
};

class BoundDropDown final : public BoundChoice {
 public:
  BoundDropDown(Choice& choice, ControlWindow& window) : BoundChoice(choice, window) {
    shownBy(box_);
    box_->setFocusPolicy(Qt::StrongFocus);
    box_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    QObject::connect(box_, &QComboBox::activated, box_,
                     [this](int row) { clickAt(box_->itemData(row).toInt()); });
  }

 protected:
  void showItems(const std::vector<Choice::Item>& items) override {
    box_->clear();
    auto* model = qobject_cast<QStandardItemModel*>(box_->model());
    int index = 0;
    for (const Choice::Item& item : items) {
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
  }

  void showIndex(int index) override {
    box_->setCurrentIndex(index < 0 ? -1 : box_->findData(index));
    // One that is picked, but cannot be picked any more.
    box_->setPlaceholderText(FromProject(choice().Text()));
  }

 private:
  QComboBox* box_ = new QComboBox;
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
  // The number of items of a group is fixed.
  void showItems(const std::vector<Choice::Item>& items) override {
    if (buttons_.empty()) make(items);
    for (std::size_t at = 0; at < buttons_.size(); ++at) {
      const bool is = at < items.size();
      QRadioButton* button = buttons_[at];
      button->setVisible(is && items[at].Visible);
      if (!is) continue;
      button->setText(FromProject(items[at].Text));
      button->setEnabled(items[at].Enabled);
      button->setToolTip(FromProject(items[at].ToolTip));
      button->setAccessibleName(PlainCaption(items[at].Text));
      button->setAccessibleDescription(button->toolTip().isEmpty() ? AccessibleName(Of())
                                                                   : button->toolTip());
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
  void make(const std::vector<Choice::Item>& items) {
    int widest = 0;
    for (const Choice::Item& item : items) {
      widest = std::max(widest, static_cast<int>(item.Text.size()) + kButtonWidth);
    }
    const int columns = std::max(1, kOptionsWidth / std::max(1, widest));
    for (std::size_t at = 0; at < items.size(); ++at) {
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

class BoundTable final : public BoundChoice {
 public:
  BoundTable(Choice& choice, ControlWindow& window) : BoundChoice(choice, window) {
    shownBy(list_);
    list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    list_->setMinimumHeight(list_->fontMetrics().lineSpacing() * kListRows);
    setWidth(*list_, kCodeWidth);
    QObject::connect(list_, &QListWidget::currentRowChanged, list_, [this](int row) {
      if (!showing_ && row >= 0) clickAt(row);
    });
    QObject::connect(list_, &QListWidget::itemClicked, list_, [this](const QListWidgetItem* item) {
      const int row = list_->row(item);
      if (this->choice().PicksAgain && row == this->choice().Index()) clickAt(row);
    });
  }

 protected:
  void showItems(const std::vector<Choice::Item>& items) override {
    showing_ = true;
    list_->clear();
    for (const Choice::Item& item : items) {
      auto* row = new QListWidgetItem(FromProject(item.Text), list_);
      row->setToolTip(FromProject(item.ToolTip));
      row->setHidden(!item.Visible);
      if (!item.Enabled) row->setFlags(row->flags() & ~Qt::ItemIsEnabled);
    }
    showing_ = false;
  }

  void showIndex(int index) override {
    showing_ = true;
    list_->setCurrentRow(index);
    showing_ = false;
  }

 private:
  QListWidget* list_ = new QListWidget;
  bool showing_ = false;
};

// ---- Check boxes and buttons --------------------------------------------------------------------

class BoundCheck final : public BoundControl {
 public:
  BoundCheck(CheckBox& check, ControlWindow& window) : BoundControl(check, window), check_(check) {
    shownBy(box_);
    QObject::connect(box_, &QCheckBox::clicked, box_,
                     [this](bool on) { act([&] { check_.Check(on); }); });
  }
  [[nodiscard]] bool ShowsCaption() const override { return !inTable(); }

 protected:
  void readValue() override {
    box_->setText(inTable() ? QString() : FromProject(check_.Caption));
    box_->setChecked(check_.Checked());
  }

 private:
  CheckBox& check_;
  QCheckBox* box_ = new QCheckBox;
};

class BoundButton final : public BoundControl {
 public:
  BoundButton(Control& button, ControlWindow& window) : BoundControl(button, window) {
    shownBy(button_);
    button_->setAutoDefault(false);
    QObject::connect(button_, &QPushButton::clicked, button_,
                     [this] { act([&] { Of().Press(); }); });
  }
  [[nodiscard]] bool ShowsCaption() const override { return true; }

 protected:
  void readValue() override { button_->setText(FromProject(Of().Caption)); }

 private:
  QPushButton* button_ = new QPushButton;
};

}  // namespace

void BoundControl::Read() {
  readValue();
  const QString why = FromProject(control_.WhyDisabled);
  const QString tip = FromProject(control_.ToolTip);
  const QString shown = !control_.Enabled && !why.isEmpty() ? why : tip;
  const QString name = AccessibleName(control_);
  if (widget_->isEnabledTo(widget_->parentWidget()) != control_.Enabled)
    widget_->setEnabled(control_.Enabled);
  if (widget_->isHidden() == control_.Visible) widget_->setVisible(control_.Visible);
  if (widget_->toolTip() != shown) widget_->setToolTip(shown);
  if (widget_->accessibleName() != name) widget_->setAccessibleName(name);
  if (widget_->accessibleDescription() != shown) widget_->setAccessibleDescription(shown);
  if (QLineEdit* line = Line(); line != nullptr && line != widget_) {
    line->setAccessibleName(name);
    line->setAccessibleDescription(shown);
  }
  if (caption_ == nullptr) return;
  caption_->setText(FromProject(control_.Caption));
  caption_->setVisible(control_.Visible);
  caption_->setEnabled(control_.Enabled);
}

std::unique_ptr<BoundControl> Bind(Control& control, ControlWindow& window) {
  switch (control.Kind()) {
    case ControlKind::kLabel:
    case ControlKind::kFigure:
    case ControlKind::kPicture:
      return std::make_unique<BoundLabel>(control, window);
    case ControlKind::kCode:
      return std::make_unique<BoundCode>(control, window);
    case ControlKind::kText:
    case ControlKind::kNumber: {
      auto& field = dynamic_cast<TextField&>(control);
      if (field.OnSpin) return std::make_unique<BoundSpin>(field, window);
      return std::make_unique<BoundLine>(field, window);
    }
    case ControlKind::kEditList:
      return std::make_unique<BoundEditList>(dynamic_cast<ListField&>(control), window);
    case ControlKind::kDropDown:
      return std::make_unique<BoundDropDown>(dynamic_cast<Choice&>(control), window);
    case ControlKind::kOptions:
      return std::make_unique<BoundOptions>(dynamic_cast<Choice&>(control), window);
    case ControlKind::kTable:
      return std::make_unique<BoundTable>(dynamic_cast<Choice&>(control), window);
    case ControlKind::kCheck:
      return std::make_unique<BoundCheck>(dynamic_cast<CheckBox&>(control), window);
    case ControlKind::kLamp:
      return std::make_unique<BoundLamp>(control, window);
    case ControlKind::kButton:
      return std::make_unique<BoundButton>(control, window);
  }
  return nullptr;
}

QString AccessibleName(const Control& control) {
  const QString caption = PlainCaption(control.Caption);
  return control.Row > 0 ? caption + QStringLiteral(", row %1").arg(control.Row) : caption;
}

}  // namespace ostrand::desktop
