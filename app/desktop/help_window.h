// The user guide inside the program.
#pragma once

#include <QDialog>

class QLineEdit;
class QTextBrowser;

namespace ostrand::desktop {

// Beside the main window, which can be used meanwhile.
class HelpWindow final : public QDialog {
 public:
  explicit HelpWindow(QWidget* parent);
  [[nodiscard]] QTextBrowser* Browser() const { return browser_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fitPictures();
  void find();

  QTextBrowser* browser_;
  QLineEdit* sought_;
};

}  // namespace ostrand::desktop
