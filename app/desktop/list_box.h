// A drop-down list that is filled when it is first needed: a screen can have twenty lists of
// thousands of variables.
#pragma once

#include <QComboBox>
#include <algorithm>
#include <functional>

namespace ostrand::desktop {

class ListBox final : public QComboBox {
 public:
  // `fill` adds all items and sets the current one.
  explicit ListBox(std::function<void()> fill) : fill_(std::move(fill)) {
    setFocusPolicy(Qt::StrongFocus);  // no focus by the wheel
  }

  // The items have changed. Until they are needed, the list holds at most the current one.
  void NewItems() {
    filled_ = false;
    const QString typed = isEditable() ? currentText() : QString();
    if (count() > 0) clear();
    if (isEditable()) setEditText(typed);
    if (hasFocus()) Fill();
  }
  // Shows texts of up to this width in pixels whole.
  void ContentsWidth(int width) {
    const int letter = std::max(1, fontMetrics().horizontalAdvance(u'X'));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(width / letter + 1);
  }
  [[nodiscard]] bool IsFilled() const { return filled_; }
  void Fill() {
    if (filled_) return;
    filled_ = true;
    fill_();
  }

  void showPopup() override {
    Fill();
    QComboBox::showPopup();
  }

 protected:
  // A key or the wheel may move to the next item.
  void focusInEvent(QFocusEvent* event) override {
    Fill();
    QComboBox::focusInEvent(event);
  }

 private:
  std::function<void()> fill_;
  bool filled_ = false;
};

}  // namespace ostrand::desktop
