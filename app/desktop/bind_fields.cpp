// Fields that are typed into.
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QValidator>
#include <algorithm>

#include "bind_kinds.h"
#include "controls/list_field.h"
#include "list_box.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Widths in letters.
constexpr int kNumberWidth = 10;
constexpr int kMinTextWidth = 8;
constexpr int kMaxTextWidth = 24;
constexpr int kSpinButtons = 2;

// Accepts the texts that the field may hold. A rejected one is offered to the field all the same,
// which beeps and gives the reason.
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
  // The line shows a picked item before the field holds it.
  [[nodiscard]] bool isItem(const std::string& text) const {
    const auto* list = dynamic_cast<const ListField*>(&field_);
    return list != nullptr &&
           std::find(list->Items.begin(), list->Items.end(), text) != list->Items.end();
  }

  TextField& field_;
  mutable QString refused_;
};

// A field in a line of any widget.
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
    QObject::connect(line, &QLineEdit::inputRejected, line,
                     [this, validator] { refuse(validator->Refused()); });
    const bool isNumber = field_.Kind() == ControlKind::kNumber;
    const int letters =
        static_cast<int>(std::clamp<std::size_t>(field_.MaxLetters, kMinTextWidth, kMaxTextWidth));
    SetMinimumLetters(*Widget(), isNumber ? kNumberWidth : letters);
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
  // Leaves cursor and selection as they were.
  void refuse(const QString& text) {
    const std::optional<std::string> bytes = ToProject(text);
    const std::string unstorable(1, '\x01');
    act([&] { field_.Edit(bytes ? *bytes : unstorable); });
    if (cursor_ < 0) return;
    line_->setCursorPosition(cursor_);
    if (selectionStart_ >= 0) line_->setSelection(selectionStart_, selectionLength_);
  }

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

// A line with two buttons; the field knows the numbers.
class SpinLine final : public QAbstractSpinBox {
 public:
  explicit SpinLine(std::function<void(bool up)> spin) : spin_(std::move(spin)) {
    setFocusPolicy(Qt::StrongFocus);  // no focus by the wheel
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
    SetMinimumLetters(*spin_, kNumberWidth + kSpinButtons);
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
    typedInto(box_->lineEdit());
    QObject::connect(box_, &QComboBox::activated, box_, [this](int index) {
      const std::string item = list_.Items[static_cast<std::size_t>(index)];
      act([&] { list_.Pick(item); });
    });
  }

 protected:
  void readValue() override {
    if (items_.Take(list_.Items)) box_->NewItems();
    if (box_->IsFilled()) showIndex();
    BoundField::readValue();
  }

 private:
  void fill() {
    for (const std::string& item : items_.All()) box_->addItem(FromProject(item));
    showIndex();
    BoundField::readValue();  // a list without a current item has emptied the line
  }
  void showIndex() {
    const int index = list_.ItemIndex();
    if (box_->currentIndex() != index) box_->setCurrentIndex(index);
  }

  ListField& list_;
  ShownItems<std::string> items_;
  ListBox* box_ = new ListBox([this] { fill(); });
};

}  // namespace

std::unique_ptr<BoundControl> BindField(TextField& field, ControlWindow& window) {
  if (auto* list = dynamic_cast<ListField*>(&field)) {
    return std::make_unique<BoundEditList>(*list, window);
  }
  if (field.OnSpin) return std::make_unique<BoundSpin>(field, window);
  return std::make_unique<BoundLine>(field, window);
}

}  // namespace ostrand::desktop
