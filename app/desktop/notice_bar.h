// A line over the pages: what was done, what runs, what there is to see to.
#pragma once

#include <QFrame>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;
class QToolButton;

namespace ostrand::desktop {

class NoticeBar final : public QFrame {
 public:
  explicit NoticeBar(QWidget* parent);

  // Stays until the user closes it or the next one comes. An empty text hides the bar.
  void Show(const QString& text);
  // What runs at present, with a button that calls `cancel`; null for none.
  void ShowProgress(const QString& text, std::function<void()> cancel);
  // Ends the progress; its text goes with it.
  void EndProgress();
  [[nodiscard]] QString Text() const;
  [[nodiscard]] QPushButton* CancelButton() const { return cancel_; }

 private:
  QLabel* text_;
  QProgressBar* progress_;
  QPushButton* cancel_;
  QToolButton* close_;
  std::function<void()> onCancel_;
};

}  // namespace ostrand::desktop
